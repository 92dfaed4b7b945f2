#pragma once
// The language server: answers the editor's messages one at a time and compiles
// changed documents when the input falls idle, so that a change that arrives
// while a compile is still pending replaces it.
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <string>

#include <nlohmann/json.hpp>

#include "lsp/analysis.h"
#include "lsp/framing.h"

namespace fplc::lsp {

class Server {
 public:
  using Senden = std::function<void(nlohmann::json const&)>;
  explicit Server(Senden senden) : senden_(std::move(senden)) {}

  // One message body as it came in.
  void verarbeite(std::string const& body);
  // A fault in the framing: logged to the editor, the message is lost.
  void rahmenfehler(std::string const& text);
  // Compiles every document changed since the last compile and publishes its
  // diagnostics. Called when no input is waiting.
  void leerlauf();

  bool beendet() const { return beendet_; }
  // The exit status the protocol asks for: 0 after shutdown, else 1.
  int exitStatus() const { return heruntergefahren_ ? 0 : 1; }
  // How many compiles ran, for tests of the debounce.
  int kompilierungen() const { return kompilierungen_; }

 private:
  void anfrage(nlohmann::json const& id, std::string const& methode, nlohmann::json const& params);
  void mitteilung(std::string const& methode, nlohmann::json const& params);
  nlohmann::json antwort(std::string const& methode, nlohmann::json const& params);
  nlohmann::json initialisiere(nlohmann::json const& params);

  void oeffne(nlohmann::json const& params);
  void aendere(nlohmann::json const& params);
  void speichere(nlohmann::json const& params);
  void schliesse(nlohmann::json const& params);
  void vormerken(std::string const& pfad);
  void kompiliere(std::string const& pfad);
  void veroeffentliche(std::string const& pfad, Analyse const& analyse);

  // The current analysis of a request's document, compiled first when pending;
  // null for a document that is not open.
  Analyse const* analyseFuer(nlohmann::json const& params, std::string& pfad);
  // Line (from 1) and byte column (from 1) of a request's position.
  std::pair<std::uint32_t, std::uint32_t> stelle(Analyse const& analyse, std::string const& pfad,
                                                 nlohmann::json const& position) const;

  void fehler(nlohmann::json const& id, int code, std::string const& text);

  Senden senden_;
  bool initialisiert_ = false;
  bool heruntergefahren_ = false;
  bool beendet_ = false;
  int kompilierungen_ = 0;
  Einstellungen einstellungen_;
  Dokumente dokumente_;
  std::map<std::string, std::unique_ptr<Analyse>> analysen_;
  std::set<std::string> ausstehend_;
  // Per compiled document, the other files it published diagnostics for.
  std::map<std::string, std::set<std::string>> veroeffentlicht_;
};

// How long the input must stay quiet before pending documents are compiled.
inline constexpr int kRuheMillisekunden = 30;

// Serves `eingabe` until exit or the end of the input, writing framed messages
// to `aus`. Returns the process's exit status.
int bediene(Eingabe& eingabe, std::ostream& aus, int ruheMillisekunden = kRuheMillisekunden);

}  // namespace fplc::lsp
