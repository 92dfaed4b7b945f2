#pragma once
// One lexical unit of a timetable definition, linked into the chain of its
// TokenList, and the pattern matcher that every command grammar is written in.
#include <cstddef>
#include <cstdint>
#include <string>

#include "../export.h"

class TokenList;

// The value that means "no time", in tokens, timetable entries and results alike.
// It is a 32-bit all-ones pattern widened to 64 bits, not -1.
inline constexpr long long keineZeit = 4294967295LL;

class FPLC_API Token {
 public:
  enum Type : std::uint8_t { Number = 0, Name = 1, HardcodedName = 2, Time = 3, Other = 4 };

  Token(TokenList const* list, std::string text, std::uint32_t line);

  std::string const& str() const { return str_; }
  void str(std::string text);  // re-classifies the token
  Token* next() const { return next_; }
  void next(Token* t) { next_ = t; }
  Token* prev() const { return prev_; }
  void prev(Token* t) { prev_ = t; }
  Token* link() const { return link_; }
  void link(Token* t) { link_ = t; }
  long long time() const { return time_; }
  void time(long long value);
  std::uint32_t line() const { return line_; }
  // The column of the token's first character in its source line, counted from 1
  // in characters as the file is read; 0 for a token that was not read from a file.
  std::uint32_t column() const { return column_; }
  void column(std::uint32_t value) { column_ = value; }
  TokenList const* getTokenList() const { return tokenList_; }
  Type getType() const { return type_; }
  bool isNumber() const { return type_ == Number; }
  bool isName() const { return type_ == Name || type_ == HardcodedName; }
  bool isTime() const { return type_ == Time; }
  void setHardcodename(bool hardcoded);

  Token* tokAt(int n);
  Token const* tokAt(int n) const;
  Token* linkAt(int n);
  Token const* linkAt(int n) const;
  std::string const& strAt(int n) const;

  // Removes and frees up to `count` following tokens; partners of removed
  // brackets lose their link, and the list's back moves here when the chain ends.
  void deleteNext(std::size_t count = 1);

  static bool Match(Token const* tok, char const* pattern);

 private:
  void updateType();
  static int multiCompare(Token const* tok, char const* alternatives);
  static bool firstWordEquals(char const* word, char const* text);

  std::string str_;
  TokenList const* tokenList_;
  Token* next_ = nullptr;
  Token* prev_ = nullptr;
  Token* link_ = nullptr;
  long long time_ = keineZeit;
  std::uint32_t line_;
  std::uint32_t column_ = 0;
  Type type_ = Other;
};
