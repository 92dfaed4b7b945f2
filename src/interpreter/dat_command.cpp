// DAT: reads and executes another definition file in place.
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

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

bool isDirectory(std::string const& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

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

  std::unique_ptr<std::istream> text;
  if (definitionsQuelle) text = definitionsQuelle(path);
  if (!text) {
    // A directory opens as a stream on some systems but reads as nothing.
    auto file = std::make_unique<std::ifstream>();
    if (!isDirectory(path)) file->open(path, std::ios::in | std::ios::binary);
    if (!file->is_open())
      throw Error(cmd, std::string("Datei \"") + path + "\" konnte nicht geöffnet werden."_cp1252);
    text = std::move(file);
  }

  TiefenZaehler tiefe(dateiTiefe);
  read(*text, path);
  execute(skipOutput, tokenLists.back().get());
}
