// DAT: reads and executes another definition file in place.
#include <algorithm>
#include <istream>
#include <memory>
#include <streambuf>
#include <string>

#include "external/dateizugriff.h"
#include "external/install_path.h"
#include "external/installation.h"
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

namespace {

// Counts one level of include nesting for as long as the include runs, also
// when it ends with an exception.
class TiefenZaehler {
 public:
  explicit TiefenZaehler(unsigned& tiefe) : tiefe_(tiefe) { ++tiefe_; }
  ~TiefenZaehler() { --tiefe_; }
  TiefenZaehler(TiefenZaehler const&) = delete;
  TiefenZaehler& operator=(TiefenZaehler const&) = delete;

 private:
  unsigned& tiefe_;
};

// The text of a file in memory, as a stream that does not copy it.
class Speichertext : public std::streambuf {
 public:
  explicit Speichertext(std::string text) : text_(std::move(text)) {
    setg(text_.data(), text_.data(), text_.data() + text_.size());
  }

 private:
  std::string text_;
};

class Dateitext : public std::istream {
 public:
  explicit Dateitext(std::string text) : std::istream(nullptr), puffer_(std::move(text)) {
    rdbuf(&puffer_);
  }

 private:
  Speichertext puffer_;
};

}  // namespace

void Fahrplandefinition::kommandoDAT(Token const* cmd, bool skipOutput) {
  postprocessed = false;
  std::string const path = expandInstallPath(cmd->strAt(1));

  // The library runs inside an editor: a file that includes itself must end in
  // a message, not in a stack overflow that loses the author's work.
  if (dateiTiefe >= maxDateiTiefe)
    throw Error(cmd, std::string("Datei \"") + path +
                         "\" kann nicht eingebunden werden: mehr als "_cp1252 +
                         std::to_string(maxDateiTiefe) + " verschachtelte DAT-Kommandos.");

  // The count of includes is limited as well as their depth: an include graph
  // that doubles at each level would otherwise grow without bound.
  if (tokenLists.size() > maxEinbindungen)
    throw Error(cmd, std::string("Datei \"") + path +
                         "\" kann nicht eingebunden werden: mehr als "_cp1252 +
                         std::to_string(maxEinbindungen) + " DAT-Kommandos insgesamt.");

  // A text the front-end hands in (an editor's open buffer) is the author's own;
  // only files read from disk are confined.
  std::unique_ptr<std::istream> text;
  if (definitionsQuelle) text = definitionsQuelle(path);
  if (!text) {
    fplc::detail::pruefeErlaubt(cmd, path, erlaubteVerzeichnisse);
    // Only a regular file: a FIFO would block, a device (/dev/zero) never end. The
    // text read is bounded by what is left of the limit; read() reports going past it.
    using fplc::detail::Lesestatus;
    std::string inhalt;
    std::size_t const rest = maxDefinitionsBytes - std::min(gelesenBytes, maxDefinitionsBytes);
    Lesestatus const status = fplc::detail::leseRegulaereDatei(path, inhalt, rest);
    if (status == Lesestatus::NichtGeoeffnet)
      throw Error(cmd, std::string("Datei \"") + path + "\" konnte nicht geöffnet werden."_cp1252);
    if (status == Lesestatus::ZuGross)
      throw Error(cmd, fplc::detail::meldungZuVielText(path, maxDefinitionsBytes));
    text = std::make_unique<Dateitext>(std::move(inhalt));
  }

  TiefenZaehler tiefe(dateiTiefe);
  read(*text, path);
  execute(skipOutput, tokenLists.back().get());
}
