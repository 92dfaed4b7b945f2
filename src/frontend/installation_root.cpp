#include "frontend/installation_root.h"

#include <filesystem>
#include <system_error>

#include "external/installation.h"

namespace fs = std::filesystem;

namespace {

constexpr char const* kRootMarker = "core/configTemplate/basesettings.xml";

// A search that cannot read a directory on its way counts as finding nothing:
// the definition may not need the installation at all.
bool searchFrom(std::string const& start) {
  try {
    return quorvel_init(start);
  } catch (fs::filesystem_error const&) {
    return false;
  }
}

std::string executablePath(char const* argv0) {
  std::error_code error;
  fs::path self = fs::read_symlink("/proc/self/exe", error);
  if (!error) return self.string();
  return argv0 ? argv0 : "";
}

bool useGivenRoot(std::string const& root, std::string& problem) {
  std::error_code error;
  if (!fs::is_regular_file(fs::path(root) / kRootMarker, error)) {
    problem = "\"" + root + "\" ist kein Installationsverzeichnis: " + kRootMarker + " fehlt.";
    return false;
  }
  // The library's own search, started at a file directly inside the root,
  // accepts the root at once and sets the development flag by the same rule.
  if (!searchFrom((fs::path(root) / "core").string())) {
    problem = "\"" + root + "\" kann nicht als Installationsverzeichnis gelesen werden.";
    return false;
  }
  return true;
}

}  // namespace

bool setUpInstallation(Options const& options, char const* argv0, std::string& problem) {
  if (options.root) return useGivenRoot(*options.root, problem);
  // Standard input has no folder: the search starts in the current one.
  std::string const start = options.definition == "-" ? "./-" : options.definition;
  if (!searchFrom(start)) searchFrom(executablePath(argv0));
  return true;
}
