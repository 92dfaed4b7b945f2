#pragma once
// Where the automatic successor search looks: the trains whose run starts at
// an operating point and track. It gives the answer a scan of the whole train
// list would give, ties included, but finds it by departure time.
#include <cstddef>
#include <cstdint>
#include <list>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/zug.h"

namespace fplc::detail {

class Startindex {
 public:
  // Indexes the trains of `zuege`, in list order.
  explicit Startindex(std::list<Zug> const& zuege);

  // Indexes a train appended to the list.
  void aufnehmen(Zug const& zug);

  // The number of the closest train starting where `zug` ends, on weekday `tag`
  // or on the day after; 0 when none.
  std::int32_t folge(Zug const& zug, char tag) const;

 private:
  // A train's departure at the start of its run and its place in the list. A
  // train's run changes during post-processing only to a copy that starts
  // alike, or to none, so its departure stays what it was when indexed.
  struct Abfahrt {
    long long zeit;
    std::size_t platz;
    Zug const* zug;
    bool operator<(Abfahrt const& b) const {
      return zeit != b.zeit ? zeit < b.zeit : platz < b.platz;
    }
  };

  // The trains starting at one operating point and track.
  struct Fach {
    std::vector<Zug const*> inListenfolge;
    std::set<Abfahrt> nachAbfahrt;
    long long frueheste = 0;
    long long spaeteste = 0;
  };

  Zug const* naechster(Fach const& fach, Zug const& zug, char tag) const;

  std::unordered_map<std::string, Fach> faecher;
  std::size_t naechsterPlatz = 0;
};

}  // namespace fplc::detail
