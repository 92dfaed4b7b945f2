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
  ~Token();
  Token(Token const& other);
  Token& operator=(Token const& other);

  std::string const& str() const { return inhalt_->str; }
  void str(std::string text);  // re-classifies the token
  Token* next() const { return next_; }
  void next(Token* t) { next_ = t; }
  Token* prev() const { return prev_; }
  void prev(Token* t) { prev_ = t; }
  Token* link() const { return link_; }
  void link(Token* t) { link_ = t; }
  long long time() const { return inhalt_->time; }
  void time(long long value);
  std::uint32_t line() const { return line_; }
  // The column of the token's first character in its source line, counted from 1
  // in characters as the file is read; 0 for a token that was not read from a file.
  std::uint32_t column() const { return column_; }
  void column(std::uint32_t value) { column_ = value; }
  TokenList const* getTokenList() const { return tokenList_; }
  Type getType() const { return type_; }
  bool isNumber() const { return getType() == Number; }
  bool isName() const { return getType() == Name || getType() == HardcodedName; }
  bool isTime() const { return getType() == Time; }
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
  // Text and time. Tokens of one character without a time share one record per
  // character: a long line of signs then costs one small token per character
  // rather than one with a string of its own.
  struct Inhalt {
    std::string str;
    long long time = keineZeit;
  };
  static Inhalt const* geteilterInhalt(std::string const& text);
  Inhalt& eigenerInhalt();  // copies a shared record before it is changed
  void setText(std::string text);
  static Type typeOf(std::string const& text, long long time);
  static int multiCompare(Token const* tok, char const* alternatives);
  static bool firstWordEquals(char const* word, char const* text);

  Inhalt const* inhalt_ = nullptr;
  TokenList const* tokenList_;
  Token* next_ = nullptr;
  Token* prev_ = nullptr;
  Token* link_ = nullptr;
  std::uint32_t line_;
  std::uint32_t column_ = 0;
  Type type_ = Other;
  bool eigen_ = false;  // whether inhalt_ is this token's own record
};
