// libFuzzer target: the bytes an editor could send the language server, framing
// and JSON alike. The server must answer or log and return; a crash, a hang or a
// sanitizer report is a finding. The input starts with a well-formed initialize
// so that every method is reachable.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "lsp/framing.h"
#include "lsp/server.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static std::string const initialize =
      fplc::lsp::rahmen(R"({"jsonrpc":"2.0","id":0,"method":"initialize","params":{}})");
  std::string input = initialize;
  input.append(reinterpret_cast<char const*>(data), size);
  fplc::lsp::Eingabe eingabe(std::move(input));
  std::ostringstream out;
  fplc::lsp::bediene(eingabe, out, 0);
  return 0;
}
