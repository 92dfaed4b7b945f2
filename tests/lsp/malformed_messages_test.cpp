// Feeds the server damaged messages made from a random state with a fixed
// starting value, and checks after each batch that it still answers.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "lsp_test_support.h"

namespace fplc::lsp {
namespace {

using nlohmann::json;

std::vector<std::string> wellFormed() {
  std::string const text = "Quorvel FplDef 1\nBTR XA Ahof\nZL L {\n  XA . G1 H - 0:00\n}\n";
  std::string const path = "/nonexistent-fplc-lsp/plan.fpl";
  return {
      test::didOpen(path, text),
      test::didChange(path, text + "TZ 1 3 2 0:00 1:00 Mo\n", 2),
      test::request(20, "textDocument/hover", test::at(path, 2, 3)),
      test::request(21, "textDocument/definition", test::at(path, 3, 2)),
      test::request(22, "textDocument/completion", test::at(path, 4, 0)),
      test::request(23, "textDocument/documentSymbol",
                    {{"textDocument", {{"uri", "file://" + path}}}}),
      test::request(24, "textDocument/hover", test::at(path, 99999, 4000000000u)),
      test::request(25, "textDocument/hover", {{"textDocument", {{"uri", 5}}}}),
      test::notification("textDocument/didClose", {{"textDocument", {{"uri", "file://" + path}}}})};
}

// One damaged copy of `message`: truncated, a byte flipped, bytes inserted, or
// its length header lying.
std::string damage(std::string message, std::mt19937& random) {
  std::uniform_int_distribution<std::size_t> position(0, message.size() - 1);
  switch (random() % 5) {
    case 0:
      return message.substr(0, position(random));
    case 1:
      message[position(random)] = static_cast<char>(random() & 0xFF);
      return message;
    case 2:
      return message.insert(position(random), std::string(1 + random() % 4, '{'));
    case 3: {
      std::string body = message.substr(message.find("\r\n\r\n") + 4);
      return "Content-Length: " + std::to_string(body.size() + random() % 7 - 3) + "\r\n\r\n" +
             body;
    }
    default: {
      std::string body = message.substr(message.find("\r\n\r\n") + 4);
      return rahmen(body.substr(0, position(random) % (body.size() + 1)));
    }
  }
}

TEST(MalformedMessages, TheServerAnswersAfterEveryDamagedBatch) {
  std::mt19937 random(20261124);
  std::vector<std::string> const messages = wellFormed();
  int answered = 0;
  for (int round = 0; round < 200; ++round) {
    std::string input = test::initialize();
    for (int i = 0; i < 6; ++i) {
      std::string const& m = messages[random() % messages.size()];
      input += random() % 3 == 0 ? m : damage(m, random);
    }
    // A clean break, then a request that must be answered.
    input += "\r\n\r\n" + test::request(99, "shutdown");
    test::Session s = test::serve(input);
    // A damaged length may swallow the shutdown; the server then waits for more
    // input and, at its end, still leaves. What it must never do is crash.
    if (s.response(99).is_null()) continue;
    EXPECT_TRUE(s.response(99).contains("result")) << round;
    ++answered;
  }
  // Only a lying length can swallow the final request; most rounds have none.
  EXPECT_GT(answered, 150);
}

TEST(MalformedMessages, AnswersAfterAShortLengthSwallowedPartOfTheNextMessage) {
  std::string const ok = test::request(2, "shutdown");
  test::Session s =
      test::serve(test::initialize() + "Content-Length: 3\r\n\r\n{\"a\":1}\r\n\r\n" + ok);
  EXPECT_TRUE(s.response(2).contains("result"));
}

}  // namespace
}  // namespace fplc::lsp
