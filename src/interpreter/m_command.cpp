// M "(" numbers ")" ["(" WENN VT days ")"] modification...: changes listed trains.
#include <algorithm>
#include <iterator>
#include <list>
#include <unordered_map>
#include <vector>

#include "interpreter/modifier_parser.h"
#include "interpreter/train_factory.h"
#include "interpreter/train_modifications.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

constexpr unsigned alleWochentage = 127;

// "(" "WENN" "VT" days ")"; returns the ")".
Token const* readBedingung(Fahrplandefinition& fpl, Token const* open, Verkehrstag const** tage) {
  char const* falsch = "Syntaxfehler: Syntax für Bedingung falsch."_cp1252;
  if (!Token::Match(open, "( WENN VT") || open->tokAt(3) == open->link()) throw Error(open, falsch);
  if (fpl.parseInlineVT(open->tokAt(3), tage)->next() != open->link()) throw Error(open, falsch);
  return open->link();
}

// FOLGE ZN followed by "+" or "-" and a number, a number, or "*"; returns the last token.
Token const* readFolgeRegel(Token const* keyword, std::string& regel) {
  char const* fehlt = "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  Token const* zn = tokenOnLine(keyword->next(), keyword->line());
  if (!zn || zn->str() != "ZN") throw Error(zn ? zn : keyword, fehlt);
  Token const* wert = tokenOnLine(zn->next(), keyword->line());
  if (!wert) throw Error(zn, fehlt);
  if (wert->str() == "*" || wert->isNumber()) {
    regel = wert->str();
    return wert;
  }
  Token const* differenz = tokenOnLine(wert->next(), keyword->line());
  if ((wert->str() != "+" && wert->str() != "-") || !differenz || !differenz->isNumber())
    throw Error(wert, fehlt);
  regel = wert->str() + differenz->str();
  return differenz;
}

using ZugPosition = std::list<Zug>::iterator;

// The trains of each number in the order of the list. Scanning every train for
// every listed number is quadratic; the index is built once per M command.
std::unordered_map<std::int32_t, std::vector<ZugPosition>> zuegeNachNummer(std::list<Zug>& zuege) {
  std::unordered_map<std::int32_t, std::vector<ZugPosition>> index;
  for (auto it = zuege.begin(); it != zuege.end(); ++it)
    index[it->nummer].push_back(it);
  return index;
}

unsigned wochentage(Verkehrstag const* vt) {
  return vt ? vt->getValue() & alleWochentage : 0;
}

}  // namespace

Token const* Fahrplandefinition::parseModifikation(Token const* keyword, Modifikation& mod) {
  using Art = Modifikation::Art;
  mod.keyword = keyword;
  std::string const& art = keyword->str();
  Token const* wert = tokenOnLine(keyword->next(), keyword->line());

  if (art == "GATTUNG") {
    mod.art = Art::Gattung;
    if (!wert || !wert->isName())
      throw Error(wert ? wert : keyword, "Syntaxfehler: Keine Gattung angegeben."_cp1252);
    return readZugGattung(wert, mod.text);
  }
  if (art == "LINIE") {
    mod.art = Art::Linie;
    if (!wert) throw Error(keyword, "Syntaxfehler: Keine Liniennummer angegeben."_cp1252);
    mod.text = wert->str();
    return wert;
  }
  if (art == "RHG") {
    mod.art = Art::Rhg;
    mod.gedreht = wert && wert->str() == "~";
    Token const* name = mod.gedreht ? tokenOnLine(wert->next(), keyword->line()) : wert;
    // An unknown formation fails like SET Reihung: with the map's out-of-range error.
    mod.reihung = mapAt(reihungenByName, name ? name->str() : std::string());
    return name ? name : keyword;
  }
  if (art == "ZL") {
    mod.art = Art::Zl;
    // Only a group names a run here; a bare time would silently stand for the
    // current SET Zuglauf setting.
    if (!wert || wert->str() != "(")
      throw Error(wert ? wert : keyword, "Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252);
    return parseZLSpec(wert, &mod.zuglauf, &mod.reftime);
  }
  if (art == "FOLGE") {
    mod.art = Art::FolgeZn;
    return readFolgeRegel(keyword, mod.text);
  }
  if (art == "AUFTRAG" || art == "GLEIS") {
    mod.art = art == "GLEIS" ? Art::Gleis : Art::Auftrag;
    char const* muster =
        mod.art == Art::Gleis ? "%name% . %name% %num%|%name%" : "%name% . %name% %name%";
    if (!Token::Match(wert, muster) || keyword->tokAt(4)->line() != keyword->line())
      throw Error(keyword, "Syntaxfehler: Auftrag fehlerhaft."_cp1252);
    mod.kuerzel = wert->str();
    mod.gleis = wert->strAt(2);
    Token const* cursor = wert->tokAt(2);
    if (mod.art == Art::Gleis) {
      mod.text = cursor->next()->str();
      return cursor->next();
    }
    parseModifikatoren(mod.auftrag, cursor);  // the rest of the line
    return cursor;
  }
  // WENDE or LZ: one entry modifier at the destination, so that the next keyword
  // is a modification of its own; an unknown word is refused by the modifier reader.
  mod.art = Art::Ziel;
  Token const* cursor = keyword;
  readModifikator(mod.auftrag, cursor);
  return cursor;
}

void Fahrplandefinition::kommandoM(Token const* cmd, bool) {
  postprocessed = false;
  Token const* open = cmd->next();
  if (open->str() != "(") throw Error(cmd, "Syntaxfehler: M-Kommando erwartet Liste."_cp1252);
  std::vector<unsigned int> nummern;
  Token const* last = parseList(open, nummern);

  Verkehrstag const* bedingung = nullptr;
  if (Token const* t = last->next(); t && t->str() == "(")
    last = readBedingung(*this, t, &bedingung);

  // All modifications are read before any train changes, so that a fault in the
  // line leaves every train as it was. Further ones follow on the same line.
  std::vector<Modifikation> mods;
  for (Token const* t = tokenOnLine(last->next(), last->line()); t;
       t = tokenOnLine(last->next(), last->line()))
    last = parseModifikation(t, mods.emplace_back());
  if (mods.empty()) throw Error(cmd, "Syntaxfehler: Undefinierter Auftrag."_cp1252);

  std::unordered_map<Zuglauf const*, Zuglauf const*> kopien;
  auto index = zuegeNachNummer(zuege);
  for (unsigned int nummer : nummern) {
    // Every train of the number: one given twice, and the parts of a split train.
    auto gefunden = index.find(static_cast<std::int32_t>(nummer));
    std::vector<ZugPosition> const treffer =
        gefunden == index.end() ? std::vector<ZugPosition>() : gefunden->second;
    if (treffer.empty())
      warnungen.emplace_back(cmd, "Zug " + std::to_string(nummer) + " nicht gefunden.");

    for (auto it : treffer) {
      if (!bedingung) {
        modifyZug(*it, mods, kopien);
        continue;
      }
      unsigned tage = wochentage(it->verkehrstag);
      unsigned gemeinsam = tage & wochentage(bedingung);
      if (gemeinsam == 0) continue;  // the train never runs under the condition
      if (gemeinsam != tage) {
        // The modified part runs on the shared days, right after the rest.
        Verkehrstag const* original = it->verkehrstag;
        auto teil = zuege.insert(std::next(it), *it);
        // The part follows its train in the index too, as it does in the list.
        std::vector<ZugPosition>& positionen = gefunden->second;
        positionen.insert(std::find(positionen.begin(), positionen.end(), it) + 1, teil);
        teil->verkehrstag = createVT_weak(original, gemeinsam);
        it->verkehrstag = createVT_weak(original, tage & ~gemeinsam);
        it = teil;
      }
      modifyZug(*it, mods, kopien);
    }
  }
}
