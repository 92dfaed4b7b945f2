#include "graph/graph_ausgabe.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <set>

#include "graph/bildfahrplan.h"
#include "graph/html_seite.h"
#include "graph/svg_writer.h"
#include "graph/zugtabelle.h"
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/token_list.h"

namespace fplc::graph {

namespace {

namespace fs = std::filesystem;

// A file name from a line's name: letters, digits, "-" and "_" stay, the rest
// becomes "_"; a name taken already gets a number.
std::string dateiname(std::string const& strecke, std::set<std::string>& vergeben) {
  std::string stamm = "strecke-";
  for (char c : strecke) {
    bool const gut = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                     c == '-' || c == '_';
    stamm += gut ? c : '_';
  }
  std::string name = stamm + ".svg";
  for (int i = 2; !vergeben.insert(name).second; ++i)
    name = stamm + "-" + std::to_string(i) + ".svg";
  return name;
}

bool schreibe(fs::path const& pfad, std::string const& text, GraphErgebnis& ergebnis) {
  std::ofstream aus(pfad, std::ios::binary);
  aus << text;
  aus.close();
  if (!aus) {
    ergebnis.fehler = "Datei \"" + pfad.string() + "\" konnte nicht geschrieben werden.";
    return false;
  }
  ergebnis.dateien.push_back(pfad.string());
  return true;
}

// "plan.fpl:12: Warnung: ...", as fplc reports the compile's warnings.
std::string warnungsText(Error const& w) {
  std::string ort;
  if (w.token) ort = w.token->getTokenList()->file() + ":" + std::to_string(w.token->line()) + ": ";
  return cp1252::toUtf8(ort + "Warnung: " + w.message);
}

std::vector<Strecke const*> streckenNachName(Fahrplandefinition const& fpl) {
  std::vector<Strecke const*> strecken;
  for (auto const& [name, strecke] : fpl.getBIF())
    strecken.push_back(&strecke);
  std::sort(strecken.begin(), strecken.end(),
            [](Strecke const* a, Strecke const* b) { return a->name < b->name; });
  return strecken;
}

}  // namespace

GraphErgebnis schreibeGraphen(Fahrplandefinition& fpl, std::string const& verzeichnis,
                              Tagesfilter const& filter, std::string const& titel) {
  GraphErgebnis ergebnis;
  // The graphs show the times trains have in the timetable files, which OUT
  // post-processes; a definition without OUT has not been.
  std::size_t const bekannt = fpl.getWarnungen().size();
  try {
    fpl.postprocess();
  } catch (std::exception const& e) {
    ergebnis.fehler = "Nachbearbeitung der Züge gescheitert: " + cp1252::toUtf8(e.what());
    return ergebnis;
  }
  // Its warnings have not been reported with the compile's.
  for (std::size_t i = bekannt; i < fpl.getWarnungen().size(); ++i)
    ergebnis.hinweise.push_back(warnungsText(fpl.getWarnungen()[i]));

  std::error_code fehler;
  fs::create_directories(verzeichnis, fehler);
  if (fehler || !fs::is_directory(verzeichnis)) {
    ergebnis.fehler =
        "Verzeichnis \"" + verzeichnis + "\" für den Bildfahrplan kann nicht angelegt werden.";
    return ergebnis;
  }

  std::set<std::string> gattungen;
  for (Zug const& z : fpl.getZuege())
    gattungen.insert(cp1252::toUtf8(oeffentlicheGattung(z.gattung)));
  Farben const farben = farbenFuer(gattungen);

  Seite seite;
  seite.titel = titel;
  seite.filter = filter;
  seite.zuege = zugtabelle(fpl.getZuege());
  std::set<std::string> vergeben = {"index.html"};
  std::size_t gezeichnet = 0;
  for (Strecke const* strecke : streckenNachName(fpl)) {
    Bildfahrplan const bild = baueBildfahrplan(*strecke, fpl.getZuege(), filter);
    gezeichnet += bild.fahrten.size();
    for (std::string const& h : bild.hinweise)
      ergebnis.hinweise.push_back("Strecke " + bild.strecke + ": " + h);
    fs::path const datei = fs::path(verzeichnis) / dateiname(bild.strecke, vergeben);
    if (!schreibe(datei, schreibeSvg(bild, farben, true), ergebnis)) return ergebnis;
    seite.strecken.push_back(bild.strecke);
    seite.graphen.push_back(schreibeSvg(bild, farben, false));
  }
  if (fpl.getBIF().empty())
    ergebnis.hinweise.push_back(
        "Die Definition enthält keine Strecke (BIF): die Seite zeigt nur die Zugtabelle.");
  else if (gezeichnet == 0 && filter.art != Tagesfilter::Alle)
    ergebnis.hinweise.push_back("Der Tagesfilter " + filter.beschreibung() +
                                " trifft auf keiner Strecke einen Zug.");
  seite.hinweise = ergebnis.hinweise;

  fs::path const index = fs::path(verzeichnis) / "index.html";
  if (schreibe(index, schreibeSeite(seite), ergebnis)) ergebnis.index = index.string();
  return ergebnis;
}

}  // namespace fplc::graph
