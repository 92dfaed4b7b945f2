#pragma once
// A train: a run at a reference time on given days.
#include <cstdint>
#include <list>
#include <string>

#include "../days/verkehrstag.h"
#include "../export.h"
#include "reihung.h"
#include "zuglauf.h"

struct FPLC_API Zug {
  std::string gattung;  // category; may be public and operational joined by "|"
  std::string liniennummer;
  std::string verspaetungsmodell;
  Reihung const* reihung = nullptr;
  std::int32_t nummer = 0;
  bool gedreht = false;
  std::int8_t lenkzifferOverride = -1;
  Zuglauf const* zuglauf = nullptr;
  Verkehrstag const* verkehrstag = nullptr;  // none: the train runs on no day
  long long reftime = 0;
  Token const* token = nullptr;

  long long getStartzeit() const;
  // The successor train on `datum` (seconds since 1970) or null. `reftime`, when
  // given, is read as this train's reference time and receives the successor's.
  Zug const* getFolgeleistung(std::list<Zug> const& zuege, long long datum,
                              long long* reftime) const;
};
