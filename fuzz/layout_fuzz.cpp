// Layout XML through AA, then a timetable written for it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_installation.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  fplc::fuzz::writeFile("stellwerke/fuzz.stwa", reinterpret_cast<char const*>(data), size);
  Fahrplandefinition fpl;
  fplc::fuzz::confine(fpl);
  fplc::fuzz::compile(fpl,
                      "Quorvel FplDef 1\n"
                      "AA Fuzz \"$(StwDir)fuzz.stwa\" F {\n}\n"
                      "OUT P \"$(ThisStwPath)-fpl.xml\"\n",
                      "layout.fpl");
  return 0;
}
