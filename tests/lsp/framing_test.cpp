#include "lsp/framing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fplc::lsp {
namespace {

// Every message of `input`: its body, or "!" and the framing fault.
std::vector<std::string> readAll(std::string const& input) {
  Eingabe eingabe(input);
  std::vector<std::string> out;
  while (auto m = eingabe.lies())
    out.push_back(m->body ? *m->body : "!" + m->fehler);
  return out;
}

TEST(Framing, ReadsBodiesAndReportsEachFaultOnce) {
  struct Case {
    std::string input;
    std::vector<std::string> expected;
  };
  std::vector<Case> const cases = {
      {"Content-Length: 2\r\n\r\n{}", {"{}"}},
      {"Content-Length: 2\r\n\r\n{}Content-Length: 3\r\n\r\n[1]", {"{}", "[1]"}},
      // Header names are case-insensitive; other headers are passed over.
      {"content-length:  4 \r\nContent-Type: x\r\n\r\nnull", {"null"}},
      // Plain line feeds are accepted too.
      {"Content-Length: 1\n\n1", {"1"}},
      {"Content-Length: abc\r\n\r\n", {"!Ungültige Content-Length: Content-Length: abc"}},
      {"Content-Length: -1\r\n\r\n", {"!Ungültige Content-Length: Content-Length: -1"}},
      {"Content-Type: x\r\n\r\n{}", {"!Content-Length fehlt.", "!Ungültige Kopfzeile: {}"}},
      // A line that is no header is reported at once; reading goes on after it.
      {"{\"a\"}\r\nContent-Length: 2\r\n\r\n{}", {"!Ungültige Kopfzeile: {\"a\"}", "{}"}},
      {"Content-Length: 10\r\n\r\n{}", {"!Nachricht endet vorzeitig."}},
      {"Content-Length: 10\r\n", {"!Nachricht endet im Kopf."}},
      {"Content-Length: 99999999999\r\n\r\n{}", {"!Nachricht zu lang: 99999999999 Bytes."}},
      {"Content-Length: 99999999999999999999999\r\n\r\n",
       {"!Ungültige Content-Length: Content-Length: 99999999999999999999999"}},
      {"", {}},
      {"\r\n\r\n", {}},
  };
  for (Case const& c : cases)
    EXPECT_EQ(readAll(c.input), c.expected) << c.input;
}

TEST(Framing, WritesTheLengthInBytes) {
  EXPECT_EQ(rahmen("{\"a\":\"ä\"}"), "Content-Length: 10\r\n\r\n{\"a\":\"ä\"}");
}

}  // namespace
}  // namespace fplc::lsp
