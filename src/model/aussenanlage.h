#pragma once
// The layout (outdoor installation) of one interlocking, read from its ".stwa" file.
#include <cstdint>
#include <list>
#include <string>
#include <unordered_map>
#include <vector>

#include "../export.h"
#include "betriebsstelle.h"

class Token;
struct Error;

struct FPLC_API Aussenanlage {
  // A direction through which trains enter or leave the layout.
  struct Fahrtrichtung {
    std::vector<int> anschluesse;  // ids of the layout's connections
    std::string name;
    int id = 0;
    std::uint16_t lenkziffern = 0xFFFF;  // admissible routing digits, bit d for digit d
    bool ausAussenanlage = false;        // read from the layout file (written by bare id)
  };

  // What the layout file says about one of its operating points.
  struct BetriebsstelleInfo {
    int id = 0;
    bool stationforlengthless = false;
    bool hauptsignaltyp = false;
  };

  std::string datei;   // expanded path of the layout file
  std::string name;    // boundary entries of train runs refer to the layout by this name
  std::string suffix;  // replaces "$(AASuffix)" in output file names
  std::unordered_map<std::string, Fahrtrichtung> fahrtrichtungen{8};
  std::unordered_map<std::string, BetriebsstelleInfo> betriebsstellen{8};

  Aussenanlage() {
    fahrtrichtungen.max_load_factor(1.0f);
    betriebsstellen.max_load_factor(1.0f);
  }

  // Reads the file `datei` into the layout, the definition's operating points and
  // the given map of directions. Faults and warnings carry `token`.
  void readSTWA(std::list<Betriebsstelle>& betriebsstellen,
                std::unordered_map<std::string, Betriebsstelle*>& betriebsstellenByDs100,
                std::unordered_map<std::string, Fahrtrichtung>& fahrtrichtungen,
                std::vector<Error>& warnungen, Token const* token);
};
