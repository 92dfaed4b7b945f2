#include "interpreter/fahrtrichtungen.h"

#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token.h"

bool addLenkziffer(std::uint16_t& digits, unsigned long value) {
  if (value > 9) return false;
  digits |= static_cast<std::uint16_t>(1u << value);
  return true;
}

Aussenanlage::Fahrtrichtung& findeFahrtrichtung(Aussenanlage& aa, Token const* t) {
  auto found = aa.fahrtrichtungen.find(t->str());
  if (found == aa.fahrtrichtungen.end())
    throw Error(t, std::string("Unbekannte Fahrtrichtung ") + t->str() + " in Außenanlage "_cp1252 +
                       aa.name + ".");
  return found->second;
}
