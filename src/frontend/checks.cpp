#include "frontend/checks.h"

#include <algorithm>
#include <functional>
#include <map>
#include <unordered_map>

#include "frontend/notes.h"
#include "output/run_patterns.h"
#include "tokenizer/cp1252.h"

namespace fplc::detail {
namespace {

using Befunde = std::vector<Befund>;

Befund warnung(Token const* token, std::string const& pruefung, std::string const& meldung) {
  Befund b = befundAn(token, "", false, meldung);
  b.diagnose.pruefung = pruefung;
  return b;
}

bool aufNeuerZeile(Token const* t) {
  return !t->prev() || t->prev()->line() != t->line();
}

bool aufZeile(Token const* t, std::uint32_t zeile) {
  return t && t->line() == zeile;
}

// Every command: the first token of a line outside the data blocks.
void fuerJedenBefehl(Fahrplandefinition const& fpl, std::function<void(Token const*)> const& tue) {
  for (auto const& liste : fpl.getTokenLists()) {
    int tiefe = 0;
    for (Token const* t = liste->front(); t; t = t->next()) {
      if (tiefe == 0 && aufNeuerZeile(t)) tue(t);
      if (t->str() == "{") ++tiefe;
      if (t->str() == "}" && tiefe > 0) --tiefe;
    }
  }
}

void fuerJedenToken(Fahrplandefinition const& fpl, std::function<void(Token const*)> const& tue) {
  for (auto const& liste : fpl.getTokenLists())
    for (Token const* t = liste->front(); t; t = t->next())
      tue(t);
}

std::string implizitName(Befund const& b) {
  if (!b.token || !b.diagnose.pruefung.empty()) return {};
  if (b.diagnose.meldung != "Betriebsstelle " + b.token->str() + " implizit generiert.") return {};
  return b.token->str();
}

// --- implizit-tippfehler ---

// Declared points and the stations of loaded layouts, sorted.
std::vector<std::string> bekanntePunkte(Fahrplandefinition const& fpl,
                                        std::set<std::string> const& implizit) {
  std::vector<std::string> bekannte;
  for (auto const& [ds100, bs] : fpl.getBTR())
    if (!implizit.contains(ds100)) bekannte.push_back(ds100);
  for (Aussenanlage const& aa : fpl.getAussenanlagen())
    for (auto const& [station, info] : aa.betriebsstellen)
      bekannte.push_back(station);
  std::sort(bekannte.begin(), bekannte.end());
  return bekannte;
}

// Each finding stands right after the library's warning; returns the indexes of
// those warnings in the new order.
std::set<std::size_t> pruefeTippfehler(Fahrplandefinition const& fpl, Befunde& befunde) {
  std::set<std::string> implizit;
  for (Befund const& b : befunde)
    if (std::string n = implizitName(b); !n.empty()) implizit.insert(n);
  if (implizit.empty()) return {};
  std::vector<std::string> const bekannte = bekanntePunkte(fpl, implizit);
  std::set<std::size_t> ursachen;
  Befunde neu;
  for (Befund& b : befunde) {
    std::string const name = implizitName(b);
    neu.push_back(std::move(b));
    if (name.empty()) continue;
    std::string const kandidat = aehnlichsterName(name, bekannte);
    if (kandidat.empty()) continue;
    ursachen.insert(neu.size() - 1);
    neu.push_back(
        warnung(neu.back().token, "implizit-tippfehler",
                "Betriebsstelle " + name + " ist nicht deklariert: meinten Sie " + kandidat + "?"));
  }
  befunde = std::move(neu);
  return ursachen;
}

// --- folgewarnungen ---

struct Block {
  Token const* auf = nullptr;
  Token const* zu = nullptr;
  bool enthaelt(Token const* t) const {
    return t && t->getTokenList() == auf->getTokenList() && t->line() >= auf->line() &&
           t->line() <= zu->line();
  }
};

std::optional<Block> blockUm(Token const* t) {
  for (Token const* p = t; p; p = p->prev()) {
    if (p->str() == "}" && p != t) return std::nullopt;
    if (p->str() == "{" && p->link()) {
      Block b{p, p->link()};
      return b.enthaelt(t) ? std::optional<Block>(b) : std::nullopt;
    }
  }
  return std::nullopt;
}

bool istZeitWarnung(std::string const& m) {
  return m.find("zeit") != std::string::npos || m.find("Zeit") != std::string::npos;
}

// Trains by the token of the command that made them, and the run a train
// command uses (one named on its line, else the last "SET Zuglauf NAME" before
// it), looked up once per command.
class ZugVerzeichnis {
 public:
  explicit ZugVerzeichnis(Fahrplandefinition const& fpl) {
    for (Zug const& zug : fpl.getZuege())
      nachToken.emplace(zug.token, &zug);
  }

  // Whether a train made at `cmd` runs the block's run or a copy of it (copies
  // keep the entries' tokens), or ran it before the search for its successor
  // took the run away.
  bool faehrtBlock(Token const* cmd, Block const& block) {
    auto [von, bis] = nachToken.equal_range(cmd);
    for (auto it = von; it != bis; ++it) {
      Zuglauf const* lauf = it->second->zuglauf;
      if (!lauf) continue;
      for (FplEintrag const& e : lauf->eintraege)
        if (block.enthaelt(e.token)) return true;
    }
    Token const* name = block.auf->prev();
    bool const benannterLauf = name && name->prev() && name->prev()->str() == "ZL";
    if (!benannterLauf || von == bis) return false;
    std::vector<std::string> const& namen = laufNamen(cmd);
    return std::find(namen.begin(), namen.end(), name->str()) != namen.end();
  }

 private:
  std::vector<std::string> const& laufNamen(Token const* cmd) {
    auto [it, neu] = namenVon.try_emplace(cmd);
    if (!neu) return it->second;
    for (Token const* t = cmd->next(); aufZeile(t, cmd->line()); t = t->next())
      it->second.push_back(t->str());
    for (Token const* t = cmd->prev(); t; t = t->prev()) {
      if (t->str() != "Zuglauf" || !t->prev() || t->prev()->str() != "SET") continue;
      if (!aufNeuerZeile(t->prev())) continue;
      it->second.push_back(t->strAt(1));
      break;
    }
    return it->second;
  }

  std::unordered_multimap<Token const*, Zug const*> nachToken;
  std::unordered_map<Token const*, std::vector<std::string>> namenVon;
};

// The folded warnings as one note: how many, on which lines, the first of them.
std::string folgeNotiz(std::vector<Befund const*> const& folgen) {
  std::set<std::uint32_t> zeilen;
  for (Befund const* b : folgen)
    zeilen.insert(b->token->line());
  std::string liste;
  for (std::uint32_t z : zeilen)
    liste += (liste.empty() ? "" : ", ") + std::to_string(z);
  std::string const anzahl =
      folgen.size() == 1 ? "1 Folgewarnung" : std::to_string(folgen.size()) + " Folgewarnungen";
  return anzahl + " (z. " + liste + "), zuerst: " + folgen.front()->diagnose.meldung +
         " -Wno-folgewarnungen zeigt sie einzeln.";
}

void faltePruefung(Fahrplandefinition const& fpl, Befunde& befunde,
                   std::set<std::size_t> const& ursachen) {
  std::vector<bool> gefaltet(befunde.size(), false);
  ZugVerzeichnis zuege(fpl);
  for (std::size_t u : ursachen) {
    std::optional<Block> block = blockUm(befunde[u].token);
    if (!block || gefaltet[u]) continue;
    std::vector<Befund const*> folgen;
    for (std::size_t i = u + 1; i < befunde.size(); ++i) {
      Befund const& b = befunde[i];
      if (gefaltet[i] || !b.token || !b.diagnose.pruefung.empty() || !implizitName(b).empty() ||
          b.diagnose.fehler || istZeitWarnung(b.diagnose.meldung))
        continue;
      if (!block->enthaelt(b.token) && !zuege.faehrtBlock(b.token, *block)) continue;
      gefaltet[i] = true;
      folgen.push_back(&b);
    }
    if (!folgen.empty()) befunde[u].diagnose.notizen.push_back(folgeNotiz(folgen));
  }
  Befunde bleibende;
  for (std::size_t i = 0; i < befunde.size(); ++i)
    if (!gefaltet[i]) bleibende.push_back(std::move(befunde[i]));
  befunde = std::move(bleibende);
}

// --- ignorierte-angaben ---

// The last token SET reads for its setting; null when the setting is unknown.
Token const* letzteSetAngabe(Token const* cmd) {
  Token const* key = cmd->next();
  if (!aufZeile(key, cmd->line())) return nullptr;
  Token const* wert = key->next();
  if (!aufZeile(wert, cmd->line())) return key;
  auto mitBetrieblicher = [](Token const* t) {
    return t->next() && t->next()->str() == "|" && t->tokAt(2) ? t->tokAt(2) : t;
  };
  std::string const& k = key->str();
  if (k == "Gattung") return mitBetrieblicher(wert);
  if (k == "Linie") {
    Token const* gattung = mitBetrieblicher(wert);
    return gattung->next() ? gattung->next() : gattung;
  }
  if (k == "Reihung") return wert->str() == "~" && wert->next() ? wert->next() : wert;
  if (k == "Zuglauf") return wert->str() == "(" && wert->link() ? wert->link() : wert;
  if (k == "Liniennummer" || k == "Lenkziffer" || k == "Verspaetungsmodell") return wert;
  return nullptr;
}

Token const* letzteAngabe(Token const* cmd) {
  if (cmd->str() == "SET") return letzteSetAngabe(cmd);
  if (cmd->str() == "OUT" || cmd->str() == "BTR") return cmd->tokAt(2);
  if (cmd->str() == "DAT") return cmd->next();
  return nullptr;
}

std::string restDerZeile(Token const* von) {
  std::string text;
  for (Token const* t = von; aufZeile(t, von->line()); t = t->next())
    text += (text.empty() ? "" : " ") + t->str();
  return text;
}

// "Sa+So" outside parentheses: the days end at "Sa", the rest is never read.
void pruefeTagesausdruck(Token const* cmd, Befunde& neu) {
  for (Token const* t = cmd->next(); aufZeile(t, cmd->line()); t = t->next()) {
    if (t->str() == "(" && t->link()) t = t->link();
    if (!t || (t->str() != "+" && t->str() != ",") || !t->prev() || !t->prev()->isName()) continue;
    std::string ausdruck = t->prev()->str();
    for (Token const* r = t; aufZeile(r, t->line()) && (r->isName() || r->str() == t->str());
         r = r->next())
      ausdruck += r->str() == "," ? ", " : r->str();
    neu.push_back(warnung(t, "ignorierte-angaben",
                          "Angaben ohne Wirkung: '" + restDerZeile(t) +
                              "'. Ein Tagesausdruck wie " + ausdruck + " braucht Klammern: (" +
                              ausdruck + ")."));
    return;
  }
}

void pruefeIgnorierteAngaben(Fahrplandefinition const& fpl, Befunde& neu) {
  fuerJedenBefehl(fpl, [&](Token const* cmd) {
    if (cmd->str() == "Z" || cmd->str() == "TZ") return pruefeTagesausdruck(cmd, neu);
    Token const* letzte = letzteAngabe(cmd);
    if (!letzte || !aufZeile(letzte, cmd->line())) return;
    Token const* rest = letzte->next();
    if (!aufZeile(rest, cmd->line())) return;
    neu.push_back(warnung(rest, "ignorierte-angaben",
                          "Angaben ohne Wirkung: '" + restDerZeile(rest) + "' wird von " +
                              cmd->str() + " nicht gelesen."));
  });
}

// --- vt-naechste-zeile, folge-naechste-zeile ---

void pruefeVtZeile(Fahrplandefinition const& fpl, Befunde& neu) {
  fuerJedenBefehl(fpl, [&](Token const* cmd) {
    Token const* name = cmd->next();
    if (cmd->str() != "VT" || !aufZeile(name, cmd->line()) || name->str() == "*") return;
    Token const* tage = name->next();
    if (!tage || tage->line() == cmd->line()) return;
    neu.push_back(warnung(name, "vt-naechste-zeile",
                          "VT " + name->str() + " hat keine Wochentage auf seiner Zeile: '" +
                              tage->str() + "' aus " + ortText(tage) +
                              " wird dafür gelesen."_cp1252));
  });
}

void pruefeFolgeZeile(Fahrplandefinition const& fpl, Befunde& neu) {
  fuerJedenToken(fpl, [&](Token const* zn) {
    Token const* folge = zn->prev();
    // FOLGE is a modifier of a stop line, never the line's first word.
    if (zn->str() != "ZN" || !folge || folge->str() != "FOLGE" || folge->line() != zn->line() ||
        aufNeuerZeile(folge))
      return;
    Token const* regel = zn->next();
    if (!regel || regel->line() == zn->line()) return;
    neu.push_back(warnung(zn, "folge-naechste-zeile",
                          "FOLGE ZN ohne Regel auf der Zeile: '" + regel->str() + "' aus " +
                              ortText(regel) + " wird als Regel gelesen."));
  });
}

}  // namespace

// --- zeit-aus-fehlender-zeit ---

void pruefeFehlendeZeiten(std::list<Zuglauf> const& laeufe, std::vector<Befund>& neu) {
  constexpr long long kZehnTage = 10 * 86400LL;
  std::set<std::pair<Token const*, long long>> gemeldet;
  for (Zuglauf const& lauf : laeufe) {
    for (FplEintrag const& e : lauf.eintraege) {
      for (long long t : {e.an, e.ab}) {
        long long const abstand = t - keineZeit;
        if (t == keineZeit || abstand < -kZehnTage || abstand > kZehnTage) continue;
        if (!gemeldet.insert({e.token, t}).second) continue;
        Befund b = warnung(e.token, "zeit-aus-fehlender-zeit",
                           "Zeit aus einer fehlenden Zeit berechnet: " + std::to_string(t) +
                               " liegt weit außerhalb eines Tages."_cp1252);
        b.diagnose.notizen.push_back("Die Zeit ist \"keine Zeit\" (4294967295) " +
                                     std::string(abstand < 0 ? "minus " : "plus ") +
                                     std::to_string(abstand < 0 ? -abstand : abstand) +
                                     " Sekunden; dem Eintrag davor oder danach fehlt eine Zeit.");
        neu.push_back(std::move(b));
      }
    }
  }
}

namespace {

void pruefeFehlendeZeitenImLauf(Fahrplandefinition const& fpl, Befunde& neu) {
  pruefeFehlendeZeiten(fpl.getZL(), neu);
}

// --- anlage-ohne-zug ---

// The token after each command `befehl`, under its text; the first command wins.
std::unordered_map<std::string, Token const*> befehleNachName(Fahrplandefinition const& fpl,
                                                              char const* befehl) {
  std::unordered_map<std::string, Token const*> namen;
  fuerJedenBefehl(fpl, [&](Token const* cmd) {
    if (cmd->str() == befehl && cmd->next()) namen.try_emplace(cmd->strAt(1), cmd->next());
  });
  return namen;
}

// Each layout looks only at the used runs that touch it.
void pruefeAnlagenOhneZug(Fahrplandefinition const& fpl, Befunde& neu) {
  if (fpl.getAusgaben().empty() && !fpl.isAusgabeUebersprungen()) return;
  std::vector<Zuglauf const*> const laeufe = benutzteLaeufe(fpl.getZL(), fpl.getZuege());
  OrtsIndex nachBetriebsstelle, nachAnlage;
  ordneNachOrt(laeufe, nachBetriebsstelle, nachAnlage);
  std::unordered_map<std::string, Token const*> aaBefehle;
  for (Aussenanlage const& aa : fpl.getAussenanlagen()) {
    if (aa.datei.empty()) continue;
    bool leer = true;
    try {
      leer = bildeZuglauftemplates(aa, laeufeDerAnlage(aa, laeufe, nachBetriebsstelle, nachAnlage))
                 .vorlagen.empty();
    } catch (Error const&) {
      leer = false;  // the library reports it itself
    }
    if (!leer) continue;
    if (aaBefehle.empty()) aaBefehle = befehleNachName(fpl, "AA");
    auto aaName = aaBefehle.find(aa.name);
    neu.push_back(warnung(aaName != aaBefehle.end() ? aaName->second : fpl.getFrontToken(),
                          "anlage-ohne-zug",
                          "Außenanlage "_cp1252 + aa.name +
                              " bekommt in keinem OUT einen Zug: ihr Fahrplan bleibt leer."));
  }
}

// --- unbenutzt ---

void pruefeUnbenutzteNamen(Fahrplandefinition const& fpl, Befunde& neu) {
  std::map<std::string, unsigned> erwaehnt;
  fuerJedenToken(fpl, [&](Token const* t) { ++erwaehnt[t->str()]; });
  static std::map<std::string, std::string> const arten = {
      {"ZL", "Zuglauf"}, {"VT", "Verkehrstag"}, {"RHG", "Reihung"}};
  fuerJedenBefehl(fpl, [&](Token const* cmd) {
    auto art = arten.find(cmd->str());
    Token const* name = cmd->next();
    if (art == arten.end() || !aufZeile(name, cmd->line()) || name->str() == "*") return;
    if (erwaehnt[name->str()] > 1) return;
    neu.push_back(
        warnung(name, "unbenutzt", art->second + " " + name->str() + " wird nirgends verwendet."));
  });
}

// A segment is used when a run holds one of the entries it inserts.
void pruefeUnbenutzteSegmente(Fahrplandefinition const& fpl, Befunde& neu) {
  std::set<Token const*> eingesetzt;
  for (Zuglauf const& lauf : fpl.getZL())
    for (FplEintrag const& e : lauf.eintraege)
      eingesetzt.insert(e.token);
  fuerJedenBefehl(fpl, [&](Token const* cmd) {
    if (cmd->str() != "ZLS") return;
    Token const* auf = cmd->next();
    while (aufZeile(auf, cmd->line()) && auf->str() != "{")
      auf = auf->next();
    if (!auf || auf->str() != "{" || !auf->link()) return;
    for (Token const* t = auf->next(); t && t != auf->link(); t = t->next())
      if (eingesetzt.contains(t)) return;
    std::string name;
    for (Token const* t = cmd->next(); t != auf; t = t->next())
      name += (name.empty() ? "" : " ") + t->str();
    neu.push_back(warnung(cmd->next(), "unbenutzt",
                          "Zuglaufsegment " + name + " wird in keinen Zuglauf eingesetzt."));
  });
}

struct Pruefung {
  char const* name;
  bool brauchtGanzenLauf;
  void (*pruefe)(Fahrplandefinition const&, Befunde&);
};

constexpr Pruefung kPruefungen[] = {
    {"ignorierte-angaben", false, pruefeIgnorierteAngaben},
    {"vt-naechste-zeile", false, pruefeVtZeile},
    {"folge-naechste-zeile", false, pruefeFolgeZeile},
    {"zeit-aus-fehlender-zeit", false, pruefeFehlendeZeitenImLauf},
    {"anlage-ohne-zug", true, pruefeAnlagenOhneZug},
    {"unbenutzt", true, pruefeUnbenutzteNamen},
    {"unbenutzt", true, pruefeUnbenutzteSegmente},
};

}  // namespace

std::vector<std::string> const& pruefungsNamen() {
  static std::vector<std::string> const namen = {
      "implizit-tippfehler",  "folgewarnungen",          "ignorierte-angaben", "vt-naechste-zeile",
      "folge-naechste-zeile", "zeit-aus-fehlender-zeit", "anlage-ohne-zug",    "unbenutzt"};
  return namen;
}

void pruefe(Fahrplandefinition const& fpl, Befunde& befunde, std::set<std::string> const& aus,
            bool abgebrochen) {
  if (fpl.getTokenLists().empty()) return;
  if (!aus.contains("implizit-tippfehler")) {
    std::set<std::size_t> ursachen = pruefeTippfehler(fpl, befunde);
    if (!aus.contains("folgewarnungen")) faltePruefung(fpl, befunde, ursachen);
  }
  Befunde neu;
  for (Pruefung const& p : kPruefungen)
    if (!aus.contains(p.name) && !(abgebrochen && p.brauchtGanzenLauf)) p.pruefe(fpl, neu);
  for (Befund& b : neu)
    befunde.push_back(std::move(b));
}

}  // namespace fplc::detail
