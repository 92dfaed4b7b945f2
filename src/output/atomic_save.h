#pragma once
// Saving a timetable file so that it is never half-written: the text goes to a
// temporary file in the target folder, which replaces the old file only when
// writing and closing succeeded.
#include <functional>
#include <string>

namespace tinyxml2 {
class XMLDocument;
}

namespace fplc::detail {

// Called between writing the temporary file and renaming it; lets tests stand
// for a run interrupted at the worst moment.
using VorDemUmbenennen = std::function<void(std::string const& temporaer)>;

// Saves `doc` (indented, as XMLDocument::SaveFile does) to `pfad`. Returns 0, or
// the errno of the step that failed; the old file is then unchanged and no
// temporary file is left. A path that names something other than a regular file
// (a device, a pipe) is written in place, since it cannot be replaced.
int speichereVollstaendig(tinyxml2::XMLDocument const& doc, std::string const& pfad,
                          VorDemUmbenennen const& vorDemUmbenennen = {});

}  // namespace fplc::detail
