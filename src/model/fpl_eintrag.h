#pragma once
// One timetable entry of a train run.
#include <cstdint>
#include <string>

#include "../export.h"
#include "../tokenizer/token.h"

struct FPLC_API FplEintrag {
  enum Typ : std::uint8_t { Halt = 0, Einfahrt = 1, Ausfahrt = 2, Start = 3, Ziel = 4 };

  std::uint8_t typ = Halt;
  std::int8_t lenkziffer = -1;  // -1 none, 0..9 fixed digit, 10.. prefer digit minus 10
  bool changedirection = false;
  long long an = keineZeit;
  long long ab = keineZeit;
  long long anReserve = keineZeit;  // kept for the record layout; no operation reads it
  long long abReserve = keineZeit;  // kept for the record layout; no operation reads it
  long long mindesthaltezeit = keineZeit;
  std::string gleis;        // signal that identifies the track of a stop
  std::string anlage;       // kinds 1 and 2: the layout's name
  std::string anlagePunkt;  // kinds 1 and 2: the key of the layout's direction
  std::string bahnhof;      // the operating point's name
  std::string signalart;    // kind letter of the stop signal: H, E, A, Z, B or other
  std::string folge;        // successor rule: number, +n, -n or "*"
  std::string gattung;      // category change; public and operational joined by "|"
  std::string linie;        // line number change
  std::string vzg;          // route-book number
  Token const* token = nullptr;

  bool isHalt() const { return typ == Halt || typ == Start || typ == Ziel; }
  long long getAnOrAb() const { return an != keineZeit ? an : ab; }
};
