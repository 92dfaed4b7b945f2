#pragma once
// The protocol's framing: "Content-Length: n" headers, an empty line, n bytes of
// JSON. Reads from a file descriptor (the editor's pipe) or from a fixed text
// (tests), and can tell whether more input is already waiting, which is what the
// server's debounce asks before it compiles.
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace fplc::lsp {

// The longest message body accepted; a larger Content-Length is a framing fault.
inline constexpr std::size_t kMaxNachricht = 64u << 20;

class Eingabe {
 public:
  explicit Eingabe(int fd) : fd_(fd) {}
  explicit Eingabe(std::string text) : puffer_(std::move(text)) {}

  // What reading one message gave.
  struct Nachricht {
    std::optional<std::string> body;  // the JSON text
    std::string fehler;               // a framing fault (the message was skipped)
  };

  // The next message, a framing fault, or nullopt at the end of the input.
  std::optional<Nachricht> lies();
  // Whether bytes are waiting, now or within `millisekunden`.
  bool wartet(int millisekunden);

 private:
  bool fuelle();  // reads more bytes; false at the end of the input
  std::optional<std::string> zeile();
  bool bytes(std::size_t n, std::string& out);
  void verwirf(std::size_t n);  // passes over n bytes without keeping them

  int fd_ = -1;
  std::string puffer_;
  std::size_t pos_ = 0;
  bool ende_ = false;
};

// `body` with its header, ready to write.
std::string rahmen(std::string const& body);

}  // namespace fplc::lsp
