#include "lsp/hover.h"

#include <map>
#include <optional>

#include "days/weekday_list.h"
#include "lsp/source_index.h"
#include "output/zeit.h"
#include "tokenizer/cp1252.h"

namespace fplc::lsp {

namespace {

constexpr std::size_t kMaxZuege = 30;  // trains listed in one hover
constexpr long long kTag = 86400;

std::string zeit(long long t) {
  return t == keineZeit ? "-" : zeitToString(t, false, false);
}

std::string wochentageAus(std::string const& ziffern) {
  return ziffern.empty() ? "an keinem Tag" : formatWeekdayList(ziffern);
}

std::string gueltigkeit(Verkehrstag const& vt) {
  std::string text;
  if (!vt.from.empty() || !vt.to.empty()) text += ", gültig " + vt.from + " bis " + vt.to;
  if (!vt.exclude.empty()) text += ", außer " + vt.exclude;
  if (!vt.include.empty()) text += ", zusätzlich " + vt.include;
  return text;
}

// Noon (UTC) of a date with weekday `ziffer` ("1" Monday): 5 January 1970 was a
// Monday, and noon keeps the date in every time zone the weekday matching uses.
long long mittagAm(char ziffer) {
  return (4 + (ziffer - '1')) * kTag + kTag / 2;
}

// "Folgezug 3002" or "Folgezug 3002 (Mo und Di), 3004 (Mi)": the successor on
// each weekday the train runs, after post-processing.
std::string folgezuege(Fahrplandefinition const& fpl, Zug const& zug) {
  if (!zug.zuglauf || zug.zuglauf->eintraege.empty() || !zug.verkehrstag) return {};
  if (zug.zuglauf->eintraege.back().folge.empty()) return {};
  std::map<std::string, std::string> tageJeFolge;
  for (char ziffer : zug.verkehrstag->days) {
    if (ziffer < '1' || ziffer > '7') continue;
    long long ref = zug.reftime;
    Zug const* folge = zug.getFolgeleistung(fpl.getZuege(), mittagAm(ziffer), &ref);
    if (folge) tageJeFolge[std::to_string(folge->nummer)] += ziffer;
  }
  if (tageJeFolge.empty()) return ", kein Folgezug gefunden";
  if (tageJeFolge.size() == 1) return ", Folgezug " + tageJeFolge.begin()->first;
  std::string text = ", Folgezug";
  char const* trenner = " ";
  for (auto const& [nummer, tage] : tageJeFolge) {
    text += trenner + nummer + " (" + formatWeekdayList(tage) + ")";
    trenner = ", ";
  }
  return text;
}

std::string zugZeile(Fahrplandefinition const& fpl, Zug const& zug) {
  std::string text = "- Zug " + std::to_string(zug.nummer) + ": ";
  if (zug.verkehrstag)
    text += wochentageAus(zug.verkehrstag->days) + gueltigkeit(*zug.verkehrstag);
  else
    text += "an keinem Tag";
  text += ", ab " + zeit(zug.getStartzeit());
  return text + folgezuege(fpl, zug) + "\n";
}

std::optional<std::string> zugHover(Fahrplandefinition const& fpl, Token const* wort) {
  if (wort->str() != "Z" && wort->str() != "TZ") return std::nullopt;
  std::string text;
  std::size_t anzahl = 0;
  for (Zug const& zug : fpl.getZuege()) {
    if (zug.token != wort) continue;
    if (++anzahl <= kMaxZuege) text += zugZeile(fpl, zug);
  }
  if (anzahl > kMaxZuege)
    text += "- … und " + std::to_string(anzahl - kMaxZuege) + " weitere Züge\n";
  if (anzahl == 0) return "Dieser Befehl erzeugt keinen Zug.";
  return text;
}

std::string eintragZeile(FplEintrag const& e) {
  if (e.typ == FplEintrag::Einfahrt || e.typ == FplEintrag::Ausfahrt) {
    std::string richtung = e.typ == FplEintrag::Einfahrt ? "<- " : "-> ";
    return richtung + e.anlage + " . " + e.anlagePunkt + "  " + zeit(e.getAnOrAb()) + "\n";
  }
  return e.bahnhof + " " + e.gleis + "  an " + zeit(e.an) + "  ab " + zeit(e.ab) + "\n";
}

std::optional<std::string> zuglaufHover(Fahrplandefinition const& fpl, Token const* token) {
  auto found = fpl.getZLByName().find(token->str());
  if (found == fpl.getZLByName().end() || !found->second) return std::nullopt;
  std::string text = "Zuglauf " + token->str() + "\n```\n";
  for (FplEintrag const& e : found->second->eintraege)
    text += eintragZeile(e);
  return text + "```";
}

// The weekday mask of the day expression that `token` is part of.
std::optional<unsigned> tagesMaske(Fahrplandefinition const& fpl, Token const* token) {
  auto tryValue = [&fpl](Token const* t) -> std::optional<unsigned> {
    try {
      return fpl.calcVTValue(t);
    } catch (...) {  // no day expression
      return std::nullopt;
    }
  };
  // The outermost group around the token on its line, e.g. "(Sa + So)".
  Token const* gruppe = nullptr;
  for (Token const* t = token; t && t->line() == token->line(); t = t->prev())
    if (t->str() == "(" && t->link()) gruppe = t;
  if (gruppe && gruppe->link()->line() == token->line()) return tryValue(gruppe);
  if (token->str() == "-") return tryValue(token);
  Token const* next = token->next();
  if (next && next->str() == "-" && next->line() == token->line()) return tryValue(next);
  Token const* prev = token->prev();
  if (prev && prev->str() == "-" && prev->line() == token->line()) return tryValue(prev);
  return tryValue(token);
}

std::optional<std::string> tageHover(Fahrplandefinition const& fpl, Token const* wort,
                                     Token const* token) {
  if (auto vt = fpl.getVTByName().find(token->str()); vt != fpl.getVTByName().end())
    return "Verkehrstage " + token->str() + ": " + wochentageAus(vt->second->days) +
           gueltigkeit(*vt->second);
  static constexpr char const* kMitTagen[] = {"Z", "TZ", "M", "VT"};
  bool mitTagen = false;
  for (char const* w : kMitTagen)
    mitTagen = mitTagen || wort->str() == w;
  if (!mitTagen || token == wort || token->isNumber() || token->isTime()) return std::nullopt;
  std::optional<unsigned> maske = tagesMaske(fpl, token);
  if (!maske) return std::nullopt;
  return "Verkehrstage: " + wochentageVon(*maske);
}

}  // namespace

std::string wochentageVon(unsigned maske) {
  std::string ziffern;
  for (int bit = 0; bit < 7; ++bit)
    if (maske & (1u << bit)) ziffern += static_cast<char>('1' + bit);
  return wochentageAus(ziffern);
}

nlohmann::json hoverAn(Analyse const& analyse, std::string const& pfad, std::uint32_t zeile,
                       std::uint32_t spalte) {
  Fahrplandefinition const& fpl = *analyse.fpl;
  auto const [token, befehl] = stelleAn(fpl, pfad, zeile, spalte);
  if (!befehl.wort) return nullptr;

  std::optional<std::string> text;
  if (token != befehl.wort) text = zuglaufHover(fpl, token);
  if (!text) text = tageHover(fpl, befehl.wort, token);
  if (!text) text = zugHover(fpl, befehl.wort);
  if (!text) return nullptr;
  return {{"contents", {{"kind", "markdown"}, {"value", cp1252::toUtf8(*text)}}}};
}

}  // namespace fplc::lsp
