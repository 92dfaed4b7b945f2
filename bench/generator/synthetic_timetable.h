#pragma once
// Synthetic regional and national timetables for measuring the compiler.
//
// `writeSyntheticInstallation` writes a complete installation into a folder:
// the installation marker file, one layout (.stwa) per layout with its
// stations, directions and signals, a vehicle library, and one definition with
// formations, day records, clock-face series (TZ), boundary entries between
// neighbouring layouts, automatic successors ("FOLGE ZN *") at turnaround
// tracks and an OUT line. The layouts form a chain: layout i borders layouts
// i-1 and i+1. Every line runs between the main stations of two neighbouring
// layouts; turnaround lines end on a platform track and turn there, the other
// lines come from and go to stations outside every layout.
//
// The same parameters give the same files, byte for byte.
#include <cstdint>
#include <filesystem>

namespace fplc::bench {

struct SyntheticTimetable {
  int trains = 10000;             // trains made by the series (before any splitting)
  int layouts = 50;               // layouts in the chain, at least 1
  double successorShare = 0.2;    // share of trains whose run ends "FOLGE ZN *"
  std::uint64_t randomState = 1;  // starting value of the random choices
};

// Writes the installation into `folder` (created when missing; files of an
// earlier call are overwritten) and returns the path of the definition, which
// lies in `folder`/fahrplaene. Its OUT writes `folder`/stellwerke/*_fahrplan.xml.
std::filesystem::path writeSyntheticInstallation(std::filesystem::path const& folder,
                                                 SyntheticTimetable const& parameters);

}  // namespace fplc::bench
