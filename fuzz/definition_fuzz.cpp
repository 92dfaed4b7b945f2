// Definition text: read, execute with output into the temporary installation,
// post-process and validate.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_installation.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Fahrplandefinition fpl;
  fplc::fuzz::confine(fpl);
  std::string const text(reinterpret_cast<char const*>(data), size);
  fplc::fuzz::compile(fpl, text, fplc::fuzz::installation() + "/fahrplaene/fuzz.fpl");
  return 0;
}
