#pragma once
// Runs the library on one definition file and collects what it reports.
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "cli/options.h"
#include "model/fahrplandefinition.h"

// One line of the report. Texts are the library's Windows-1252 bytes.
struct Diagnose {
  bool fehler = false;                 // a fatal fault or a file not written; else a warning
  std::string datei;                   // the file of the token's list, or the definition file
  std::optional<std::uint32_t> zeile;  // none for a fault without a token
  std::string meldung;
};

struct Ergebnis {
  std::vector<Diagnose> diagnosen;  // warnings, files not written, the fatal fault
  std::vector<Fahrplandefinition::Ausgabe> ausgaben;
  bool abgebrochen = false;  // a fatal fault ended the run
  bool warnungen = false;
  bool nichtGeschrieben = false;
};

// Opens the definition file for reading; false with a message in `problem`
// when it cannot be read.
bool openDefinition(std::string const& file, std::ifstream& in, std::string& problem);

// quorvel_init has already run. Reads, executes and validates as the options say.
Ergebnis compile(Fahrplandefinition& fpl, std::istream& in, Options const& options);
