#pragma once
// The one compile driver of the front-ends: runs the library on one definition
// and collects what it reports.
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "frontend/compile_options.h"
#include "model/fahrplandefinition.h"

// One finding of a compile, as every front-end shows it (text report, JSON, the
// editor). Texts are the library's Windows-1252 bytes.
struct Diagnose {
  bool fehler = false;                  // a fatal fault or a file not written; else a warning
  std::string datei;                    // the file of the token's list, or the definition file
  std::optional<std::uint32_t> zeile;   // none for a fault without a token
  std::optional<std::uint32_t> spalte;  // the token's first character, from 1
  std::uint32_t laenge = 0;             // characters of the token, 0 when unknown
  std::string meldung;
  std::string pruefung;              // the name of the front-end check; empty for the library's
  std::vector<std::string> notizen;  // explanations the front-end adds
  std::string zeilentext;            // the source line of `zeile`, as read; empty when unknown
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

// The name of the definition in messages: "<stdin>" for "-".
std::string definitionName(Options const& options);

// quorvel_init has already run. Reads, executes and validates as the options say.
Ergebnis compile(Fahrplandefinition& fpl, std::istream& in, Options const& options);
