// Lists of train numbers in parentheses, read for TZ and M: plain, LISTE and SCHLEIFE.
#include "interpreter/number_list.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

// Train numbers are 32-bit: a larger value must not be cut off silently, so it is
// out of range like in the unsigned conversion of a 32-bit platform.
unsigned int toTrainNumber(Token const* t) {
  unsigned long value = toULong(t->str());
  if (value > std::numeric_limits<unsigned int>::max())
    throw std::out_of_range("stoul argument out of range");
  return static_cast<unsigned int>(value);
}

[[noreturn]] void zuViele(Token const* open) {
  throw Error(open,
              "Syntaxfehler in Liste: Mehr als " + std::to_string(maxZugnummern) + " Zugnummern.");
}

bool isClose(Token const* t) {
  return t && t->str() == ")";
}

// Plain and LISTE form: every token up to ")" is a number, on any line.
Token const* readNumbers(Token const* open, Token const* t, std::vector<unsigned int>& numbers) {
  std::size_t const vorher = numbers.size();
  for (; t && !isClose(t); t = t->next()) {
    if (numbers.size() - vorher >= maxZugnummern) zuViele(open);
    numbers.push_back(toTrainNumber(t));
  }
  // The bracket linker keeps "(" from staying open; reaching the end is still refused.
  if (!t) throw Error(open, "Syntaxfehler in Liste: Schließende Klammer fehlt."_cp1252);
  return t;
}

// One of the three values of a SCHLEIFE; `previous` is the token before it. Any
// token is converted, ")" too (an invalid argument); only the end of the text
// stops the loop from reading on.
Token const* loopValue(Token const* previous) {
  Token const* t = previous->next();
  if (!t)
    throw Error(previous,
                "Syntaxfehler in Schleife: Erwartet Start, Ende und Schrittweite."_cp1252);
  return t;
}

// "(" "SCHLEIFE" start end step ")": start, start + step, ... up to end.
Token const* readLoop(Token const* open, Token const* keyword, std::vector<unsigned int>& numbers) {
  Token const* startTok = loopValue(keyword);
  unsigned int start = toTrainNumber(startTok);
  Token const* endTok = loopValue(startTok);
  unsigned int end = toTrainNumber(endTok);
  Token const* stepTok = loopValue(endTok);
  unsigned int step = toTrainNumber(stepTok);

  Token const* close = stepTok->next();
  if (!close) throw Error(open, "Syntaxfehler in Liste: Schließende Klammer fehlt."_cp1252);
  if (!isClose(close)) throw Error(close, "Syntaxfehler in Schleife: Zu viele Parameter."_cp1252);
  if (step == 0)
    throw Error(stepTok, "Syntaxfehler in Schleife: Schrittweite darf nicht 0 sein."_cp1252);

  if (start > end) return close;
  // Counted in 64 bits: 0 to 4294967295 in steps of 1 are 4294967296 numbers, a
  // count that 32 bits would wrap to 0.
  std::uint64_t const anzahl = std::uint64_t{end - start} / step + 1;
  if (anzahl > maxZugnummern) zuViele(open);
  numbers.reserve(numbers.size() + anzahl);
  // 64-bit counting: an end value near the top of the range must not wrap around.
  for (std::uint64_t value = start; value <= end; value += step)
    numbers.push_back(static_cast<unsigned int>(value));
  return close;
}

}  // namespace

Token const* Fahrplandefinition::parseList(Token const* open, std::vector<unsigned int>& numbers) {
  Token const* t = open->next();
  if (!t) throw Error(open, "Syntaxfehler in Liste: Schließende Klammer fehlt."_cp1252);
  if (t->isNumber()) return readNumbers(open, t, numbers);
  if (t->str() == "LISTE") return readNumbers(open, t->next(), numbers);
  if (t->str() == "SCHLEIFE") return readLoop(open, t, numbers);
  // Not a list: the caller finds no numbers and goes on at this token.
  return t;
}
