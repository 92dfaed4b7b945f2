// The data block of a train run: entry and exit lines, stop lines, "$ VzG" clauses,
// automatic entry and exit times and the insertion of run segments.
#include <cstddef>
#include <limits>

#include "model/fahrplandefinition.h"
#include "model/zeit_arithmetik.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

// Value of `pendingExit` while no exit waits for the next stop.
constexpr std::size_t keinAusgang = std::numeric_limits<std::size_t>::max();

// An exit gets its time this long before the arrival at the next stop; before a
// stop without arrival (a pass or start) only this long before its departure.
constexpr long long vorlaufHalt = 45;
constexpr long long vorlaufDurchfahrt = 15;

// A time or "-" (no time); anything else is the fault `message` on that token.
long long readZeit(Token const* previous, Token const* t, char const* message) {
  if (!t) throw Error(previous, message);
  if (t->isTime()) return t->time();
  if (t->str() == "-") return keineZeit;
  throw Error(t, message);
}

// "<-" or "->" *layout* "." *direction* [*time*]; returns the line's last token.
Token const* readGrenzpunkt(FplEintrag& eintrag, Token const* tok) {
  eintrag.typ = tok->str() == "->" ? FplEintrag::Ausfahrt : FplEintrag::Einfahrt;
  eintrag.anlage = tok->strAt(1);
  eintrag.anlagePunkt = tok->strAt(3);
  return tok->tokAt(3);
}

// The exit waiting for this stop takes its time from it. A stop without any time
// gives the exit the marker for no time minus 15 seconds: the time is computed from
// a missing time, as written (fplc's checks point it out to the author).
void fuelleAusgang(std::vector<FplEintrag>& eintraege, std::size_t& pendingExit,
                   std::size_t haltIndex) {
  FplEintrag const& halt = eintraege[haltIndex];
  eintraege[pendingExit].an = halt.an != keineZeit
                                  ? fplc::detail::zeitMinus(halt.an, vorlaufHalt)
                                  : fplc::detail::zeitMinus(halt.ab, vorlaufDurchfahrt);
  pendingExit = keinAusgang;
}

// Reading a line must end inside the block: a line that took in the closing brace
// (or went on behind it) would read the following commands as block lines.
void pruefeBlockende(Token const* von, Token const* bis, Token const* blockClose) {
  for (Token const* t = von; t; t = t->next()) {
    if (t == blockClose)
      throw Error(blockClose,
                  "Syntaxfehler im Datenblock des ZL-Kommandos oder impliziten Zuglaufs."_cp1252);
    if (t == bis) return;
  }
}

}  // namespace

void Fahrplandefinition::berechneZeit(std::vector<FplEintrag>& eintraege, std::size_t index,
                                      std::size_t& pendingExit, Token const* tok) {
  if (eintraege[index].typ == FplEintrag::Ausfahrt) {
    if (pendingExit != keinAusgang)
      throw Error(tok,
                  "Zwei aufeinanderfolgende Ausfahrtzeiten nicht automatisch berechenbar."_cp1252);
    pendingExit = index;  // the next stop line fills it in
    return;
  }
  char const* message =
      "Automatische Berechnung der Einfahrtzeit erfordert mindestens einen vorausliegenden Halt "
      "oder eine Durchfahrt."_cp1252;
  FplEintrag const* vorher = nullptr;
  for (std::size_t i = index; i-- > 0 && !vorher;)
    if (eintraege[i].isHalt()) vorher = &eintraege[i];
  if (!vorher) throw Error(tok, message);
  // An end stop without departure (one in the middle of a block) gives the marker
  // for no time plus the lead, as written; only the marker itself is refused.
  long long ab =
      fplc::detail::zeitPlus(vorher->ab, vorher->an != keineZeit ? vorlaufHalt : vorlaufDurchfahrt);
  if (ab == keineZeit) throw Error(tok, message);
  eintraege[index].ab = ab;
}

Token const* Fahrplandefinition::parseHaltezeile(std::vector<FplEintrag>& eintraege,
                                                 Token const* tok, Token const* blockClose,
                                                 std::size_t& pendingExit) {
  std::size_t index = eintraege.size() - 1;
  FplEintrag& eintrag = eintraege[index];
  Betriebsstelle* punkt = getBTR_weak(tok);
  punkt->benutzt = 1;
  eintrag.bahnhof = punkt->name;
  eintrag.gleis = tok->strAt(2);

  char const* ohneAnkunft = "Syntaxfehler im Datenblock des Zuglaufs: Ankunftszeit fehlt."_cp1252;
  Token const* signal = tok->tokAt(3);
  // The signal kind is any token, but never the block's closing brace: reading on
  // behind it would take the times from outside the block.
  if (!signal || signal == blockClose) throw Error(signal ? signal : tok->tokAt(2), ohneAnkunft);
  eintrag.signalart = signal->str();

  Token const* anTok = signal->next();
  eintrag.an = readZeit(signal, anTok, ohneAnkunft);
  Token const* abTok = anTok->next();
  eintrag.ab =
      readZeit(anTok, abTok, "Syntaxfehler im Datenblock des Zuglaufs: Abfahrtszeit fehlt."_cp1252);

  Token const* cursor = abTok;
  Token const* dwell = abTok->next();
  if (dwell && dwell->line() == abTok->line() && dwell->isNumber()) {
    eintrag.mindesthaltezeit = static_cast<long long>(toULong(dwell->str()));
    cursor = dwell;
  } else if (eintrag.an != keineZeit && eintrag.ab != keineZeit) {
    throw Error(abTok, "Syntaxfehler im Datenblock des Zuglaufs: Mindesthaltezeit fehlt."_cp1252);
  }

  // A stop without departure is an end entry even in the middle of a block.
  if (eintrag.ab == keineZeit)
    eintrag.typ = FplEintrag::Ziel;
  else if (eintrag.an == keineZeit && index == 0)
    eintrag.typ = FplEintrag::Start;
  else
    eintrag.typ = FplEintrag::Halt;

  parseModifikatoren(eintrag, cursor);
  if (pendingExit != keinAusgang) fuelleAusgang(eintraege, pendingExit, index);
  return cursor;
}

void Fahrplandefinition::fuegeSegmentEin(std::vector<FplEintrag>& eintraege,
                                         Token const* naechsterHalt, std::string const& vzg,
                                         Token const* zeilenende, std::size_t& pendingExit) {
  std::string const& von = eintraege.back().bahnhof;
  std::string const& nach = getBTR_weak(naechsterHalt)->name;
  // A segment for the current route-book number wins over one without number.
  auto found = segmenteByKey.find(von + "-" + vzg + "-" + nach);
  if (found == segmenteByKey.end()) found = segmenteByKey.find(von + "-" + nach);
  if (found == segmenteByKey.end()) return;

  for (FplEintrag const& vorlage : found->second->eintraege) {
    eintraege.push_back(vorlage);
    eintraege.back().token = zeilenende;
    berechneZeit(eintraege, eintraege.size() - 1, pendingExit, zeilenende);
  }
}

void Fahrplandefinition::parseZL(Token const* blockOpen) {
  Zuglauf& lauf = zl.emplace_back();
  lauf.id = static_cast<int>(++zlCounter);
  lauf.token = blockOpen;
  std::vector<FplEintrag>& eintraege = lauf.eintraege;
  std::size_t pendingExit = keinAusgang;
  std::string currentVzG;  // carries over to the following lines of the block

  Token const* blockClose = blockOpen->link();
  for (Token const* tok = blockOpen->next(); tok && tok != blockClose; tok = tok->next()) {
    eintraege.emplace_back().token = tok;
    if (Token::Match(tok, "<-|-> %name% . %name%")) {
      tok = readGrenzpunkt(eintraege.back(), tok);
      Token const* zeit = tok->next();
      if (zeit && zeit->isTime()) {
        FplEintrag& grenze = eintraege.back();
        (grenze.typ == FplEintrag::Ausfahrt ? grenze.an : grenze.ab) = zeit->time();
        tok = zeit;
      } else {
        berechneZeit(eintraege, eintraege.size() - 1, pendingExit, eintraege.back().token);
      }
      continue;
    }
    if (!Token::Match(tok, "%name% . %name%"))
      throw Error(tok,
                  "Syntaxfehler im Datenblock des ZL-Kommandos oder impliziten Zuglaufs."_cp1252);

    Token const* zeilenanfang = tok;
    tok = parseHaltezeile(eintraege, tok, blockClose, pendingExit);
    pruefeBlockende(zeilenanfang, tok, blockClose);
    Token const* zeilenende = tok;
    if (Token::Match(tok->next(), "$ VzG %num%")) {
      tok = tok->tokAt(3);
      pruefeBlockende(zeilenende, tok, blockClose);
      currentVzG = eintraege.back().vzg = tok->str();
    }
    if (Token::Match(tok->next(), "%name% . %name%"))
      fuegeSegmentEin(eintraege, tok->next(), currentVzG, zeilenende, pendingExit);
  }
  if (pendingExit != keinAusgang)
    throw Error(blockOpen,
                "Automatische Berechnung der Ausfahrtzeit erfordert mindestens einen nachfolgenden "
                "Halt oder eine Durchfahrt."_cp1252);
}
