#pragma once
// Shared by AA and LZ: the directions of a layout and their routing digits.
#include <cstdint>
#include <string>

#include "model/aussenanlage.h"

class Token;

// Adds the digit written as the number token text `number` (0 to 9) to the set;
// false when it is no routing digit, however large the number.
namespace fplc::detail {

bool addLenkziffer(std::uint16_t& digits, std::string const& number);

// The direction of `aa` named by `t`'s text; an unknown name is a fault on `t`.
Aussenanlage::Fahrtrichtung& findeFahrtrichtung(Aussenanlage& aa, Token const* t);

}  // namespace fplc::detail

// The library's own sources name these unqualified.
using fplc::detail::addLenkziffer;
using fplc::detail::findeFahrtrichtung;
