#pragma once
// The tokens of one definition file: lexing (`read`), merging of arrows and
// times and bracket linking (`prepare`). The list owns its tokens.
#include <iosfwd>
#include <string>

#include "../export.h"
#include "token.h"

class FPLC_API TokenList {
 public:
  TokenList() = default;
  ~TokenList();
  TokenList(TokenList const&) = delete;
  TokenList& operator=(TokenList const&) = delete;

  Token* front() const { return front_; }
  Token* back() const { return back_; }
  void back(Token* t) { back_ = t; }
  std::string const& file() const { return file_; }

  void push_back(Token* tok);
  void read(std::istream& in, std::string const& fileName);
  void prepare();
  void createLinks();
  [[noreturn]] void syntaxError(Token const* tok, char const* message) const;
  std::string stringify() const;

 private:
  Token* front_ = nullptr;
  Token* back_ = nullptr;
  std::string file_;
};
