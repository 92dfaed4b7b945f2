#include <algorithm>
#include <istream>
#include <new>
#include <streambuf>

#include "external/dateizugriff.h"
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

namespace {

// Passes the characters of a stream on up to a number of bytes, and turns an
// exception of the stream (an I/O error) into the end of the text, noting both.
class BegrenzteQuelle : public std::streambuf {
 public:
  BegrenzteQuelle(std::streambuf* quelle, std::size_t grenze) : quelle_(quelle), grenze_(grenze) {}

  std::size_t gelesen() const { return gelesen_; }
  bool zuGross() const { return zuGross_; }
  bool lesefehler() const { return lesefehler_; }

 protected:
  int_type underflow() override {
    if (!quelle_ || zuGross_ || lesefehler_) return traits_type::eof();
    // One byte beyond the limit is asked for, so that reaching it exactly is allowed.
    std::size_t const rest = grenze_ - gelesen_;
    std::streamsize const gewuenscht =
        static_cast<std::streamsize>(rest < sizeof puffer_ ? rest + 1 : sizeof puffer_);
    std::streamsize n = 0;
    try {
      // Only what the source holds already is taken, so that an I/O error in
      // the next read does not lose text read before it.
      std::streamsize verfuegbar = quelle_->in_avail();
      if (verfuegbar <= 0) {
        if (traits_type::eq_int_type(quelle_->sgetc(), traits_type::eof()))
          return traits_type::eof();
        verfuegbar = std::max<std::streamsize>(quelle_->in_avail(), 1);
      }
      n = quelle_->sgetn(puffer_, std::min(gewuenscht, verfuegbar));
    } catch (std::bad_alloc const&) {
      throw;
    } catch (...) {
      lesefehler_ = true;
      return traits_type::eof();
    }
    if (n <= 0) return traits_type::eof();
    // The text up to the limit is still lexed: the fault is placed where it stops.
    if (static_cast<std::size_t>(n) > grenze_ - gelesen_) {
      zuGross_ = true;
      n = static_cast<std::streamsize>(grenze_ - gelesen_);
      if (n == 0) return traits_type::eof();
    }
    gelesen_ += static_cast<std::size_t>(n);
    setg(puffer_, puffer_, puffer_ + n);
    return traits_type::to_int_type(puffer_[0]);
  }

 private:
  std::streambuf* quelle_;
  std::size_t grenze_;
  std::size_t gelesen_ = 0;
  bool zuGross_ = false;
  bool lesefehler_ = false;
  char puffer_[65536];
};

}  // namespace

void Fahrplandefinition::setErlaubteVerzeichnisse(std::vector<std::string> verzeichnisse) {
  erlaubteVerzeichnisse.clear();
  // Compared after resolving, like the paths of the files themselves; a folder that
  // does not resolve is kept as written and so allows nothing that resolves.
  for (std::string const& verzeichnis : verzeichnisse) {
    std::string aufgeloest = fplc::detail::aufgeloesterPfad(verzeichnis);
    erlaubteVerzeichnisse.push_back(aufgeloest.empty() ? verzeichnis : std::move(aufgeloest));
  }
}

void Fahrplandefinition::read(std::istream& in, std::string const& filename) {
  // The list is kept before any check can fail: errors point at its tokens.
  tokenLists.push_back(std::make_unique<TokenList>());
  TokenList& list = *tokenLists.back();
  auto quelle = std::make_unique<BegrenzteQuelle>(
      in.rdbuf(), maxDefinitionsBytes - std::min(gelesenBytes, maxDefinitionsBytes));
  std::istream begrenzt(quelle.get());
  try {
    list.read(begrenzt, filename);
  } catch (Error const&) {
    // A text cut off by the limit or an I/O error may end inside a quote.
    if (!quelle->zuGross() && !quelle->lesefehler()) throw;
  }
  gelesenBytes += quelle->gelesen();

  // An include's fault belongs to its DAT command; the main file's to where it stopped.
  Token const* ort = dateiTiefe > 0 ? currentCommand : list.back();
  if (quelle->lesefehler())
    throw Error(ort, "Datei \"" + filename + "\" konnte nicht geöffnet werden."_cp1252);
  if (quelle->zuGross())
    throw Error(ort, fplc::detail::meldungZuVielText(filename, maxDefinitionsBytes));
  list.prepare();

  Token const* first = list.front();
  if (!first) throw Error(nullptr, "Leere Tokenliste."_cp1252);
  if (!Token::Match(first, "Quorvel FplDef %num%"))
    throw Error(first, "Kein gültiger Formatheader vorhanden."_cp1252);
  if (first->strAt(2) != "1") throw Error(first, "Keine unterstützte Formatversion."_cp1252);
}
