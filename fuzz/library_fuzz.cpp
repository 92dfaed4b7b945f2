// Vehicle library XML through BIB, then vehicles and a formation taken from it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_installation.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  fplc::fuzz::writeFile("stellwerke/fuzz.xml", reinterpret_cast<char const*>(data), size);
  Fahrplandefinition fpl;
  fplc::fuzz::confine(fpl);
  fplc::fuzz::compile(fpl,
                      "Quorvel FplDef 1\n"
                      "BIB 1 \"$(StwDir)fuzz.xml\"\n"
                      "FZG A 1 1\nFZG B 1 2\nRHG R A B\nRHG S ~ B A\n",
                      "library.fpl");
  return 0;
}
