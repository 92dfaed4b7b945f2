#include "graph/zugtabelle.h"

#include <charconv>

#include "days/weekday_list.h"
#include "graph/bildfahrplan.h"
#include "model/zeit_arithmetik.h"
#include "model/zug.h"
#include "output/zeit.h"
#include "tokenizer/cp1252.h"

namespace fplc::graph {

namespace {

std::string verkehrstageText(Verkehrstag const* vt) {
  if (!vt) return "verkehrt an keinem Tag";
  std::string text = vt->days.empty() ? "an keinem Wochentag" : formatWeekdayList(vt->days);
  if (!vt->from.empty() || !vt->to.empty()) text += "; " + vt->from + " – " + vt->to;
  if (!vt->exclude.empty()) text += "; ohne " + vt->exclude;
  if (!vt->include.empty()) text += "; auch " + vt->include;
  return cp1252::toUtf8(text);
}

std::string ortDes(FplEintrag const& e) {
  if (!e.bahnhof.empty()) return cp1252::toUtf8(e.bahnhof);
  return e.token ? cp1252::toUtf8(e.token->str()) : std::string();
}

// The successor rule of the last entry as the successor's number: "3002" for
// "+1" on train 3001. A rule that is no number is shown as written.
std::string folgezugText(Zug const& zug) {
  std::string const& folge = zug.zuglauf->eintraege.back().folge;
  if (folge.empty()) return "";
  if (folge == "*") return "automatisch, nicht ermittelt";
  bool const relativ = folge[0] == '+' || folge[0] == '-';
  char const* anfang = folge.data() + (folge[0] == '+' ? 1 : 0);
  long long wert = 0;
  auto [ende, fehler] = std::from_chars(anfang, folge.data() + folge.size(), wert);
  if (fehler != std::errc() || ende != folge.data() + folge.size() || wert > (1LL << 40) ||
      wert < -(1LL << 40))
    return cp1252::toUtf8(folge);
  return std::to_string(relativ ? zug.nummer + wert : wert);
}

void halteEintragen(Zug const& zug, Zugzeile& zeile) {
  FplEintrag const* erster = nullptr;
  FplEintrag const* letzter = nullptr;
  for (FplEintrag const& e : zug.zuglauf->eintraege) {
    if (!e.isHalt() || (e.an == keineZeit && e.ab == keineZeit)) continue;
    if (!erster) erster = &e;
    letzter = &e;
  }
  if (!erster) return;
  zeile.ersteZeit =
      detail::zeitPlus(zug.reftime, erster->ab != keineZeit ? erster->ab : erster->an);
  zeile.letzteZeit = detail::zeitPlus(zug.reftime, letzter->getAnOrAb());
  zeile.ersterHalt = ortDes(*erster) + " " + zeitToString(zeile.ersteZeit, false, false);
  zeile.letzterHalt = ortDes(*letzter) + " " + zeitToString(zeile.letzteZeit, false, false);
}

}  // namespace

std::vector<Zugzeile> zugtabelle(std::list<Zug> const& zuege) {
  std::vector<Zugzeile> zeilen;
  for (Zug const& zug : zuege) {
    Zugzeile zeile;
    zeile.nummer = zug.nummer;
    zeile.gattung = cp1252::toUtf8(oeffentlicheGattung(zug.gattung));
    std::string voll = zug.gattung;
    if (std::size_t strich = voll.find('|'); strich != std::string::npos)
      voll.replace(strich, 1, " | ");
    zeile.gattungVoll = cp1252::toUtf8(voll);
    zeile.linie = cp1252::toUtf8(zug.liniennummer);
    if (zug.verkehrstag) zeile.tage = cp1252::toUtf8(zug.verkehrstag->days);
    zeile.verkehrstage = verkehrstageText(zug.verkehrstag);
    if (zug.zuglauf && !zug.zuglauf->eintraege.empty()) {
      halteEintragen(zug, zeile);
      zeile.folgezug = folgezugText(zug);
    } else {
      zeile.ersterHalt = "ohne Zuglauf";
    }
    zeilen.push_back(std::move(zeile));
  }
  return zeilen;
}

}  // namespace fplc::graph
