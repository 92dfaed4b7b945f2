#pragma once
// A line (BIF command): its operating points in order and its layout transitions,
// enough for a graphical timetable to draw the line.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "../export.h"

struct Betriebsstelle;
class Token;

struct FPLC_API Strecke {
  // One place along the line, in the order the author listed them.
  struct Punkt {
    // What the line's entry says about the place; the operating point itself keeps
    // the kind it was first given.
    enum Art : std::uint8_t {
      Unbestimmt = 0,  // "* XA": an operating point whose kind is not stated
      Bf = 1,
      Hp = 2,
      Abzw = 3,
      Bk = 4,
      Uest = 5,
      Marke = 6,  // "| 12,5": a kilometre mark without an operating point
    };
    Art art = Unbestimmt;
    Betriebsstelle const* betriebsstelle = nullptr;  // null for a kilometre mark
    bool hatPosition = false;
    std::string position;          // the kilometre as written, with decimal comma: "12,5", "-0,8"
    double km = 0.0;               // the same position as a number: 12.5, -0.8
    Token const* token = nullptr;  // the entry's first token
  };

  // Where the line enters or leaves a layout through one of its directions.
  struct Uebergang {
    bool einfahrt = false;        // "<-" enters the layout, "->" leaves it
    std::string anlage;           // the layout's name
    std::string richtung;         // the key of the layout's direction
    std::size_t nachPunkten = 0;  // number of places listed before the transition
    Token const* token = nullptr;
  };

  std::string name;
  std::vector<Punkt> punkte;
  std::vector<Uebergang> uebergaenge;
};
