#pragma once
// The report of a run: text lines on stderr (and the files written on stdout),
// or one JSON object on stdout.
#include <iosfwd>
#include <vector>

#include "frontend/compile.h"

// "FILE:LINE: Warnung: MESSAGE" / "FILE:LINE: Fehler: MESSAGE", or "FILE: Fehler:
// MESSAGE" without a line; texts shown as UTF-8.
void writeTextDiagnostics(std::ostream& err, std::vector<Diagnose> const& diagnosen);
// One line per timetable file that was written.
void writeWrittenFiles(std::ostream& out, std::vector<Fahrplandefinition::Ausgabe> const& ausgaben);
// {"ok": ..., "diagnostics": [...], "outputs": [...]} and a line feed.
void writeJsonReport(std::ostream& out, bool ok, std::vector<Diagnose> const& diagnosen,
                     std::vector<Fahrplandefinition::Ausgabe> const& ausgaben);
