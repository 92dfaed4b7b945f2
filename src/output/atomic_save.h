#pragma once
// Saving a timetable file so that it is never half-written: the text goes to a
// temporary file in the target folder, which replaces the old file only when
// writing and closing succeeded.
#include <functional>
#include <string>

namespace tinyxml2 {
class XMLPrinter;
}  // namespace tinyxml2

namespace fplc::detail {

// Called between writing the temporary file and renaming it; lets tests stand
// for a run interrupted at the worst moment.
using VorDemUmbenennen = std::function<void(std::string const& temporaer)>;

// Prints the text to be saved. It runs exactly once, to its end or to an
// exception, whatever becomes of the file.
using Drucken = std::function<void(tinyxml2::XMLPrinter& printer)>;

// Saves the text that `drucken` prints (indented, as XMLDocument::SaveFile
// saves a document) to `pfad`. Returns 0, or the errno of the step that failed;
// the old file is then unchanged and no temporary file is left. A path that
// names something other than a regular file (a device, a pipe) is written in
// place, since it cannot be replaced, and only once the whole text is printed.
int speichereVollstaendig(Drucken const& drucken, std::string const& pfad,
                          VorDemUmbenennen const& vorDemUmbenennen = {});

// Where no file can take the text, it is still printed, for the faults that
// printing raises, and dropped; returns `fehler`.
int speichereNicht(Drucken const& drucken, int fehler);

}  // namespace fplc::detail
