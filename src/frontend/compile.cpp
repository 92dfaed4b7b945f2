#include "frontend/compile.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iterator>
#include <map>
#include <new>
#include <sstream>
#include <system_error>

#include "frontend/befund.h"
#include "frontend/checks.h"
#include "frontend/notes.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token_list.h"

namespace fplc::detail {

Befund befundAn(Token const* token, std::string const& definition, bool fehler,
                std::string const& meldung) {
  Befund b;
  b.token = token;
  Diagnose& d = b.diagnose;
  d.fehler = fehler;
  d.meldung = meldung;
  if (token) {
    d.datei = token->getTokenList()->file();
    d.zeile = token->line();
    if (token->column() > 0) {
      d.spalte = token->column();
      d.laenge = static_cast<std::uint32_t>(std::max<std::size_t>(token->str().size(), 1));
    }
  } else {
    d.datei = definition;
  }
  return b;
}

std::size_t editierAbstand(std::string const& a, std::string const& b, std::size_t grenze) {
  std::size_t const n = a.size(), m = b.size();
  if ((n > m ? n - m : m - n) > grenze) return grenze + 1;
  // Three rows suffice for swaps of neighbours.
  std::vector<std::size_t> vorvorige(m + 1), vorige(m + 1), zeile(m + 1);
  for (std::size_t j = 0; j <= m; ++j)
    vorige[j] = j;
  for (std::size_t i = 1; i <= n; ++i) {
    zeile[0] = i;
    for (std::size_t j = 1; j <= m; ++j) {
      std::size_t const kosten = a[i - 1] == b[j - 1] ? 0 : 1;
      zeile[j] = std::min({vorige[j] + 1, zeile[j - 1] + 1, vorige[j - 1] + kosten});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        zeile[j] = std::min(zeile[j], vorvorige[j - 2] + 1);
    }
    std::swap(vorvorige, vorige);
    std::swap(vorige, zeile);
  }
  return std::min(vorige[m], grenze + 1);
}

std::string aehnlichsterName(std::string const& name, std::vector<std::string> const& kandidaten) {
  std::string bester;
  std::size_t besterAbstand = 3;
  for (std::string const& k : kandidaten) {
    if (k == name) continue;
    std::size_t const abstand = editierAbstand(name, k, 2);
    if (abstand < besterAbstand || (abstand == besterAbstand && k < bester)) {
      besterAbstand = abstand;
      bester = k;
    }
  }
  return bester;
}

}  // namespace fplc::detail

namespace {

using fplc::detail::Befund;
using fplc::detail::befundAn;

// Runs the library and returns its fatal fault, if any. A standard exception
// has no token of its own: it is placed at the command being dispatched.
std::optional<Befund> runLibrary(Fahrplandefinition& fpl, std::istream& in, Options const& options,
                                 bool& standardFehler) {
  std::string const file = definitionName(options);
  try {
    fpl.read(in, file);
    fpl.execute(options.check, nullptr);
    // A check finds what a real run finds: OUT would have post-processed.
    if (fpl.isAusgabeUebersprungen()) fpl.postprocess();
    if (!options.noValidate) fpl.validate();
  } catch (Error const& e) {
    return befundAn(e.token, file, true, e.message);
  } catch (std::bad_alloc const&) {
    return befundAn(fpl.getCurrentCommand(), file, true, "nicht genug Speicher");
  } catch (std::exception const& e) {
    standardFehler = true;
    return befundAn(fpl.getCurrentCommand(), file, true, e.what());
  }
  return std::nullopt;
}

// The lines of every file read, for the report: the main text as it was read,
// included files from disk.
class Quelltexte {
 public:
  Quelltexte(std::string hauptdatei, std::string haupttext) { zerlege(hauptdatei, haupttext); }

  std::string zeile(std::string const& datei, std::uint32_t nummer) {
    auto it = zeilen.find(datei);
    if (it == zeilen.end()) {
      std::ifstream in(datei, std::ios::binary);
      it = zerlege(datei, std::string(std::istreambuf_iterator<char>(in), {}));
    }
    if (nummer == 0 || nummer > it->second.size()) return {};
    return it->second[nummer - 1];
  }

 private:
  std::map<std::string, std::vector<std::string>>::iterator zerlege(std::string const& datei,
                                                                    std::string const& text) {
    std::vector<std::string> liste;
    std::istringstream in(text);
    for (std::string z; std::getline(in, z);) {
      if (!z.empty() && z.back() == '\r') z.pop_back();
      liste.push_back(std::move(z));
    }
    return zeilen.insert_or_assign(datei, std::move(liste)).first;
  }

  std::map<std::string, std::vector<std::string>> zeilen;
};

std::string fehlerText(int code) {
  std::error_code const fehler(code, std::generic_category());
  if (fehler == std::errc::no_space_on_device) return "kein Platz mehr auf dem Datenträger"_cp1252;
  if (fehler == std::errc::file_too_large) return "Datei zu groß für das Dateisystem"_cp1252;
  if (fehler == std::errc::no_such_file_or_directory) return "Verzeichnis existiert nicht";
  if (fehler == std::errc::permission_denied || fehler == std::errc::operation_not_permitted)
    return "keine Schreibberechtigung";
  if (fehler == std::errc::read_only_file_system) return "Dateisystem ist schreibgeschützt"_cp1252;
  if (fehler == std::errc::not_a_directory) return "ein Teil des Pfads ist kein Verzeichnis";
  if (fehler == std::errc::is_a_directory) return "der Pfad ist ein Verzeichnis";
  if (fehler == std::errc::no_such_device_or_address)
    return "an der Stelle steht eine Pipe (FIFO), keine Datei";
  return "Systemfehler " + std::to_string(code);
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

std::string definitionName(Options const& options) {
  return options.definition == "-" ? "<stdin>" : options.definition;
}

Ergebnis compile(Fahrplandefinition& fpl, std::istream& in, Options const& options) {
  std::string const text(std::istreambuf_iterator<char>(in), {});
  std::istringstream kopie(text);
  std::string const datei = definitionName(options);

  Ergebnis ergebnis;
  bool standardFehler = false;
  std::optional<Befund> fatal = runLibrary(fpl, kopie, options, standardFehler);

  std::vector<Befund> befunde;
  for (Error const& w : fpl.getWarnungen())
    befunde.push_back(befundAn(w.token, datei, false, w.message));
  ergebnis.warnungen = !fpl.getWarnungen().empty();
  fplc::detail::ergaenzeZeitNotizen(fpl, befunde);
  if (fatal) fplc::detail::ergaenzeFehlerNotizen(fpl, *fatal, standardFehler);
  if (options.lint) {
    std::size_t const vorher = befunde.size();
    fplc::detail::pruefe(fpl, befunde, options.ohnePruefungen, fatal.has_value());
    if (befunde.size() > vorher) ergebnis.warnungen = true;
  }

  // The library does not count a failed save as a fault; fplc does.
  ergebnis.ausgaben = fpl.getAusgaben();
  for (Fahrplandefinition::Ausgabe const& a : ergebnis.ausgaben) {
    if (a.geschrieben) continue;
    ergebnis.nichtGeschrieben = true;
    Befund b = befundAn(nullptr, datei, true,
                        "Fahrplandatei \"" + a.pfad + "\" konnte nicht geschrieben werden.");
    if (a.fehlerCode != 0) b.diagnose.notizen.push_back(fehlerText(a.fehlerCode) + ".");
    befunde.push_back(std::move(b));
  }
  if (fatal) {
    ergebnis.abgebrochen = true;
    befunde.push_back(std::move(*fatal));
  }

  Quelltexte quellen(datei, text);
  for (Befund& b : befunde) {
    if (b.diagnose.zeile)
      b.diagnose.zeilentext = quellen.zeile(b.diagnose.datei, *b.diagnose.zeile);
    ergebnis.diagnosen.push_back(std::move(b.diagnose));
  }
  return ergebnis;
}
