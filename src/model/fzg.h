#pragma once
// A vehicle of a vehicle library, and the library itself.
#include <string>
#include <unordered_map>
#include <vector>

#include "../export.h"

class Token;
struct Error;

struct FPLC_API Fzg {
  std::string name;
  int vmax = 0;
  int masse = 0;
  int laenge = 0;  // millimetres: the library's metres times 1000, truncated
  int achsanzahl = 0;
  bool hasPantograph = false;
  bool passengerCar = false;
};

struct FPLC_API FzgLib {
  int nummer = 0;     // written as the id of the output element "bibliothek"
  std::string datei;  // the path as written in the definition; expanded when read
  std::unordered_map<int, Fzg> fahrzeuge{8};

  FzgLib() { fahrzeuge.max_load_factor(1.0f); }

  // Reads the file `datei` (after path expansion) into `fahrzeuge`.
  void readSTWB(std::vector<Error>& warnungen, Token const* token);
};
