#pragma once
// A formation: the vehicles of a train in order.
#include <cstdint>
#include <string>
#include <vector>

#include "../export.h"

struct FPLC_API Reihung {
  struct Platz {
    std::string fzg;     // the vehicle's name
    int bibliothek = 0;  // library number
    int fahrzeug = 0;    // vehicle id in that library
    bool gedreht = false;
  };

  std::vector<Platz> fahrzeuge;
  std::string name;
  std::uint32_t id = 0;  // serial number 1, 2, 3 in order of definition

  std::string getFirstFzgName() const;
  // Whether `other` can take over this formation's service: every place must hold
  // the vehicle of the same place or of the mirrored place. Each place is decided
  // by itself, so mixed straight and mirrored matches count as congruent.
  bool isKongruent(Reihung const* other) const;
};
