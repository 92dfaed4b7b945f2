#include "tokenizer/token.h"

#include <cctype>
#include <utility>

#include "tokenizer/error.h"
#include "tokenizer/token_list.h"

namespace {

// Bytes of 128 and above are letters: umlauts in Windows-1252.
bool isLetter(unsigned char c) {
  return std::isalpha(c) || c == '_' || c >= 128;
}

bool isDigits(std::string const& text) {
  for (char c : text)
    if (c < '0' || c > '9') return false;
  return !text.empty();
}

bool isWordEnd(char c) {
  return c == ' ' || c == '\0';
}

// The character `offset` positions after `p`, or '\0' when the pattern ends before.
// Keeps the class evaluation from reading past the end of a short pattern.
char charAt(char const* p, int offset) {
  for (int i = 0; i < offset; ++i)
    if (p[i] == '\0') return '\0';
  return p[offset];
}

char const* skipChars(char const* p, int count) {
  for (int i = 0; i < count && *p != '\0'; ++i)
    ++p;
  return p;
}

char const* skipWord(char const* p) {
  while (!isWordEnd(*p))
    ++p;
  return p;
}

bool isNegation(char const* p) {
  return p[0] == '!' && p[1] == '!' && !isWordEnd(p[2]);
}

bool startsClass(char const* p) {
  return p[0] == '%' && p[1] != '|' && !isWordEnd(p[1]);
}

std::string const emptyString;

constexpr int kNextAlternative = 2;

// Tests the "%" class at `p` (pointing at the "%"). Returns 1 or -1, or
// kNextAlternative with `p` moved behind the "|" that follows the class.
int evaluateClass(Token const* tok, char const*& p) {
  char const* letter = p + 1;
  bool test = false;
  int length = 0;  // letters of the class word after the "%", its closing "%" included
  switch (*letter) {
    case 'a':
      test = true, length = 4;
      break;
    case 'n':
      if (charAt(letter, 4) == '%')
        test = tok->isName(), length = 5;
      else
        test = tok->isNumber(), length = 4;
      break;
    case 'o':
      if (charAt(letter, 2) == '%')
        test = tok->str() == "|", length = 3;
      else
        test = tok->str() == "||", length = 5;
      break;
    case 't':
      test = tok->isTime(), length = 5;
      break;
    default:
      throw Error(tok, "Unerwartetes Suchmuster (interner Fehler).");
  }
  if (test) return 1;
  char const* after = skipChars(letter, length);
  if (*after != '|') return -1;
  p = after + 1;
  return kNextAlternative;
}

template <typename T>
T* walk(T* tok, int n) {
  for (; n > 0 && tok; --n)
    tok = tok->next();
  for (; n < 0 && tok; ++n)
    tok = tok->prev();
  return tok;
}

}  // namespace

Token::Token(TokenList const* list, std::string text, std::uint32_t line)
    : tokenList_(list), line_(line) {
  setText(std::move(text));
}

Token::~Token() {
  if (eigen_) delete inhalt_;
}

Token::Token(Token const& other)
    : inhalt_(other.inhalt_),
      tokenList_(other.tokenList_),
      next_(other.next_),
      prev_(other.prev_),
      link_(other.link_),
      line_(other.line_),
      column_(other.column_),
      type_(other.type_),
      eigen_(other.eigen_) {
  if (eigen_) inhalt_ = new Inhalt(*other.inhalt_);
}

Token& Token::operator=(Token const& other) {
  if (this == &other) return *this;
  Token copy(other);
  std::swap(inhalt_, copy.inhalt_);
  std::swap(eigen_, copy.eigen_);
  tokenList_ = other.tokenList_;
  next_ = other.next_;
  prev_ = other.prev_;
  link_ = other.link_;
  line_ = other.line_;
  column_ = other.column_;
  type_ = other.type_;
  return *this;
}

Token::Inhalt const* Token::geteilterInhalt(std::string const& text) {
  static Inhalt const* const tabelle = [] {
    auto* records = new Inhalt[256];  // lives as long as the program
    for (int c = 0; c < 256; ++c)
      records[c].str = std::string(1, static_cast<char>(c));
    return records;
  }();
  if (text.size() != 1) return nullptr;
  return &tabelle[static_cast<unsigned char>(text[0])];
}

Token::Inhalt& Token::eigenerInhalt() {
  if (!eigen_) {
    inhalt_ = new Inhalt(*inhalt_);
    eigen_ = true;
  }
  return const_cast<Inhalt&>(*inhalt_);
}

void Token::setText(std::string text) {
  bool const ungeaendert = !inhalt_ || (inhalt_->time == keineZeit);
  if (Inhalt const* geteilt = geteilterInhalt(text); geteilt && ungeaendert) {
    if (eigen_) delete inhalt_;
    inhalt_ = geteilt;
    eigen_ = false;
  } else if (!inhalt_) {
    inhalt_ = new Inhalt{std::move(text), keineZeit};
    eigen_ = true;
  } else {
    eigenerInhalt().str = std::move(text);
  }
  type_ = typeOf(inhalt_->str, inhalt_->time);
}

void Token::str(std::string text) {
  setText(std::move(text));
}

void Token::time(long long value) {
  eigenerInhalt().time = value;
  type_ = typeOf(inhalt_->str, inhalt_->time);
}

void Token::setHardcodename(bool hardcoded) {
  type_ = hardcoded ? HardcodedName : typeOf(inhalt_->str, inhalt_->time);
}

Token::Type Token::typeOf(std::string const& text, long long time) {
  if (time != keineZeit) return Time;
  if (isDigits(text)) return Number;
  if (text.empty()) return Other;
  std::size_t first = (text.size() > 1 && text[0] == '-') ? 1 : 0;
  return isLetter(static_cast<unsigned char>(text[first])) ? Name : Other;
}

Token* Token::tokAt(int n) {
  return walk(this, n);
}
Token const* Token::tokAt(int n) const {
  return walk(this, n);
}

Token* Token::linkAt(int n) {
  return const_cast<Token*>(static_cast<Token const*>(this)->linkAt(n));
}

Token const* Token::linkAt(int n) const {
  Token const* tok = tokAt(n);
  if (!tok) throw Error(this, "Token::linkAt() mit ungueltigem Wert aufgerufen (interner Fehler).");
  return tok->link();
}

std::string const& Token::strAt(int n) const {
  Token const* tok = tokAt(n);
  return tok ? tok->str() : emptyString;
}

void Token::deleteNext(std::size_t count) {
  for (; count > 0 && next_; --count) {
    Token* removed = next_;
    if (removed->link_) removed->link_->link_ = nullptr;
    next_ = removed->next_;
    delete removed;
  }
  if (next_) {
    next_->prev_ = this;
  } else if (tokenList_) {
    // The owning list is only const towards its tokens; moving its end is part of
    // removing tokens from it.
    const_cast<TokenList*>(tokenList_)->back(this);
  }
}

bool Token::Match(Token const* tok, char const* pattern) {
  char const* p = pattern;
  while (true) {
    while (*p == ' ')
      ++p;
    if (*p == '\0') return true;
    if (isNegation(p)) {
      if (tok && firstWordEquals(p + 2, tok->str().c_str())) return false;
      if (tok) tok = tok->next();
      p = skipWord(p);
      continue;
    }
    if (!tok) return false;
    int result = multiCompare(tok, p);
    if (result < 0) return false;
    if (result == 1) tok = tok->next();
    p = skipWord(p);
  }
}

int Token::multiCompare(Token const* tok, char const* alternatives) {
  char const* p = alternatives;
  char const* const text = tok->str().c_str();
  char const* cursor = text;
  while (true) {
    if (cursor == text && startsClass(p)) {
      int result = evaluateClass(tok, p);
      if (result != kNextAlternative) return result;
      continue;
    }
    if (*p == '|') {
      if (*cursor == '\0') return 1;
      cursor = text;
      ++p;
      continue;
    }
    if (*p == *cursor) {
      if (*p == '\0') return 1;
      ++p, ++cursor;
      continue;
    }
    if (isWordEnd(*p)) {
      if (cursor == text) return 0;  // only an empty last alternative gets here
      return *cursor == '\0' ? 1 : -1;
    }
    while (*p != '|') {
      if (isWordEnd(*p)) return -1;
      ++p;
    }
    cursor = text;
    ++p;
  }
}

bool Token::firstWordEquals(char const* word, char const* text) {
  while (!isWordEnd(*word)) {
    if (*word != *text) return false;
    ++word, ++text;
  }
  return *text == '\0';
}
