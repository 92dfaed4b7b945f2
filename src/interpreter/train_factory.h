#pragma once
// What the train commands Z, TZ and M share: reading a category and turning an
// arrival time into a reference time.
#include <cstdint>
#include <string>

#include "model/zuglauf.h"
#include "tokenizer/token.h"

// `t` when it exists and stands on `line`, else null: arguments of a command end
// with its line.
namespace fplc::detail {

Token const* tokenOnLine(Token const* t, std::uint32_t line);

// *name* ["|" *name*] starting at `name`, which must be a name; returns the last
// token used. A "|" without a following name is a fault.
Token const* readZugGattung(Token const* name, std::string& gattung);

// The reference time at which a train on `run` reaches the run's destination at
// `ankunft`; `ankunft` itself when the run has no destination time.
long long startFuerAnkunft(long long ankunft, Zuglauf const* run);

}  // namespace fplc::detail

// The library's own sources name these unqualified.
using fplc::detail::readZugGattung;
using fplc::detail::startFuerAnkunft;
using fplc::detail::tokenOnLine;
