#pragma once
// The report of a run: text on stderr (and the files written on stdout), or one
// JSON object on stdout.
#include <iosfwd>
#include <vector>

#include "frontend/compile.h"

struct TextBericht {
  bool farbe = false;  // ANSI colours, for a terminal
};

// Per finding "FILE:LINE:COLUMN: Warnung: MESSAGE [check]", the source line with a
// caret and tildes under the token, and the notes; identical findings at one place
// once, with their count; at the end the count ("3 Warnungen, 1 Fehler"). Texts
// are shown as UTF-8.
void writeTextDiagnostics(std::ostream& err, std::vector<Diagnose> const& diagnosen,
                          TextBericht const& art = {});
// One line per timetable file that was written.
void writeWrittenFiles(std::ostream& out, std::vector<Fahrplandefinition::Ausgabe> const& ausgaben);
// {"ok": ..., "diagnostics": [...], "outputs": [...]} and a line feed; every
// finding, repeated ones too.
void writeJsonReport(std::ostream& out, bool ok, std::vector<Diagnose> const& diagnosen,
                     std::vector<Fahrplandefinition::Ausgabe> const& ausgaben);
