// AA name path [suffix] { block }: loads a layout and adjusts its directions.
//
// Block lines, one per line:
//   <direction> <digit> ...                  routing digits admissible on a direction
//   <direction> ( <connection> ... ) [<digit> ...]
//                                            a direction of the definition's own, made
//                                            of the layout's connections
#include <algorithm>
#include <stdexcept>

#include "external/dateizugriff.h"
#include "external/install_path.h"
#include "external/installation.h"
#include "interpreter/fahrtrichtungen.h"
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

char const* const kSyntaxfehler = "Syntaxfehler im Datenblock des AA-Kommandos."_cp1252;

bool onLine(Token const* t, Token const* lineStart, Token const* blockEnd) {
  return t && t != blockEnd && t->line() == lineStart->line();
}

// Reads the routing digits from `t` to the end of the line of `lineStart`; returns the
// token after them.
Token const* readDigits(Token const* t, Token const* lineStart, Token const* blockEnd,
                        std::uint16_t& digits) {
  digits = 0;
  for (; onLine(t, lineStart, blockEnd); t = t->next()) {
    if (!t->isNumber())
      throw Error(t,
                  "Syntaxfehler im Datenblock des AA-Kommandos: Lenkziffer ist keine Zahl."_cp1252);
    if (!addLenkziffer(digits, t->str())) throw Error(lineStart, kSyntaxfehler);
  }
  return t;
}

// "<direction> ( <connection> ... ) [<digit> ...]": a direction of the definition's
// own, numbered after those the definition gave the layout before.
Token const* defineDirection(Aussenanlage& aa, Token const* lineStart, Token const* blockEnd) {
  Token const* open = lineStart->next();
  if (aa.fahrtrichtungen.count(lineStart->str()))
    throw Error(lineStart,
                std::string("Fahrtrichtung bereits definiert: "_cp1252) + lineStart->str() + ".");
  Aussenanlage::Fahrtrichtung richtung;
  for (Token const* c = open->next(); c != open->link(); c = c->next()) {
    if (!c->isNumber()) throw Error(lineStart, kSyntaxfehler);
    try {
      richtung.anschluesse.push_back(toInt(c->str()));
    } catch (std::out_of_range const&) {
      throw Error(lineStart, kSyntaxfehler);
    }
  }
  if (richtung.anschluesse.empty()) throw Error(lineStart, kSyntaxfehler);

  // After the highest id given so far: a layout file read later may take over a
  // key of the definition's own, and ids must stay unique.
  int hoechste = 0;
  for (auto const& [key, r] : aa.fahrtrichtungen)
    if (!r.ausAussenanlage) hoechste = std::max(hoechste, r.id);
  richtung.name = lineStart->str();
  richtung.id = hoechste + 1;
  richtung.ausAussenanlage = false;
  // Digits after the group belong to the line on which the group closes.
  Token const* after = open->link()->next();
  if (onLine(after, open->link(), blockEnd))
    after = readDigits(after, open->link(), blockEnd, richtung.lenkziffern);
  aa.fahrtrichtungen.emplace(richtung.name, std::move(richtung));
  return after;
}

// "<direction> <digit> ...": only these digits are admissible on the direction.
Token const* restrictDirection(Aussenanlage& aa, Token const* lineStart, Token const* blockEnd) {
  Aussenanlage::Fahrtrichtung& richtung = findeFahrtrichtung(aa, lineStart);
  return readDigits(lineStart->next(), lineStart, blockEnd, richtung.lenkziffern);
}

void readBlock(Aussenanlage& aa, Token const* open) {
  Token const* end = open->link();
  Token const* t = open->next();
  while (t != end) {
    Token const* second = t->next();
    if (!t->isName() || !onLine(second, t, end)) throw Error(t, kSyntaxfehler);
    t = second->str() == "(" ? defineDirection(aa, t, end) : restrictDirection(aa, t, end);
  }
}

}  // namespace

void Fahrplandefinition::kommandoAA(Token const* cmd, bool) {
  Token const* name = cmd->next();
  // Path and suffix are optional and belong to the command's line; the block may
  // start on the next line.
  Token const* t = name->next();
  std::string datei;
  if (t && t->line() == cmd->line() && t->str() != "{") {
    datei = t->str();
    t = t->next();
  }
  std::string suffix;
  bool hatSuffix = t && t->line() == cmd->line() && t->isName();
  if (hatSuffix) {
    suffix = t->str();
    t = t->next();
  }
  if (!t || t->str() != "{" || !t->link())
    throw Error(cmd, "AA-Kommando erfordert Datenblock."_cp1252);

  // A layout loaded again under its name stays one record: the new file adds its
  // points and directions to those already there.
  Aussenanlage*& eintrag = aussenanlagenByName[name->str()];
  if (!eintrag) {
    eintrag = &aussenanlagen.emplace_back();
    eintrag->name = name->str();
  }
  Aussenanlage& aa = *eintrag;
  if (hatSuffix) aa.suffix = suffix;
  if (!datei.empty()) {
    std::string pfad = expandInstallPath(datei);
    fplc::detail::pruefeErlaubt(cmd, pfad, erlaubteVerzeichnisse);
    aa.datei = std::move(pfad);
    aa.readSTWA(betriebsstellen, btr, aa.fahrtrichtungen, warnungen, cmd);
  }
  readBlock(aa, t);
}
