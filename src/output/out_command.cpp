// OUT: resolves successor services and writes one timetable file per layout.
#include <tinyxml2.h>

#include <cerrno>
#include <string>

#include "external/dateizugriff.h"
#include "external/install_path.h"
#include "external/installation.h"
#include "model/fahrplandefinition.h"
#include "output/atomic_save.h"
#include "tokenizer/cp1252.h"

namespace {

// Replaces the first occurrence of `variable`; a second one stays as written.
bool ersetzeErstes(std::string& pfad, std::string const& variable, std::string const& wert) {
  auto pos = pfad.find(variable);
  if (pos == std::string::npos) return false;
  pfad.replace(pos, variable.size(), wert);
  return true;
}

// The layout's directory with its trailing separator.
std::string stwVerzeichnis(Aussenanlage const& aa, Token const* cmd) {
  auto sep = aa.datei.find_last_of("\\/");
  if (sep == std::string::npos) {
    throw Error(
        cmd,
        "$(ThisStwDir)-Ersetzung nicht möglich: Außenanlage liegt nicht in Unterverzeichnis."_cp1252);
  }
  return aa.datei.substr(0, sep + 1);
}

// The layout's path without ".stwa" and what follows it.
std::string stwPfadOhneEndung(Aussenanlage const& aa, Token const* cmd) {
  auto endung = aa.datei.find(".stwa");
  if (endung == std::string::npos) {
    throw Error(
        cmd, "$(ThisStwPath)-Ersetzung nicht möglich: Außenanlage hat falsche Dateiendung."_cp1252);
  }
  return aa.datei.substr(0, endung);
}

// The output file of one layout; each per-layout variable is replaced once, in
// this order.
std::string ausgabePfad(std::string const& vorlage, Aussenanlage const& aa, Token const* cmd) {
  std::string pfad = expandInstallPath(vorlage);
  if (pfad.find("$(ThisStwDir)") != std::string::npos)
    ersetzeErstes(pfad, "$(ThisStwDir)", stwVerzeichnis(aa, cmd));
  if (pfad.find("$(ThisStwPath)") != std::string::npos)
    ersetzeErstes(pfad, "$(ThisStwPath)", stwPfadOhneEndung(aa, cmd));
  ersetzeErstes(pfad, "$(AASuffix)", aa.suffix);
  return pfad;
}

// How the timetable names its layout: the bare file name, else the path below
// the installation root, else the path as it is.
std::string anlagenReferenz(std::string const& datei) {
  auto sep = datei.find_last_of("\\/");
  if (sep != std::string::npos) return datei.substr(sep + 1);
  if (datei.compare(0, quorvelpath.size(), quorvelpath) == 0)
    return datei.substr(quorvelpath.size());
  return datei;
}

}  // namespace

void Fahrplandefinition::kommandoOUT(Token const* cmd, bool skipOutput) {
  if (skipOutput) {
    ausgabeUebersprungen = true;
    return;
  }
  postprocess();
  std::string const name = cmd->strAt(1);
  std::string const vorlage = cmd->strAt(2);
  for (Aussenanlage const& aa : aussenanlagen) {
    if (aa.datei.empty()) continue;
    std::string const pfad = ausgabePfad(vorlage, aa, cmd);
    fplc::detail::pruefeErlaubt(cmd, pfad, erlaubteVerzeichnisse);
    // The text goes to the file as it is printed: a whole timetable is never
    // held in memory as a document.
    std::string const referenz = anlagenReferenz(aa.datei);
    auto drucken = [&](tinyxml2::XMLPrinter& printer) { writeText(printer, name, aa, referenz); };
    // A file that cannot be saved is recorded as such; the run goes on. The old
    // file is replaced only by a completely written new one. A FIFO in its place
    // would block the save for ever: not saved. A device is written in place.
    // In every case the whole text is printed, so that a fault in it stops OUT
    // before any file is replaced.
    int const fehler = fplc::detail::istFifo(pfad)
                           ? fplc::detail::speichereNicht(drucken, ENXIO)
                           : fplc::detail::speichereVollstaendig(drucken, pfad);
    ausgaben.push_back({pfad, fehler == 0, fehler});
  }
}
