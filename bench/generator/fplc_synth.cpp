// fplc-synth DIR [--trains N] [--layouts L] [--successors SHARE] [--random-state S]:
// writes a synthetic installation into DIR and prints the definition's path,
// so that fplc can be timed end to end on it.
#include <cstdlib>
#include <iostream>
#include <string>

#include "generator/synthetic_timetable.h"

int main(int argc, char** argv) {
  fplc::bench::SyntheticTimetable parameter;
  std::string ordner;
  for (int i = 1; i < argc; ++i) {
    std::string const arg = argv[i];
    bool const hatWert = i + 1 < argc;
    if (arg == "--trains" && hatWert)
      parameter.trains = std::atoi(argv[++i]);
    else if (arg == "--layouts" && hatWert)
      parameter.layouts = std::atoi(argv[++i]);
    else if (arg == "--successors" && hatWert)
      parameter.successorShare = std::atof(argv[++i]);
    else if (arg == "--random-state" && hatWert)
      parameter.randomState = std::strtoull(argv[++i], nullptr, 10);
    else if (ordner.empty() && !arg.starts_with("--"))
      ordner = arg;
    else {
      ordner.clear();
      break;
    }
  }
  if (ordner.empty()) {
    std::cerr << "Aufruf: fplc-synth ORDNER [--trains N] [--layouts L] [--successors ANTEIL]"
                 " [--random-state S]\n";
    return 2;
  }
  std::cout << fplc::bench::writeSyntheticInstallation(ordner, parameter).string() << "\n";
  return 0;
}
