#include "lsp/framing.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>

namespace fplc::lsp {

namespace {

constexpr std::size_t kMaxKopfzeile = 4096;

bool startsWithIgnoringCase(std::string const& text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(text[i])) != prefix[i]) return false;
  return true;
}

// The value of "Content-Length: n", or nullopt when it is no decimal number.
std::optional<std::size_t> laengeAus(std::string const& zeile) {
  std::size_t i = zeile.find(':') + 1;
  while (i < zeile.size() && (zeile[i] == ' ' || zeile[i] == '\t'))
    ++i;
  std::size_t end = zeile.size();
  while (end > i && (zeile[end - 1] == ' ' || zeile[end - 1] == '\t'))
    --end;
  std::size_t value = 0;
  auto [ptr, ec] = std::from_chars(zeile.data() + i, zeile.data() + end, value);
  if (ec != std::errc() || ptr != zeile.data() + end || i == end) return std::nullopt;
  return value;
}

}  // namespace

bool Eingabe::fuelle() {
  if (ende_ || fd_ < 0) return ende_ = true, false;
  if (pos_ > 0 && pos_ == puffer_.size()) puffer_.clear(), pos_ = 0;
  char chunk[65536];
  for (;;) {
    ssize_t n = ::read(fd_, chunk, sizeof chunk);
    if (n > 0) {
      puffer_.append(chunk, static_cast<std::size_t>(n));
      return true;
    }
    if (n < 0 && errno == EINTR) continue;
    return ende_ = true, false;
  }
}

bool Eingabe::wartet(int millisekunden) {
  if (pos_ < puffer_.size()) return true;
  if (fd_ < 0 || ende_) return false;
  pollfd p{fd_, POLLIN, 0};
  return ::poll(&p, 1, millisekunden) > 0;
}

// One header line without its line end; nullopt at the end of the input. A line
// longer than kMaxKopfzeile is cut there, so that garbage cannot grow the buffer.
std::optional<std::string> Eingabe::zeile() {
  std::string line;
  for (;;) {
    while (pos_ < puffer_.size()) {
      char c = puffer_[pos_++];
      if (c == '\n') {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        return line;
      }
      if (line.size() < kMaxKopfzeile) line += c;
    }
    if (!fuelle()) return line.empty() ? std::nullopt : std::optional<std::string>(line);
  }
}

bool Eingabe::bytes(std::size_t n, std::string& out) {
  out.clear();
  while (out.size() < n) {
    if (pos_ == puffer_.size() && !fuelle()) return false;
    std::size_t take = std::min(n - out.size(), puffer_.size() - pos_);
    out.append(puffer_, pos_, take);
    pos_ += take;
  }
  return true;
}

std::optional<Eingabe::Nachricht> Eingabe::lies() {
  std::optional<std::size_t> laenge;
  bool kopf = false;  // whether any header line was read
  std::string fehler;
  for (;;) {
    std::optional<std::string> line = zeile();
    if (!line) {
      if (!kopf) return std::nullopt;
      return Nachricht{std::nullopt, "Nachricht endet im Kopf."};
    }
    if (line->empty()) {
      if (!kopf) continue;  // blank lines between messages are passed over
      break;
    }
    // A line that is no header is reported at once, so that reading picks up
    // again at the next line.
    if (line->find(':') == std::string::npos)
      return Nachricht{std::nullopt, "Ungültige Kopfzeile: " + line->substr(0, 80)};
    kopf = true;
    if (startsWithIgnoringCase(*line, "content-length:")) {
      laenge = laengeAus(*line);
      if (!laenge) fehler = "Ungültige Content-Length: " + line->substr(0, 80);
    }
  }
  if (!fehler.empty()) return Nachricht{std::nullopt, fehler};
  if (!laenge) return Nachricht{std::nullopt, "Content-Length fehlt."};
  if (*laenge > kMaxNachricht) {
    verwirf(*laenge);
    return Nachricht{std::nullopt, "Nachricht zu lang: " + std::to_string(*laenge) + " Bytes."};
  }
  std::string body;
  if (!bytes(*laenge, body)) return Nachricht{std::nullopt, "Nachricht endet vorzeitig."};
  return Nachricht{std::move(body), {}};
}

void Eingabe::verwirf(std::size_t n) {
  while (n > 0) {
    if (pos_ == puffer_.size() && !fuelle()) return;
    std::size_t take = std::min(n, puffer_.size() - pos_);
    pos_ += take;
    n -= take;
  }
}

std::string rahmen(std::string const& body) {
  return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

}  // namespace fplc::lsp
