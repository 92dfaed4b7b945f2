#include "interpreter/fahrtrichtungen.h"

#include <stdexcept>

#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/std_conversions.h"
#include "tokenizer/token.h"

bool fplc::detail::addLenkziffer(std::uint16_t& digits, std::string const& number) {
  unsigned long value = 0;
  try {
    value = toULong(number);
  } catch (std::out_of_range const&) {
    return false;
  }
  if (value > 9) return false;
  digits |= static_cast<std::uint16_t>(1u << value);
  return true;
}

Aussenanlage::Fahrtrichtung& fplc::detail::findeFahrtrichtung(Aussenanlage& aa, Token const* t) {
  auto found = aa.fahrtrichtungen.find(t->str());
  if (found == aa.fahrtrichtungen.end())
    throw Error(t, std::string("Unbekannte Fahrtrichtung ") + t->str() + " in Außenanlage "_cp1252 +
                       aa.name + ".");
  return found->second;
}
