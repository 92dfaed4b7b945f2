#include "lsp/server.h"

#include <exception>

#include "lsp/completion.h"
#include "lsp/diagnostics.h"
#include "lsp/hover.h"
#include "lsp/navigation.h"

#ifndef FPLC_VERSION
#define FPLC_VERSION "unknown"
#endif

namespace fplc::lsp {

namespace {

using nlohmann::json;

// JSON-RPC and protocol error codes.
constexpr int kParseError = -32700;
constexpr int kInvalidRequest = -32600;
constexpr int kMethodNotFound = -32601;
constexpr int kInvalidParams = -32602;
constexpr int kInternalError = -32603;
constexpr int kServerNotInitialized = -32002;

// A request's params as the protocol shapes them: an object, or an empty one.
json const& objektOderLeer(json const& message) {
  static json const leer = json::object();
  auto found = message.find("params");
  return found != message.end() && found->is_object() ? *found : leer;
}

// The setting from initializationOptions or a workspace configuration: either
// {"installationRoot": ...} or {"fplc": {"installationRoot": ...}}.
std::optional<std::string> installationRootAus(json const& settings) {
  if (!settings.is_object()) return std::nullopt;
  json const* ort = &settings;
  if (auto fplc = settings.find("fplc"); fplc != settings.end() && fplc->is_object()) ort = &*fplc;
  auto root = ort->find("installationRoot");
  if (root == ort->end() || !root->is_string() || root->get<std::string>().empty())
    return std::nullopt;
  return root->get<std::string>();
}

json capabilities() {
  return {{"textDocumentSync",
           {{"openClose", true}, {"change", 1}, {"save", {{"includeText", false}}}}},
          {"definitionProvider", true},
          {"hoverProvider", true},
          {"documentSymbolProvider", true},
          {"completionProvider", {{"triggerCharacters", json::array({" ", "~"})}}}};
}

std::string pfadAus(json const& params) {
  std::string uri = params.at("textDocument").at("uri").get<std::string>();
  std::string pfad = pathOfUri(uri);
  if (pfad.empty()) throw std::invalid_argument("Nur file:-URIs werden unterstützt: " + uri);
  return normalisiert(pfad);
}

}  // namespace

void Server::fehler(json const& id, int code, std::string const& text) {
  senden_({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", text}}}});
}

void Server::rahmenfehler(std::string const& text) {
  senden_({{"jsonrpc", "2.0"},
           {"method", "window/logMessage"},
           {"params", {{"type", 1}, {"message", "fplc-lsp: " + text}}}});
}

void Server::verarbeite(std::string const& body) {
  json message = json::parse(body, nullptr, false);
  if (message.is_discarded()) return fehler(nullptr, kParseError, "Ungültiges JSON.");
  if (!message.is_object()) return fehler(nullptr, kInvalidRequest, "Keine JSON-RPC-Nachricht.");
  json id = message.contains("id") ? message["id"] : json();
  bool hatId = message.contains("id");
  if (hatId && !id.is_string() && !id.is_number_integer())
    return fehler(nullptr, kInvalidRequest, "Ungültige id.");
  auto methode = message.find("method");
  if (methode == message.end()) return;  // a response to a request of ours: none are sent
  if (!methode->is_string()) return fehler(id, kInvalidRequest, "Methode ist kein Text.");
  if (hatId)
    anfrage(id, methode->get<std::string>(), objektOderLeer(message));
  else
    mitteilung(methode->get<std::string>(), objektOderLeer(message));
}

void Server::anfrage(json const& id, std::string const& methode, json const& params) {
  if (!initialisiert_ && methode != "initialize")
    return fehler(id, kServerNotInitialized, "Der Server ist noch nicht initialisiert.");
  if (heruntergefahren_) return fehler(id, kInvalidRequest, "Der Server wurde heruntergefahren.");
  try {
    json result = antwort(methode, params);
    if (result.is_object() && result.contains("$methodNotFound"))
      return fehler(id, kMethodNotFound, "Unbekannte Methode: " + methode);
    senden_({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
  } catch (json::exception const& e) {
    fehler(id, kInvalidParams, std::string("Ungültige Parameter: ") + e.what());
  } catch (std::invalid_argument const& e) {
    fehler(id, kInvalidParams, e.what());
  } catch (std::exception const& e) {
    fehler(id, kInternalError, e.what());
  }
}

json Server::antwort(std::string const& methode, json const& params) {
  if (methode == "initialize") return initialisiere(params);
  if (methode == "shutdown") {
    heruntergefahren_ = true;
    return nullptr;
  }
  std::string pfad;
  if (methode == "textDocument/definition" || methode == "textDocument/hover") {
    Analyse const* analyse = analyseFuer(params, pfad);
    if (!analyse) return nullptr;
    auto [zeile, spalte] = stelle(*analyse, pfad, params.at("position"));
    if (methode == "textDocument/hover") return hoverAn(*analyse, pfad, zeile, spalte);
    return definitionAn(*analyse, pfad, zeile, spalte);
  }
  if (methode == "textDocument/documentSymbol") {
    Analyse const* analyse = analyseFuer(params, pfad);
    return analyse ? symboleVon(*analyse, pfad) : json::array();
  }
  if (methode == "textDocument/completion") {
    Analyse const* analyse = analyseFuer(params, pfad);
    if (!analyse) return nullptr;
    Dokument const& dokument = dokumente_.at(pfad);
    std::uint32_t zeile = params.at("position").at("line").get<std::uint32_t>();
    std::uint32_t zeichen = params.at("position").at("character").get<std::uint32_t>();
    std::string_view line = lineOf(dokument.text, zeile);
    std::string vor(line.substr(0, byteOffset(line, zeichen, Kodierung::Utf8)));
    return vervollstaendige(*analyse, dokument, zeile, vor);
  }
  return {{"$methodNotFound", true}};
}

json Server::initialisiere(json const& params) {
  if (initialisiert_) throw std::invalid_argument("initialize kam zweimal.");
  initialisiert_ = true;
  if (auto options = params.find("initializationOptions"); options != params.end())
    einstellungen_.installationRoot = installationRootAus(*options);
  return {{"capabilities", capabilities()},
          {"serverInfo", {{"name", "fplc-lsp"}, {"version", FPLC_VERSION}}}};
}

void Server::mitteilung(std::string const& methode, json const& params) {
  if (methode == "exit") {
    beendet_ = true;
    return;
  }
  if (!initialisiert_ || heruntergefahren_) return;  // notifications are dropped
  try {
    if (methode == "textDocument/didOpen") oeffne(params);
    if (methode == "textDocument/didChange") aendere(params);
    if (methode == "textDocument/didSave") speichere(params);
    if (methode == "textDocument/didClose") schliesse(params);
    if (methode == "workspace/didChangeConfiguration") {
      einstellungen_.installationRoot = installationRootAus(params.value("settings", json()));
      for (auto const& [pfad, dokument] : dokumente_)
        vormerken(pfad);
    }
  } catch (std::exception const& e) {
    rahmenfehler(methode + ": " + e.what());  // a notification has no one to answer
  }
}

void Server::oeffne(json const& params) {
  json const& item = params.at("textDocument");
  Dokument d;
  d.uri = item.at("uri").get<std::string>();
  d.pfad = pfadAus(params);
  d.text = item.at("text").get<std::string>();
  d.kodierung = kodierungVon(d.pfad);
  std::string pfad = d.pfad;
  dokumente_[pfad] = std::move(d);
  vormerken(pfad);
}

void Server::aendere(json const& params) {
  std::string pfad = pfadAus(params);
  auto found = dokumente_.find(pfad);
  if (found == dokumente_.end()) return;
  // Full sync: the last change holds the whole text.
  json const& changes = params.at("contentChanges");
  if (!changes.is_array() || changes.empty()) return;
  found->second.text = changes.back().at("text").get<std::string>();
  vormerken(pfad);
}

// The saved file decides the encoding again: the editor may have written it
// in another one.
void Server::speichere(json const& params) {
  std::string pfad = pfadAus(params);
  auto found = dokumente_.find(pfad);
  if (found == dokumente_.end()) return;
  found->second.kodierung = kodierungVon(pfad);
  vormerken(pfad);
}

void Server::schliesse(json const& params) {
  std::string pfad = pfadAus(params);
  auto found = dokumente_.find(pfad);
  if (found == dokumente_.end()) return;
  std::string uri = found->second.uri;
  dokumente_.erase(found);
  analysen_.erase(pfad);
  ausstehend_.erase(pfad);
  std::set<std::string> uris = std::move(veroeffentlicht_[pfad]);
  veroeffentlicht_.erase(pfad);
  uris.insert(uri);
  for (std::string const& u : uris)
    senden_({{"jsonrpc", "2.0"},
             {"method", "textDocument/publishDiagnostics"},
             {"params", {{"uri", u}, {"diagnostics", json::array()}}}});
}

// Marks the document, and every open document whose last compile read it, for
// the next compile; a mark already there is simply kept.
void Server::vormerken(std::string const& pfad) {
  if (dokumente_.count(pfad)) ausstehend_.insert(pfad);
  for (auto const& [haupt, analyse] : analysen_) {
    if (haupt == pfad || !dokumente_.count(haupt)) continue;
    for (auto const& list : analyse->fpl->getTokenLists())
      if (normalisiert(list->file()) == pfad) ausstehend_.insert(haupt);
  }
}

void Server::leerlauf() {
  std::set<std::string> jetzt = std::move(ausstehend_);
  ausstehend_.clear();
  for (std::string const& pfad : jetzt)
    kompiliere(pfad);
}

void Server::kompiliere(std::string const& pfad) {
  auto found = dokumente_.find(pfad);
  if (found == dokumente_.end()) return;
  ausstehend_.erase(pfad);
  ++kompilierungen_;
  std::unique_ptr<Analyse> analyse = analysiere(found->second, dokumente_, einstellungen_);
  veroeffentliche(pfad, *analyse);
  analysen_[pfad] = std::move(analyse);
}

void Server::veroeffentliche(std::string const& pfad, Analyse const& analyse) {
  std::set<std::string> vorher = std::move(veroeffentlicht_[pfad]);
  std::set<std::string>& jetzt = veroeffentlicht_[pfad];
  jetzt.clear();
  std::string eigene = uriOfPath(pfad);
  for (auto& [uri, diagnosen] : diagnosenJeDatei(analyse)) {
    // An included file the editor has open is reported by its own compile.
    std::string datei = pathOfUri(uri);
    if (uri != eigene && dokumente_.count(datei)) continue;
    if (uri != eigene) jetzt.insert(uri);
    senden_({{"jsonrpc", "2.0"},
             {"method", "textDocument/publishDiagnostics"},
             {"params", {{"uri", uri}, {"diagnostics", diagnosen}}}});
  }
  for (std::string const& uri : vorher) {
    if (jetzt.count(uri)) continue;
    senden_({{"jsonrpc", "2.0"},
             {"method", "textDocument/publishDiagnostics"},
             {"params", {{"uri", uri}, {"diagnostics", json::array()}}}});
  }
}

Analyse const* Server::analyseFuer(json const& params, std::string& pfad) {
  pfad = pfadAus(params);
  if (!dokumente_.count(pfad)) return nullptr;
  if (ausstehend_.count(pfad) || !analysen_.count(pfad)) kompiliere(pfad);
  return analysen_.at(pfad).get();
}

std::pair<std::uint32_t, std::uint32_t> Server::stelle(Analyse const& analyse,
                                                       std::string const& pfad,
                                                       json const& position) const {
  std::uint32_t line = position.at("line").get<std::uint32_t>();
  std::uint32_t character = position.at("character").get<std::uint32_t>();
  if (line >= 0xFFFFFFFEu) throw std::invalid_argument("Zeile außerhalb des Dokuments.");
  auto [text, kodierung] = analyse.zeile(pfad, line + 1);
  std::uint32_t byte = byteOffset(text, character, kodierung);
  if (byte == 0xFFFFFFFFu) throw std::invalid_argument("Spalte außerhalb des Dokuments.");
  return {line + 1, byte + 1};
}

int bediene(Eingabe& eingabe, std::ostream& aus, int ruheMillisekunden) {
  Server server([&aus](json const& message) {
    // Texts that are not UTF-8 (a Windows-1252 file name, say) are replaced, not
    // allowed to stop the server.
    aus << rahmen(message.dump(-1, ' ', false, json::error_handler_t::replace));
    aus.flush();
  });
  while (!server.beendet()) {
    if (!eingabe.wartet(0) && !eingabe.wartet(ruheMillisekunden)) server.leerlauf();
    std::optional<Eingabe::Nachricht> nachricht = eingabe.lies();
    if (!nachricht) break;
    if (nachricht->body)
      server.verarbeite(*nachricht->body);
    else
      server.rahmenfehler(nachricht->fehler);
  }
  if (!server.beendet()) server.leerlauf();  // the input ended: what was typed still counts
  return server.exitStatus();
}

}  // namespace fplc::lsp
