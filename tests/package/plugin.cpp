// A plug-in as an editor loads it: a shared object that links the fplc library
// and compiles a definition when its host asks. Only the entry point leaves it.
#include <fplc/fplc.h>

#include <cstddef>
#include <cstring>
#include <exception>
#include <fstream>
#include <string>

namespace {

std::string placeOf(Fahrplandefinition const& definition, Token const* token) {
  return token ? definition.createTokenLocationString(token) + ": " : "";
}

// The report, one line each: warnings, timetable files written, the fault.
std::string compile(std::string const& path, int& status) {
  std::ifstream in(path, std::ios::binary);
  quorvel_init(path);
  Fahrplandefinition definition;
  std::string fault;
  try {
    definition.read(in, path);
    definition.execute(false, nullptr);
    definition.validate();
  } catch (Error const& e) {
    fault = "Fehler: " + placeOf(definition, e.token) + e.message + "\n";
  } catch (std::exception const& e) {
    fault = "Fehler: " + placeOf(definition, definition.getCurrentCommand()) + e.what() + "\n";
  }
  std::string report;
  for (Error const& warning : definition.getWarnungen())
    report += "Warnung: " + placeOf(definition, warning.token) + warning.message + "\n";
  for (auto const& ausgabe : definition.getAusgaben())
    if (ausgabe.geschrieben) report += ausgabe.pfad + "\n";
  status = fault.empty() ? 0 : 1;
  return report + fault;
}

}  // namespace

// Compiles the definition at `path` and copies the report (Windows-1252) into
// `report`; returns 0 when it compiled, 1 on a fault, 2 when the report did not fit.
extern "C" __attribute__((visibility("default"))) int fplc_plugin_compile(char const* path,
                                                                          char* report,
                                                                          std::size_t size) {
  int status = 0;
  std::string const text = compile(path, status);
  if (text.size() >= size) return 2;
  std::memcpy(report, text.c_str(), text.size() + 1);
  return status;
}
