#include "lsp/analysis.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "external/installation.h"
#include "frontend/installation_root.h"

namespace fs = std::filesystem;

namespace fplc::lsp {

namespace {

std::string libraryBytes(Dokument const& d) {
  return d.kodierung == Kodierung::Cp1252 ? utf8ToCp1252(d.text) : d.text;
}

std::string readFile(std::string const& pfad) {
  std::ifstream in(pfad, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

Diagnose fehlerOhneToken(std::string const& datei, std::string const& meldung) {
  Diagnose d;
  d.fehler = true;
  d.datei = datei;
  d.meldung = meldung;
  return d;
}

// The installation root is a process-wide setting of the library: it is set
// afresh for every compile, so that one document's root never leaks into the
// next. Returns a problem text when the client's root is no installation.
std::optional<std::string> richteInstallationEin(Options const& options) {
  quorvelpath.clear();
  quorvel_dev = false;
  std::string problem;
  if (!setUpInstallation(options, nullptr, problem)) return problem;
  return std::nullopt;
}

// Files the server did not open itself may only come from the installation root
// and the document's folder: a definition can name any path, and the editor
// compiles whatever the author's buffer holds. Open buffers are read as they are.
void begrenzeVerzeichnisse(Fahrplandefinition& fpl, std::string const& pfad) {
  std::vector<std::string> erlaubt{fs::path(pfad).parent_path().string()};
  if (!quorvelpath.empty()) erlaubt.push_back(quorvelpath);
  fpl.setErlaubteVerzeichnisse(std::move(erlaubt));
}

// Hover shows each train's successor: a definition without OUT, which the
// compile does not post-process, is post-processed here. Its findings are not
// added: the diagnostics stay those of `fplc --check`.
void nachbearbeite(Analyse& analyse) {
  if (analyse.ergebnis.abgebrochen || analyse.fpl->isPostprocessed()) return;
  try {
    analyse.fpl->postprocess();
  } catch (...) {  // a fault here belongs to a real run of OUT, not to the editor
  }
}

}  // namespace

std::string normalisiert(std::string const& pfad) {
  std::error_code error;
  fs::path absolute = fs::absolute(pfad, error);
  if (error) return pfad;
  return absolute.lexically_normal().string();
}

Kodierung kodierungVon(std::string const& pfad) {
  std::error_code error;
  if (!fs::is_regular_file(pfad, error)) return Kodierung::Utf8;
  return isUtf8(readFile(pfad)) ? Kodierung::Utf8 : Kodierung::Cp1252;
}

Analyse::Quelltext quelltext(std::string bytes, Kodierung kodierung) {
  Analyse::Quelltext q;
  q.zeilenAnfaenge.push_back(0);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
    if (bytes[i] == '\n' || bytes[i] == '\r') q.zeilenAnfaenge.push_back(i + 1);
  }
  q.bytes = std::move(bytes);
  q.kodierung = kodierung;
  return q;
}

std::pair<std::string_view, Kodierung> Analyse::zeile(std::string const& datei,
                                                      std::uint32_t nummer) const {
  auto found = texte.find(datei);
  if (found == texte.end()) {
    found = vonPlatte_.find(datei);
    if (found == vonPlatte_.end()) {
      std::string bytes = readFile(datei);
      Kodierung k = isUtf8(bytes) ? Kodierung::Utf8 : Kodierung::Cp1252;
      found = vonPlatte_.emplace(datei, quelltext(std::move(bytes), k)).first;
    }
  }
  Quelltext const& q = found->second;
  if (nummer == 0 || nummer > q.zeilenAnfaenge.size()) return {{}, q.kodierung};
  std::string_view text = q.bytes;
  std::size_t start = q.zeilenAnfaenge[nummer - 1];
  std::size_t end = text.find_first_of("\r\n", start);
  return {text.substr(start, end == std::string_view::npos ? end : end - start), q.kodierung};
}

std::unique_ptr<Analyse> analysiere(Dokument const& dokument, Dokumente const& offen,
                                    Einstellungen const& einstellungen) {
  auto analyse = std::make_unique<Analyse>();
  analyse->pfad = dokument.pfad;
  analyse->fpl = std::make_unique<Fahrplandefinition>();
  Options options;
  options.definition = dokument.pfad;
  options.root = einstellungen.installationRoot;
  options.check = true;

  analyse->texte[dokument.pfad] = quelltext(libraryBytes(dokument), dokument.kodierung);
  try {
    if (auto problem = richteInstallationEin(options)) {
      analyse->ergebnis.abgebrochen = true;
      analyse->ergebnis.diagnosen.push_back(fehlerOhneToken(dokument.pfad, *problem));
      return analyse;
    }
    Analyse* ziel = analyse.get();
    analyse->fpl->setDefinitionsQuelle(
        [ziel, &offen](std::string const& pfad) -> std::unique_ptr<std::istream> {
          auto found = offen.find(normalisiert(pfad));
          if (found == offen.end()) return nullptr;
          Analyse::Quelltext& q = ziel->texte[pfad] =
              quelltext(libraryBytes(found->second), found->second.kodierung);
          return std::make_unique<std::istringstream>(q.bytes);
        });
    begrenzeVerzeichnisse(*analyse->fpl, dokument.pfad);
    std::istringstream in(analyse->texte[dokument.pfad].bytes);
    analyse->ergebnis = compile(*analyse->fpl, in, options);
    nachbearbeite(*analyse);
  } catch (std::exception const& e) {
    // compile catches the library's faults; this is what is left (a file
    // system fault while looking for the installation, memory).
    analyse->ergebnis.abgebrochen = true;
    analyse->ergebnis.diagnosen.push_back(fehlerOhneToken(dokument.pfad, e.what()));
  }
  analyse->fpl->setDefinitionsQuelle(nullptr);
  return analyse;
}

}  // namespace fplc::lsp
