#include "tokenizer/token_list.h"

#include <cctype>
#include <istream>
#include <memory>
#include <vector>

#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/std_conversions.h"

namespace {

constexpr int kEnd = -1;

// Delivers the characters of a definition file as single bytes, honouring a byte
// order mark at its start and turning CR and CRLF into one line feed. It also
// knows the column of the character it delivered last, put-back characters included.
class CharReader {
 public:
  explicit CharReader(std::istream& in) : buffer_(in.rdbuf()) { readByteOrderMark(); }

  int get() {
    if (!pending_.empty()) {
      Delivered d = pending_.back();
      pending_.pop_back();
      remember(d);
      return d.c;
    }
    int c = nextUnit();
    if (c == '\r') {
      int following = nextUnit();
      if (following != '\n') unreadUnit(following);
      c = '\n';
    }
    Delivered d{c, nextColumn_};
    nextColumn_ = c == '\n' ? 1 : nextColumn_ + 1;
    remember(d);
    return c;
  }

  // Puts back the character delivered last (and so on, up to kHistory deep).
  void unget(int c) {
    std::uint32_t column = 0;
    if (historySize_ > 0) {
      --historySize_;
      column = history_[historySize_ % kHistory];
    }
    if (c != kEnd) pending_.push_back({c, column});
  }

  std::uint32_t column() const {
    return historySize_ > 0 ? history_[(historySize_ - 1) % kHistory] : 1;
  }

 private:
  enum class Mode { SingleBytes, BigEndian16, LittleEndian16 };
  struct Delivered {
    int c;
    std::uint32_t column;
  };
  static constexpr std::size_t kHistory = 8;

  void remember(Delivered d) {
    // Only the last few columns are kept: nobody puts back more than two characters.
    if (historySize_ >= 2 * kHistory) historySize_ -= kHistory;
    history_[historySize_ % kHistory] = d.column;
    ++historySize_;
  }

  int nextByte() {
    if (!buffer_) return kEnd;
    auto c = buffer_->sbumpc();
    return c == std::char_traits<char>::eof() ? kEnd : static_cast<unsigned char>(c);
  }

  int peekByte() {
    if (!buffer_) return kEnd;
    auto c = buffer_->sgetc();
    return c == std::char_traits<char>::eof() ? kEnd : static_cast<unsigned char>(c);
  }

  void unreadUnit(int c) {
    if (c != kEnd) unread_.push_back(c);
  }

  void readByteOrderMark() {
    int first = peekByte();
    if (first == 0xEF) {
      nextByte();
      int second = nextByte();
      if (second == 0xBB && peekByte() == 0xBF) {
        nextByte();
      } else {
        unreadUnit(second);
        unreadUnit(first);
      }
    } else if (first == 0xFE || first == 0xFF) {
      nextByte();  // a lone 0xFE/0xFF byte at the start is dropped
      int second = peekByte();
      if (second != 0xFE && second != 0xFF) return;
      nextByte();
      if (first == 0xFE && second == 0xFF) mode_ = Mode::BigEndian16;
      if (first == 0xFF && second == 0xFE) mode_ = Mode::LittleEndian16;
    }
  }

  // One character in the file's encoding; 16-bit values beyond 7 bits become 0xFF.
  int nextUnit() {
    if (!unread_.empty()) {
      int c = unread_.back();
      unread_.pop_back();
      return c;
    }
    if (mode_ == Mode::SingleBytes) return nextByte();
    int first = nextByte();
    int second = nextByte();
    if (second == kEnd) return kEnd;  // an incomplete last unit ends the text
    int value = mode_ == Mode::BigEndian16 ? first * 256 + second : second * 256 + first;
    return value >= 0x80 ? 0xFF : value;
  }

  std::streambuf* buffer_;
  Mode mode_ = Mode::SingleBytes;
  std::vector<int> unread_;         // units read ahead and not yet delivered, next last
  std::vector<Delivered> pending_;  // put-back characters, the next one last
  std::uint32_t history_[kHistory] = {};
  std::size_t historySize_ = 0;
  std::uint32_t nextColumn_ = 1;
};

bool isWordChar(int c) {
  return std::isalnum(c) || c == '_' || c == '$' || c >= 128;
}

struct BracketKind {
  char open;
  char close;
  char const* tooManyOpen;
};

BracketKind const kBracketKinds[] = {
    {'{', '}', "Zu viele öffnende {-Klammern"_cp1252},
    {'(', ')', "Zu viele öffnende (-Klammern"_cp1252},
    {'[', ']', "Zu viele öffnende [-Klammern"_cp1252},
};

}  // namespace

TokenList::~TokenList() {
  Token* tok = front_;
  while (tok) {
    Token* following = tok->next();
    delete tok;
    tok = following;
  }
}

void TokenList::push_back(Token* tok) {
  if (!front_)
    front_ = tok;
  else
    back_->next(tok);
  tok->prev(back_);
  back_ = tok;
}

namespace {

// Splits the characters of one file into the raw tokens of `list`.
class Lexer {
 public:
  Lexer(TokenList& list, std::istream& in) : list_(list), reader_(in) {}

  void run() {
    for (int c = reader_.get(); c != kEnd; c = reader_.get()) {
      if (c == '\n') {
        ++line_;
        continue;
      }
      if (c < 0x20 && c != '\t') c = ' ';
      if (std::isspace(c)) continue;
      tokenColumn_ = reader_.column();
      if (isWordChar(c))
        readWord(c);
      else if (c == '/')
        readSlash();
      else if (c == '"' || c == '\'')
        readQuoted();
      else
        append(std::string(1, static_cast<char>(c)));
    }
  }

 private:
  void append(std::string text, bool quoted = false) {
    auto tok = std::make_unique<Token>(&list_, std::move(text), line_);
    tok->column(tokenColumn_);
    if (quoted) tok->setHardcodename(true);
    list_.push_back(tok.release());
  }

  void readWord(int first) {
    std::string word(1, static_cast<char>(first));
    bool startsWithDigit = std::isdigit(first);
    int c;
    for (c = reader_.get(); c != kEnd; c = reader_.get()) {
      if (isWordChar(c)) {
        word += static_cast<char>(c);
      } else if (c == '\'' && startsWithDigit) {
        // A digit group separator: 1'000 reads as 1000.
        int following = reader_.get();
        if (!isWordChar(following)) {
          reader_.unget(following);
          break;
        }
        word += static_cast<char>(following);
      } else {
        break;
      }
    }
    reader_.unget(c);
    append(std::move(word));
  }

  void readSlash() {
    int following = reader_.get();
    if (following == '/') {
      skipLineComment();
    } else if (following == '*') {
      skipBlockComment();
    } else {
      reader_.unget(following);
      append("/");
    }
  }

  void skipLineComment() {
    int c;
    do
      c = reader_.get();
    while (c != '\n' && c != kEnd);
    reader_.unget(c);  // the line feed is counted by the main loop
  }

  // The collected text must reach four characters before a "*/" ends the comment,
  // so "/**/" and "/*x*/" run on to the next "*/". An open comment ends the file.
  void skipBlockComment() {
    std::size_t collected = 0;
    int previous = kEnd;
    for (int c = reader_.get(); c != kEnd; c = reader_.get()) {
      if (c == '\n') ++line_;
      ++collected;
      if (previous == '*' && c == '/' && collected >= 4) return;
      previous = c;
    }
  }

  // Either quote closes a text, whichever opened it.
  void readQuoted() {
    std::string text;
    for (int c = reader_.get(); c != '"' && c != '\''; c = reader_.get()) {
      if (c == kEnd || c == '\n')
        list_.syntaxError(list_.back(), "Ungerade Anzahl Anführungszeichen in einer Zeile."_cp1252);
      text += static_cast<char>(c);
    }
    append(std::move(text), true);
  }

  TokenList& list_;
  CharReader reader_;
  std::uint32_t line_ = 1;
  std::uint32_t tokenColumn_ = 1;  // of the first character of the token being read
};

}  // namespace

void TokenList::read(std::istream& in, std::string const& fileName) {
  file_ = fileName;
  Lexer(*this, in).run();
}

namespace {

// Merges "h : m" or "h : m : s" around the ":" token `colon` into the hour token and
// returns the hour token.
Token* mergeTime(Token* colon) {
  Token* hour = colon->prev();
  Token* minute = colon->next();
  unsigned long long value = (toULongLong(hour->str()) * 60 + toULongLong(minute->str())) * 60;
  std::string text = hour->str() + ":" + minute->str();
  std::size_t merged = 2;
  Token* secondColon = minute->next();
  if (secondColon && secondColon->str() == ":" && secondColon->next() &&
      secondColon->next()->isNumber()) {
    Token* second = secondColon->next();
    value += toULong(second->str());
    text += ":" + second->str();
    merged = 4;
  }
  hour->str(std::move(text));
  hour->time(static_cast<long long>(value));
  hour->deleteNext(merged);
  return hour;
}

bool nextIs(Token const* tok, char const* text) {
  return tok->next() && tok->next()->str() == text;
}

}  // namespace

void TokenList::prepare() {
  for (Token* tok = front_; tok; tok = tok->next()) {
    if (tok->str() == "-" && nextIs(tok, ">")) {
      tok->str("->");
      tok->deleteNext();
    } else if (tok->str() == "<" && nextIs(tok, "-")) {
      tok->str("<-");
      tok->deleteNext();
    } else if (tok->str() == ":" && tok->prev() && tok->prev()->isNumber() && tok->next() &&
               tok->next()->isNumber()) {
      tok = mergeTime(tok);
    }
  }
  createLinks();
}

void TokenList::createLinks() {
  std::vector<Token*> openOfKind[std::size(kBracketKinds)];
  std::vector<std::size_t> openKinds;  // kinds of all open brackets, innermost last
  std::vector<Token*> allOpen;
  for (Token* tok = front_; tok; tok = tok->next()) {
    tok->link(nullptr);
    char first = tok->str().empty() ? '\0' : tok->str()[0];
    for (std::size_t kind = 0; kind < std::size(kBracketKinds); ++kind) {
      if (first == kBracketKinds[kind].open) {
        openOfKind[kind].push_back(tok);
        allOpen.push_back(tok);
        openKinds.push_back(kind);
        break;
      }
      if (first == kBracketKinds[kind].close) {
        if (!allOpen.empty() && openKinds.back() != kind)
          syntaxError(allOpen.back(), "Klammern passt nicht zueinander.");
        if (openOfKind[kind].empty()) syntaxError(tok, "Zu viele schließende Klammern."_cp1252);
        Token* partner = allOpen.back();
        allOpen.pop_back();
        openKinds.pop_back();
        tok->link(partner);
        partner->link(tok);
        openOfKind[kind].pop_back();
        break;
      }
    }
  }
  for (std::size_t kind = 0; kind < std::size(kBracketKinds); ++kind)
    if (!openOfKind[kind].empty())
      syntaxError(openOfKind[kind].back(), kBracketKinds[kind].tooManyOpen);
}

void TokenList::syntaxError(Token const* tok, char const* message) const {
  throw Error(tok, message);
}

std::string TokenList::stringify() const {
  std::string text;
  for (Token const* tok = front_; tok; tok = tok->next()) {
    if (tok != front_) text += ' ';
    text += tok->str();
  }
  return text;
}
