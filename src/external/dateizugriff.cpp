#include "external/dateizugriff.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"

namespace fs = std::filesystem;

namespace {

// Closes the descriptor however the reading ends.
class Deskriptor {
 public:
  explicit Deskriptor(int fd) : fd_(fd) {}
  ~Deskriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Deskriptor(Deskriptor const&) = delete;
  Deskriptor& operator=(Deskriptor const&) = delete;
  int get() const { return fd_; }

 private:
  int fd_;
};

bool liegtIn(std::string const& pfad, std::string const& verzeichnis) {
  if (verzeichnis == "/") return true;
  if (pfad.compare(0, verzeichnis.size(), verzeichnis) != 0) return false;
  return pfad.size() == verzeichnis.size() || pfad[verzeichnis.size()] == '/';
}

}  // namespace

namespace fplc::detail {

Lesestatus leseRegulaereDatei(std::string const& pfad, std::string& inhalt, std::size_t grenze) {
  inhalt.clear();
  // Without O_NONBLOCK, opening a FIFO that has no writer would wait for ever.
  Deskriptor fd(::open(pfad.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  if (fd.get() < 0) return Lesestatus::NichtGeoeffnet;
  struct stat info {};
  if (::fstat(fd.get(), &info) != 0 || !S_ISREG(info.st_mode)) return Lesestatus::NichtGeoeffnet;
  if (info.st_size > 0 && static_cast<unsigned long long>(info.st_size) > grenze)
    return Lesestatus::ZuGross;
  inhalt.reserve(static_cast<std::size_t>(info.st_size));

  // The size in the file system is only a hint: files below /proc say 0, and a
  // file may grow while it is read.
  char puffer[65536];
  for (;;) {
    ssize_t const n = ::read(fd.get(), puffer, sizeof puffer);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      inhalt.clear();
      return Lesestatus::NichtGeoeffnet;
    }
    if (n == 0) return Lesestatus::Gelesen;
    if (static_cast<std::size_t>(n) > grenze - inhalt.size()) {
      inhalt.clear();
      return Lesestatus::ZuGross;
    }
    inhalt.append(puffer, static_cast<std::size_t>(n));
  }
}

std::string meldungZuVielText(std::string const& datei, std::size_t grenze) {
  return "Datei \"" + datei + "\" kann nicht gelesen werden: mehr als " + std::to_string(grenze) +
         " Bytes Definitionstext in allen Dateien zusammen.";
}

bool istFifo(std::string const& pfad) {
  std::error_code fehler;
  return fs::is_fifo(fs::status(pfad, fehler));
}

std::string aufgeloesterPfad(std::string const& pfad) {
  if (pfad.empty()) return {};
  std::error_code fehler;
  fs::path const absolut = fs::absolute(pfad, fehler);
  if (fehler) return {};
  fs::path const aufgeloest = fs::weakly_canonical(absolut, fehler);
  if (fehler) return {};
  std::string text = aufgeloest.string();
  while (text.size() > 1 && text.back() == '/')
    text.pop_back();
  return text;
}

void pruefeErlaubt(Token const* token, std::string const& pfad,
                   std::vector<std::string> const& verzeichnisse) {
  if (verzeichnisse.empty()) return;
  // A path that cannot be resolved (a loop of links, no permission) counts as outside.
  std::string const aufgeloest = aufgeloesterPfad(pfad);
  if (!aufgeloest.empty())
    for (std::string const& verzeichnis : verzeichnisse)
      if (!verzeichnis.empty() && liegtIn(aufgeloest, verzeichnis)) return;

  std::string meldung = "Datei \"" + pfad + "\"";
  if (aufgeloest != pfad) meldung += " (aufgelöst \""_cp1252 + aufgeloest + "\")";
  meldung += " liegt außerhalb der erlaubten Verzeichnisse"_cp1252;
  for (std::size_t i = 0; i < verzeichnisse.size(); ++i)
    meldung += (i == 0 ? " \"" : ", \"") + verzeichnisse[i] + "\"";
  throw Error(token, meldung + " und wird nicht verwendet.");
}

}  // namespace fplc::detail
