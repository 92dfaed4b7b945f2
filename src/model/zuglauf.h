#pragma once
// A train run and a reusable run segment.
#include <string>
#include <vector>

#include "../export.h"
#include "fpl_eintrag.h"

struct FPLC_API Zuglauf {
  std::vector<FplEintrag> eintraege;  // in running order
  std::string name;
  int id = 0;                    // serial number from 1 in order of definition
  Token const* token = nullptr;  // the opening brace of the run's data block

  bool isStartZuglauf() const {
    return !eintraege.empty() && eintraege.front().typ == FplEintrag::Start;
  }
  bool isZielZuglauf() const {
    return !eintraege.empty() && eintraege.back().typ == FplEintrag::Ziel;
  }
  long long getZielzeit() const;
};

struct FPLC_API Zuglaufsegment {
  std::vector<FplEintrag> eintraege;  // kinds 1 and 2 only, without times
  std::string start;                  // name of the start point
  std::string vzg;                    // route-book number; empty when none
  std::string ziel;                   // name of the destination point
};
