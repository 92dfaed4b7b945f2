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

// Closes the file also when printing throws.
struct OffeneDatei {
  std::FILE* file;
  ~OffeneDatei() {
    if (file) std::fclose(file);
  }
};

// Writes out what is buffered and closes `file`; returns 0 or the errno of the
// first failure. The file is closed in every case.
int schliesse(std::FILE* file) {
  int fehler = std::fflush(file) != 0 || std::ferror(file) ? (errno ? errno : EIO) : 0;
  if (fehler == 0 && ::fsync(::fileno(file)) != 0 && errno != EINVAL && errno != EROFS)
    fehler = errno;
  if (std::fclose(file) != 0 && fehler == 0) fehler = errno ? errno : EIO;
  return fehler;
}

// Prints into `file` and closes it, also when printing throws.
int schreibeUndSchliesse(Drucken const& drucken, std::FILE* file) {
  OffeneDatei offen{file};
  tinyxml2::XMLPrinter printer(file, false);
  drucken(printer);
  offen.file = nullptr;
  return schliesse(file);
}

// A device or pipe sees nothing of a text whose printing fails.
int schreibeAnOrt(Drucken const& drucken, std::string const& pfad) {
  tinyxml2::XMLPrinter text;
  drucken(text);
  errno = 0;
  std::FILE* file = std::fopen(pfad.c_str(), "w");
  if (!file) return errno ? errno : EIO;
  std::fwrite(text.CStr(), 1, static_cast<std::size_t>(text.CStrSize() - 1), file);
  return schliesse(file);
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

int speichereNicht(Drucken const& drucken, int fehler) {
  tinyxml2::XMLPrinter verworfen;
  drucken(verworfen);
  return fehler;
}

int speichereVollstaendig(Drucken const& drucken, std::string const& pfad,
                          VorDemUmbenennen const& vorDemUmbenennen) {
  std::error_code statusFehler;
  fs::file_status status = fs::status(pfad, statusFehler);
  if (fs::exists(status) && !fs::is_regular_file(status)) return schreibeAnOrt(drucken, pfad);

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
  if (fd < 0) return speichereNicht(drucken, errno ? errno : EIO);
  TemporaereDatei temporaer{name.data()};
  ::fchmod(fd, modusFuer(ziel));
  std::FILE* file = ::fdopen(fd, "w");
  if (!file) {
    int const fehler = errno ? errno : EIO;
    ::close(fd);
    return speichereNicht(drucken, fehler);
  }
  int const fehler = schreibeUndSchliesse(drucken, file);
  if (fehler == 0 && vorDemUmbenennen) vorDemUmbenennen(temporaer.pfad);
  if (fehler != 0) return fehler;
  if (std::rename(temporaer.pfad.c_str(), ziel.c_str()) != 0) return errno ? errno : EIO;
  temporaer.umbenannt = true;
  return 0;
}

}  // namespace fplc::detail
