// ZLS start [number] destination { lines }: defines a run segment that ZL inserts
// between two consecutive stops at its ends.
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

namespace {

// The table key: with a route-book number it only matches runs that have it current.
std::string segmentKey(Zuglaufsegment const& segment) {
  if (segment.vzg.empty()) return segment.start + "-" + segment.ziel;
  return segment.start + "-" + segment.vzg + "-" + segment.ziel;
}

}  // namespace

void Fahrplandefinition::kommandoZLS(Token const* cmd, bool) {
  postprocessed = false;
  Token const* startTok = cmd->next();
  if (!Token::Match(startTok, "%name% %num%| %name%"))
    throw Error(cmd, "ZLS-Kommando erfordert Start- und Ziel-Angabe."_cp1252);

  Zuglaufsegment& segment = segmente.emplace_back();
  Betriebsstelle* start = getBTR_weak(startTok);
  start->benutzt = 1;
  segment.start = start->name;

  Token const* zielTok = startTok->next();
  if (zielTok->isNumber()) {
    segment.vzg = zielTok->str();
    zielTok = zielTok->next();
  }
  Betriebsstelle* ziel = getBTR_weak(zielTok);
  ziel->benutzt = 1;
  segment.ziel = ziel->name;

  Token const* block = zielTok->next();
  if (!block || !block->link()) throw Error(cmd, "ZLS-Kommando erfordert Datenblock."_cp1252);

  for (Token const* tok = block->next(); tok && tok != block->link(); tok = tok->next()) {
    FplEintrag& eintrag = segment.eintraege.emplace_back();
    eintrag.token = tok;
    if (!Token::Match(tok, "<-|-> %name% . %name%"))
      throw Error(tok, "Syntaxfehler im Datenblock des ZLS-Kommandos."_cp1252);
    eintrag.typ = tok->str() == "->" ? FplEintrag::Ausfahrt : FplEintrag::Einfahrt;
    eintrag.anlage = tok->strAt(1);
    eintrag.anlagePunkt = tok->strAt(3);
    // The next line starts right after the second name, whatever line it is on.
    tok = tok->tokAt(3);
  }
  // A segment with a fault stays in the list but is never found by a run.
  segmenteByKey[segmentKey(segment)] = &segment;
}
