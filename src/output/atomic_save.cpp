#include "output/atomic_save.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <tinyxml2.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace fplc::detail {
namespace {

// Writes and closes `file`; returns 0 or the errno of the first failure. The
// file is closed in every case.
int schreibeUndSchliesse(tinyxml2::XMLDocument const& doc, std::FILE* file) {
  tinyxml2::XMLPrinter printer(file, false);
  doc.Print(&printer);
  int fehler = std::fflush(file) != 0 || std::ferror(file) ? (errno ? errno : EIO) : 0;
  if (fehler == 0 && ::fsync(::fileno(file)) != 0 && errno != EINVAL && errno != EROFS)
    fehler = errno;
  if (std::fclose(file) != 0 && fehler == 0) fehler = errno ? errno : EIO;
  return fehler;
}

int schreibeAnOrt(tinyxml2::XMLDocument const& doc, std::string const& pfad) {
  errno = 0;
  std::FILE* file = std::fopen(pfad.c_str(), "w");
  if (!file) return errno ? errno : EIO;
  return schreibeUndSchliesse(doc, file);
}

// The mode a new file would get from fopen: 0666 less the umask; an old file
// keeps its own.
mode_t modusFuer(std::string const& ziel) {
  struct stat alt;
  if (::stat(ziel.c_str(), &alt) == 0) return alt.st_mode & 07777;
  mode_t const maske = ::umask(0);
  ::umask(maske);
  return 0666 & ~maske;
}

// Where the new file is written: next to the file a symbolic link points to, so
// that the link stays a link.
std::string zielDatei(std::string const& pfad) {
  std::error_code fehler;
  if (!fs::is_symlink(pfad, fehler)) return pfad;
  fs::path ziel = fs::weakly_canonical(pfad, fehler);
  return fehler ? pfad : ziel.string();
}

// Removes the temporary file unless it was renamed, also when an exception passes.
struct TemporaereDatei {
  std::string pfad;
  bool umbenannt = false;
  ~TemporaereDatei() {
    if (!umbenannt) std::remove(pfad.c_str());
  }
};

}  // namespace

int speichereVollstaendig(tinyxml2::XMLDocument const& doc, std::string const& pfad,
                          VorDemUmbenennen const& vorDemUmbenennen) {
  std::error_code statusFehler;
  fs::file_status status = fs::status(pfad, statusFehler);
  if (fs::exists(status) && !fs::is_regular_file(status)) return schreibeAnOrt(doc, pfad);

  std::string const ziel = zielDatei(pfad);
  fs::path const zielPfad(ziel);
  // Built by appending: GCC 12 warns falsely about "." + std::string&&.
  std::string versteckt = ".";
  versteckt += zielPfad.filename().string();
  versteckt += ".XXXXXX";
  std::string vorlage = (zielPfad.parent_path() / versteckt).string();
  std::vector<char> name(vorlage.begin(), vorlage.end());
  name.push_back('\0');
  errno = 0;
  int const fd = ::mkstemp(name.data());
  if (fd < 0) return errno ? errno : EIO;
  TemporaereDatei temporaer{name.data()};
  ::fchmod(fd, modusFuer(ziel));
  std::FILE* file = ::fdopen(fd, "w");
  int fehler = 0;
  if (!file) {
    fehler = errno ? errno : EIO;
    ::close(fd);
  } else {
    fehler = schreibeUndSchliesse(doc, file);
  }
  if (fehler == 0 && vorDemUmbenennen) vorDemUmbenennen(temporaer.pfad);
  if (fehler != 0) return fehler;
  if (std::rename(temporaer.pfad.c_str(), ziel.c_str()) != 0) return errno ? errno : EIO;
  temporaer.umbenannt = true;
  return 0;
}

}  // namespace fplc::detail
