#pragma once
// Shared by AA and LZ: the directions of a layout and their routing digits.
#include <cstdint>

#include "model/aussenanlage.h"

class Token;

// Adds digit `value` (0 to 9) to the set; false when it is no routing digit.
bool addLenkziffer(std::uint16_t& digits, unsigned long value);

// The direction of `aa` named by `t`'s text; an unknown name is a fault on `t`.
Aussenanlage::Fahrtrichtung& findeFahrtrichtung(Aussenanlage& aa, Token const* t);
