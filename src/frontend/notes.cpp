#include "frontend/notes.h"

#include <filesystem>
#include <system_error>

#include "external/install_path.h"
#include "external/installation.h"
#include "output/zeit.h"
#include "tokenizer/cp1252.h"

namespace fplc::detail {
namespace {

std::string zeit(long long t) {
  return zeitToString(t, true, false);
}

std::string eintragName(FplEintrag const& e) {
  if (e.typ == FplEintrag::Einfahrt || e.typ == FplEintrag::Ausfahrt)
    return e.anlage + " . " + e.anlagePunkt;
  return e.bahnhof;
}

std::string zeitenText(FplEintrag const& e) {
  std::string text;
  if (e.an != keineZeit) text += "an " + zeit(e.an);
  if (e.ab != keineZeit) text += std::string(text.empty() ? "" : ", ") + "ab " + zeit(e.ab);
  return text.empty() ? "ohne Zeit" : text;
}

// The run and index of the entry that carries `token`, in the first run that has one.
std::pair<Zuglauf const*, std::size_t> findeEintrag(Fahrplandefinition const& fpl,
                                                    Token const* token) {
  for (Zuglauf const& lauf : fpl.getZL())
    for (std::size_t i = 0; i < lauf.eintraege.size(); ++i)
      if (lauf.eintraege[i].token == token) return {&lauf, i};
  return {nullptr, 0};
}

bool istReihenfolgeWarnung(std::string const& m) {
  return m == "Ankunftszeit liegt vor Fahrtzeit an vorangehendem Eintrag." ||
         m == "Abfahrtszeit liegt vor Fahrtzeit an vorangehendem Eintrag." ||
         m == "Abfahrtszeit vor Ankunftszeit.";
}

void notiereReihenfolge(Zuglauf const& lauf, std::size_t index, Diagnose& d) {
  FplEintrag const& e = lauf.eintraege[index];
  d.notizen.push_back("Zeiten von " + eintragName(e) + ": " + zeitenText(e) + ".");
  // Departure before arrival concerns the entry alone.
  if (d.meldung == "Abfahrtszeit vor Ankunftszeit.") return;
  for (std::size_t i = index; i-- > 0;) {
    FplEintrag const& vorher = lauf.eintraege[i];
    if (vorher.an == keineZeit && vorher.ab == keineZeit) continue;
    d.notizen.push_back("Vorangehender Eintrag " + eintragName(vorher) + " (" +
                        ortText(vorher.token) + "): " + zeitenText(vorher) + ".");
    return;
  }
}

void notiereLaufzeit(Zuglauf const& lauf, Diagnose& d) {
  FplEintrag const* frueh = nullptr;
  FplEintrag const* spaet = nullptr;
  long long kleinste = 0, groesste = 0;
  for (FplEintrag const& e : lauf.eintraege) {
    for (long long t : {e.an, e.ab}) {
      if (t == keineZeit) continue;
      if (!frueh || t < kleinste) frueh = &e, kleinste = t;
      if (!spaet || t > groesste) spaet = &e, groesste = t;
    }
  }
  if (!frueh) return;
  d.notizen.push_back("Früheste Zeit "_cp1252 + zeit(kleinste) + " bei " + eintragName(*frueh) +
                      ", späteste "_cp1252 + zeit(groesste) + " bei " + eintragName(*spaet) + ".");
}

// The names a look-up by the command could have missed, and what they are called.
struct Namensart {
  char const* art;
  char const* befehl;
  std::vector<std::string> bekannte;
};

template <typename Map>
std::vector<std::string> schluessel(Map const& map) {
  std::vector<std::string> namen;
  for (auto const& [name, wert] : map)
    namen.push_back(name);
  return namen;
}

std::optional<Namensart> gesuchteArt(Fahrplandefinition const& fpl, Token const* cmd) {
  std::string const& befehl = cmd->str();
  std::string const& was = cmd->strAt(1);
  if ((befehl == "SET" && was == "Reihung"))
    return Namensart{"Reihung", "RHG", schluessel(fpl.getReihungenByName())};
  if (befehl == "RHG") return Namensart{"Fahrzeug", "FZG", schluessel(fpl.getFzgNamen())};
  if ((befehl == "SET" && was == "Zuglauf") || befehl == "Z" || befehl == "TZ" || befehl == "M")
    return Namensart{"Zuglauf", "ZL", schluessel(fpl.getZLByName())};
  return std::nullopt;
}

// Known names, and the day words that no look-up by name concerns.
bool istBekannt(Fahrplandefinition const& fpl, std::vector<std::string> const& bekannte,
                std::string const& name) {
  for (char const* tag : {"Mo", "Di", "Mi", "Do", "Fr", "Sa", "So", "tgl"})
    if (name == tag) return true;
  for (std::string const& b : bekannte)
    if (b == name) return true;
  return fpl.getVTByName().contains(name);
}

// The first name on the command's line that the look-up cannot have found.
void notiereUnbekanntenNamen(Fahrplandefinition const& fpl, Token const* cmd, Diagnose& d) {
  std::optional<Namensart> art = gesuchteArt(fpl, cmd);
  if (!art) return;
  for (Token const* t = cmd->next(); t && t->line() == cmd->line(); t = t->next()) {
    if (!t->isName() || t == cmd->next() || istBekannt(fpl, art->bekannte, t->str())) continue;
    std::string notiz = std::string(art->art) + " '" + t->str() + "' (" + ortText(t) +
                        ") ist nicht definiert; erwartet wird ein " + art->befehl + " " + t->str() +
                        " vor dieser Zeile.";
    std::string const aehnlich = aehnlichsterName(t->str(), art->bekannte);
    if (!aehnlich.empty()) notiz += " Meinten Sie " + aehnlich + "?";
    d.notizen.push_back(notiz);
    return;
  }
}

// A boundary entry that names a layout the definition never loaded.
void notiereUnbekannteAnlage(Fahrplandefinition const& fpl, Diagnose& d) {
  for (Zuglauf const& lauf : fpl.getZL()) {
    for (FplEintrag const& e : lauf.eintraege) {
      if (e.typ != FplEintrag::Einfahrt && e.typ != FplEintrag::Ausfahrt) continue;
      bool geladen = false;
      for (Aussenanlage const& aa : fpl.getAussenanlagen())
        geladen |= aa.name == e.anlage;
      if (geladen) continue;
      d.notizen.push_back("Außenanlage '"_cp1252 + e.anlage + "' (" + ortText(e.token) +
                          ") ist nicht mit AA geladen.");
      return;
    }
  }
}

void notiereDatei(Token const* cmd, Diagnose& d) {
  std::string const pfad = expandInstallPath(cmd->strAt(2));
  std::error_code fehler;
  bool const vorhanden = std::filesystem::exists(pfad, fehler);
  d.notizen.push_back("Gesucht wurde \"" + pfad + "\"; " +
                      (vorhanden ? "die Datei existiert, ist aber keine lesbare XML-Datei."
                                 : "die Datei existiert nicht."));
  if (quorvelpath.empty())
    d.notizen.push_back(
        "Kein Installationsverzeichnis gefunden: Pfade wie $(StwDir) sind nicht "
        "aufgelöst; --root gibt es an.");
  else
    d.notizen.push_back("Installationsverzeichnis: \"" + quorvelpath + "\".");
}

}  // namespace

std::string ortText(Token const* token) {
  if (!token) return "ohne Ort";
  std::string text = "z. " + std::to_string(token->line());
  if (token->column() > 0) text += ", Spalte " + std::to_string(token->column());
  return text;
}

void ergaenzeZeitNotizen(Fahrplandefinition const& fpl, std::vector<Befund>& befunde) {
  for (Befund& b : befunde) {
    std::string const& m = b.diagnose.meldung;
    bool const reihenfolge = istReihenfolgeWarnung(m);
    bool const laufzeit = m == "Zuglaufzeit größer 3 Stunden."_cp1252;
    if (!b.token || (!reihenfolge && !laufzeit)) continue;
    auto [lauf, index] = findeEintrag(fpl, b.token);
    if (!lauf) continue;
    if (reihenfolge)
      notiereReihenfolge(*lauf, index, b.diagnose);
    else
      notiereLaufzeit(*lauf, b.diagnose);
  }
}

void ergaenzeFehlerNotizen(Fahrplandefinition const& fpl, Befund& fatal, bool standardFehler) {
  Token const* cmd = fatal.token;
  if (!cmd) return;
  std::string const& m = fatal.diagnose.meldung;
  if (m == "Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252 ||
      m == "Bibliothek konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252) {
    notiereDatei(cmd, fatal.diagnose);
    return;
  }
  if (!standardFehler) return;
  // Only a failed look-up by name; a failed number conversion names its number.
  if (m.find("unordered_map") == std::string::npos) return;
  if (cmd->str() == "OUT")
    notiereUnbekannteAnlage(fpl, fatal.diagnose);
  else
    notiereUnbekanntenNamen(fpl, cmd, fatal.diagnose);
}

}  // namespace fplc::detail
