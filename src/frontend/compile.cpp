#include "frontend/compile.h"

#include <exception>
#include <filesystem>
#include <new>
#include <system_error>

#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token_list.h"

namespace {

Diagnose diagnoseAt(Token const* token, std::string const& definition, bool fehler,
                    std::string const& meldung) {
  Diagnose d;
  d.fehler = fehler;
  d.meldung = meldung;
  if (token) {
    d.datei = token->getTokenList()->file();
    d.zeile = token->line();
    if (token->column() > 0) {
      d.spalte = token->column();
      d.laenge = static_cast<std::uint32_t>(token->str().size());
    }
  } else {
    d.datei = definition;
  }
  return d;
}

// Runs the library and returns its fatal fault, if any. A standard exception
// has no token of its own: it is placed at the command being dispatched.
std::optional<Diagnose> runLibrary(Fahrplandefinition& fpl, std::istream& in,
                                   Options const& options) {
  std::string const& file = options.definition;
  try {
    fpl.read(in, file);
    fpl.execute(options.check, nullptr);
    // A check finds what a real run finds: OUT would have post-processed.
    if (fpl.isAusgabeUebersprungen()) fpl.postprocess();
    if (!options.noValidate) fpl.validate();
  } catch (Error const& e) {
    return diagnoseAt(e.token, file, true, e.message);
  } catch (std::bad_alloc const&) {
    return diagnoseAt(fpl.getCurrentCommand(), file, true, "nicht genug Speicher");
  } catch (std::exception const& e) {
    return diagnoseAt(fpl.getCurrentCommand(), file, true, e.what());
  }
  return std::nullopt;
}

}  // namespace

bool openDefinition(std::string const& file, std::ifstream& in, std::string& problem) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (!fs::exists(file, error)) {
    problem = "Definitionsdatei \"" + file + "\" nicht gefunden.";
    return false;
  }
  if (fs::is_directory(file, error)) {
    problem = "\"" + file + "\" ist ein Verzeichnis, keine Definitionsdatei.";
    return false;
  }
  in.open(file, std::ios::in | std::ios::binary);
  if (!in.is_open()) {
    problem = "Definitionsdatei \"" + file + "\" kann nicht gelesen werden.";
    return false;
  }
  return true;
}

Ergebnis compile(Fahrplandefinition& fpl, std::istream& in, Options const& options) {
  Ergebnis ergebnis;
  std::optional<Diagnose> fatal = runLibrary(fpl, in, options);

  for (Error const& w : fpl.getWarnungen())
    ergebnis.diagnosen.push_back(diagnoseAt(w.token, options.definition, false, w.message));
  ergebnis.warnungen = !fpl.getWarnungen().empty();

  // The library does not count a failed save as a fault; fplc does.
  ergebnis.ausgaben = fpl.getAusgaben();
  for (Fahrplandefinition::Ausgabe const& a : ergebnis.ausgaben) {
    if (a.geschrieben) continue;
    ergebnis.nichtGeschrieben = true;
    ergebnis.diagnosen.push_back(
        diagnoseAt(nullptr, options.definition, true,
                   "Fahrplandatei \"" + a.pfad + "\" konnte nicht geschrieben werden."));
  }

  if (fatal) {
    ergebnis.abgebrochen = true;
    ergebnis.diagnosen.push_back(*fatal);
  }
  return ergebnis;
}
