#include "fuzz_installation.h"

#include <stdlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "external/installation.h"

namespace fs = std::filesystem;

namespace fplc::fuzz {

namespace {

void removeInstallation() {
  std::error_code ignored;
  fs::remove_all(installation(), ignored);
}

std::string makeInstallation() {
  std::string pattern = (fs::temp_directory_path() / "fplc-fuzz-XXXXXX").string();
  if (!mkdtemp(pattern.data())) std::abort();
  fs::copy(FPLC_SOURCE_DIR "/examples/installation", pattern, fs::copy_options::recursive);
  return fs::canonical(pattern).string();
}

}  // namespace

std::string const& installation() {
  static std::string const root = [] {
    std::string made = makeInstallation();
    quorvelpath = made;
    return made;
  }();
  static bool const registered = std::atexit(removeInstallation) == 0;
  (void)registered;
  return root;
}

std::string writeFile(std::string const& name, char const* data, std::size_t size) {
  std::string const path = installation() + "/" + name;
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      .write(data, static_cast<std::streamsize>(size));
  return path;
}

void confine(Fahrplandefinition& fpl) {
  quorvelpath = installation();
  fpl.setErlaubteVerzeichnisse({installation()});
  fpl.setLesegrenzen(64, std::size_t{1} << 20);
}

void compile(Fahrplandefinition& fpl, std::string const& definition, std::string const& file) {
  std::istringstream in(definition);
  try {
    fpl.read(in, file);
    fpl.execute(false, nullptr);
    fpl.postprocess();
    fpl.validate();
  } catch (Error const&) {
  } catch (std::out_of_range const&) {
  } catch (std::invalid_argument const&) {
  }
}

}  // namespace fplc::fuzz
