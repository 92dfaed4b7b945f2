#pragma once
// Drives the language server with a byte stream in tests and reads back what it
// wrote.
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "lsp/framing.h"
#include "lsp/server.h"
#include "lsp/text_encoding.h"

namespace fplc::lsp::test {

inline std::string framed(nlohmann::json const& message) {
  return rahmen(message.dump());
}

inline std::string request(int id, std::string const& method,
                           nlohmann::json params = nlohmann::json::object()) {
  return framed({{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}});
}

inline std::string notification(std::string const& method,
                                nlohmann::json params = nlohmann::json::object()) {
  return framed({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

inline std::string initialize() {
  return request(1, "initialize", {{"capabilities", nlohmann::json::object()}}) +
         notification("initialized");
}

inline std::string didOpen(std::string const& path, std::string const& text) {
  return notification(
      "textDocument/didOpen",
      {{"textDocument",
        {{"uri", uriOfPath(path)}, {"languageId", "fpl"}, {"version", 1}, {"text", text}}}});
}

inline std::string didChange(std::string const& path, std::string const& text, int version) {
  return notification("textDocument/didChange",
                      {{"textDocument", {{"uri", uriOfPath(path)}, {"version", version}}},
                       {"contentChanges", nlohmann::json::array({{{"text", text}}})}});
}

inline nlohmann::json at(std::string const& path, int line, int character) {
  return {{"textDocument", {{"uri", uriOfPath(path)}}},
          {"position", {{"line", line}, {"character", character}}}};
}

// What the server wrote, message by message, and its exit status.
struct Session {
  std::vector<nlohmann::json> messages;
  int exitStatus = -1;

  // The response to request `id`; null when there is none.
  nlohmann::json response(int id) const {
    for (nlohmann::json const& m : messages)
      if (m.contains("id") && m["id"] == id) return m;
    return nullptr;
  }
  // The last diagnostics published for `path`; null when none were.
  nlohmann::json diagnostics(std::string const& path) const {
    nlohmann::json last;
    for (nlohmann::json const& m : messages)
      if (m.value("method", "") == "textDocument/publishDiagnostics" &&
          m["params"]["uri"] == uriOfPath(path))
        last = m["params"]["diagnostics"];
    return last;
  }
};

// Serves `input` to its end and splits the output into messages.
inline Session serve(std::string const& input) {
  Eingabe eingabe(input);
  std::ostringstream out;
  Session session;
  session.exitStatus = bediene(eingabe, out, 0);
  Eingabe reader(out.str());
  while (auto m = reader.lies()) {
    if (m->body) session.messages.push_back(nlohmann::json::parse(*m->body));
  }
  return session;
}

}  // namespace fplc::lsp::test
