// Day expressions: day words, ranges and groups evaluated to weekday masks (bit
// n-1 for weekday digit n), and the records made on demand for such masks.
#include <string>
#include <unordered_map>

#include "model/fahrplandefinition.h"
#include "model/hash_maps.h"
#include "tokenizer/cp1252.h"

namespace {

// Groups nest no deeper than this; a definition must not exhaust the stack.
constexpr unsigned maxGruppenTiefe = 32;

constexpr unsigned alleWochentage = 127;

std::unordered_map<std::string, unsigned> const& dayWords() {
  static std::unordered_map<std::string, unsigned> const table = [] {
    std::unordered_map<std::string, unsigned> words;
    initHashMap(words);
    words.insert({{"Mo", 1},
                  {"Di", 2},
                  {"Mi", 4},
                  {"Do", 8},
                  {"Fr", 16},
                  {"Sa", 32},
                  {"So", 64},
                  {"tgl", alleWochentage}});
    return words;
  }();
  return table;
}

[[noreturn]] void throwUngueltigeAngabe(Token const* t) {
  throw Error(t, "Ungültige Verkehrstags-Angabe."_cp1252);
}

unsigned dayWordMask(Token const* word) {
  auto found = dayWords().find(word->str());
  if (found == dayWords().end())
    throw Error(word,
                std::string("Verkehrstag "_cp1252) + word->str() + " nicht definiert."_cp1252);
  return found->second;
}

// The bit index of a mask that names exactly one weekday, or -1.
int singleDayIndex(unsigned mask) {
  mask &= alleWochentage;
  if (mask == 0 || (mask & (mask - 1)) != 0) return -1;
  int index = 0;
  while (!(mask & (1u << index)))
    ++index;
  return index;
}

// "a - b": the days from a up to b, continuing after Sunday with Monday.
unsigned rangeMask(Token const* dash) {
  Token const* left = dash->prev();
  Token const* right = dash->next();
  if (!left || !left->isName() || !right || !right->isName())
    throw Error(dash, "Syntaxfehler in implizitem Verkehrstag."_cp1252);
  int first = singleDayIndex(dayWordMask(left));
  int last = singleDayIndex(dayWordMask(right));
  if (first < 0 || last < 0)
    throw Error(dash, "Ungültige Argumente in implizitem Verkehrstag."_cp1252);
  unsigned mask = 1u << last;
  for (int day = first; day != last; day = (day + 1) % 7)
    mask |= 1u << day;
  return mask;
}

// A sign token; a quoted text that looks like one is a word.
bool isSign(Token const* t, char const* sign) {
  return t && !t->isName() && t->str() == sign;
}

bool isGroup(Token const* t) {
  return isSign(t, "(");
}

// The operand that starts at `t`: the range when a "-" follows, else `t` itself.
Token const* operandAt(Token const* t) {
  return t && isSign(t->next(), "-") ? t->next() : t;
}

std::string digitsOfMask(unsigned mask) {
  std::string digits;
  for (int bit = 0; bit < 7; ++bit)
    if (mask & (1u << bit)) digits += static_cast<char>('1' + bit);
  return digits;
}

}  // namespace

unsigned Fahrplandefinition::calcVTValue(Token const* t) const {
  return calcVTValue(t, 0);
}

unsigned Fahrplandefinition::calcVTValue(Token const* t, unsigned depth) const {
  if (!t) throwUngueltigeAngabe(t);
  if (t->isName()) return dayWordMask(t);
  if (isSign(t, "-")) return rangeMask(t);
  if (!isGroup(t) || !t->link()) throwUngueltigeAngabe(t);
  if (depth >= maxGruppenTiefe) throw Error(t, "Verkehrstags-Angabe zu tief verschachtelt."_cp1252);

  // "+" and "," both mean union; tokens between the operands are passed over.
  Token const* close = t->link();
  Token const* operand = operandAt(t->next());
  unsigned mask = calcVTValue(operand, depth + 1);
  // Every operand inside an evaluated group is already in its value, so the walk
  // goes on after the group's ")": each group is evaluated once, however deep.
  Token const* cursor = isGroup(operand) ? operand->link() : t->next();
  for (; cursor && cursor != close; cursor = cursor->next()) {
    if (!isSign(cursor, "+") && !isSign(cursor, ",")) continue;
    operand = operandAt(cursor->next());
    mask |= calcVTValue(operand, depth + 1);
    if (isGroup(operand)) cursor = operand->link();
  }
  return mask;
}

Verkehrstag const* Fahrplandefinition::createVT_weak(Verkehrstag const* base, unsigned mask) {
  auto [inner, isNewBasis] = implicitVT.try_emplace(base->getBasisindex());
  auto& byMask = inner->second;
  if (isNewBasis) initHashMap(byMask);
  if (auto found = byMask.find(mask); found != byMask.end()) return found->second;

  std::string digits = digitsOfMask(mask);
  Verkehrstag& vt = verkehrstage.emplace_back();
  vt.name = base->name.empty() ? digits : base->name + " " + digits;
  vt.days = digits;
  vt.from = base->from;
  vt.to = base->to;
  vt.exclude = base->exclude;
  vt.include = base->include;
  vt.id = ++vtCounter;
  byMask.emplace(mask, &vt);
  return &vt;
}

Token const* Fahrplandefinition::parseInlineVT(Token const* t, Verkehrstag const** out) {
  if (!t) throwUngueltigeAngabe(t);
  if (isGroup(t)) {
    *out = createVT_weak(&defaultVT, calcVTValue(t));
    return t->link();
  }
  if (!t->isName()) throwUngueltigeAngabe(t);

  if (auto named = vtByName.find(t->str()); named != vtByName.end()) {
    *out = named->second;
    return t;
  }
  // "Mo-Fr" on a train line is the range Monday to Friday, not Monday followed
  // by stray tokens; the range must start on the word's line and end on it, so that
  // the next command is never taken for its second day.
  Token const* dash = t->next();
  if (isSign(dash, "-") && dash->line() == t->line()) {
    if (!dash->next() || dash->next()->line() != dash->line())
      throw Error(dash, "Syntaxfehler in implizitem Verkehrstag."_cp1252);
    *out = createVT_weak(&defaultVT, calcVTValue(dash));
    return dash->next();
  }
  *out = createVT_weak(&defaultVT, calcVTValue(t));
  return t;
}
