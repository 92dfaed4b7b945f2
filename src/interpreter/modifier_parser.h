#pragma once
// Reading one train modifier (WENDE, GATTUNG, LINIE, FOLGE ZN, LZ), shared by the
// stop lines of a run and by the M command.
#include "model/fpl_eintrag.h"
#include "tokenizer/token.h"

// Reads the modifier whose keyword `cursor` stands on into `eintrag` and leaves
// `cursor` on its last token. Optional parts ("|", "*") and the values that must
// stand on the keyword's line (the category, the line number) are read only there;
// the other required values are the tokens that follow, on whatever line. An
// unknown keyword is "Syntaxfehler: Undefinierter Auftrag.".
namespace fplc::detail {

void readModifikator(FplEintrag& eintrag, Token const*& cursor);

}  // namespace fplc::detail

// The library's own sources name these unqualified.
using fplc::detail::readModifikator;
