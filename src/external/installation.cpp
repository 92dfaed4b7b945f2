#include "external/installation.h"
#include "external/install_path.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

std::string quorvelpath;
bool quorvel_dev = false;

namespace {

constexpr char const* kRootMarker = "/core/configTemplate/basesettings.xml";
constexpr char const* kDevMarker = "/stellwerke/_baustelle/suggest_open_config.xml";

// The full path name of `path`, as a platform's full-path operation gives it:
// absolute, with "." and ".." resolved by the text alone (no links followed).
fs::path fullPathName(std::string const& path) {
  // Without code pages the narrow text is taken byte for byte.
  return fs::absolute(fs::path(path)).lexically_normal();
}

// The parent directory; trailing separators are stripped first, so that
// "/a/b/" has the parent "/a" like "/a/b".
fs::path parentDirectory(fs::path const& dir) {
  std::string text = dir.string();
  while (text.size() > 1 && (text.back() == '/' || text.back() == '\\'))
    text.pop_back();
  return fs::path(text).parent_path();
}

void replaceFirst(std::string& text, std::string const& variable, std::string const& value) {
  // Strings shorter than the variable are never searched.
  if (text.size() < variable.size()) return;
  std::size_t const pos = text.find(variable);
  if (pos != std::string::npos) text.replace(pos, variable.size(), value);
}

}  // namespace

bool quorvel_init(std::string const& path) {
  // `path` is taken as a file inside the installation: the search starts at its
  // directory and never tests `path` itself.
  fs::path candidate = parentDirectory(fullPathName(path));
  while (fs::exists(candidate)) {
    if (fs::exists(candidate.string() + kRootMarker)) {
      quorvelpath = candidate.string();
      quorvel_dev = fs::exists(quorvelpath + kDevMarker);
      break;
    }
    fs::path parent = parentDirectory(candidate);
    if (parent == candidate) break;  // the file-system root is reached
    candidate = parent;
  }
  // Not cleared at the start: an earlier success still counts.
  return !quorvelpath.empty();
}

std::string fplc::detail::expandInstallPath(std::string const& text) {
  if (text.empty()) return {};
  bool const installationRelative = text.front() == '/' || text.front() == '\\';
  std::string result = installationRelative ? quorvelpath + text : text;
  std::replace(result.begin(), result.end(), '\\', '/');
  // Only the first occurrence of each variable is replaced; the values keep the
  // separators of the root as the platform gave them.
  replaceFirst(result, "$(StwDir)", quorvelpath + "/stellwerke/");
  replaceFirst(result, "$(StwBauDir)", quorvelpath + "/stellwerke/_baustelle/");
  return result;
}
