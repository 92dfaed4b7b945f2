#include "frontend/report.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "tokenizer/cp1252.h"

namespace {

char const* severityLabel(Diagnose const& d) {
  return d.fehler ? "Fehler" : "Warnung";
}

nlohmann::ordered_json diagnoseToJson(Diagnose const& d) {
  nlohmann::ordered_json entry;
  entry["severity"] = d.fehler ? "error" : "warning";
  entry["file"] = cp1252::toUtf8(d.datei);
  entry["line"] = d.zeile ? nlohmann::ordered_json(*d.zeile) : nlohmann::ordered_json(nullptr);
  entry["message"] = cp1252::toUtf8(d.meldung);
  return entry;
}

nlohmann::ordered_json ausgabeToJson(Fahrplandefinition::Ausgabe const& a) {
  nlohmann::ordered_json entry;
  entry["path"] = cp1252::toUtf8(a.pfad);
  entry["written"] = a.geschrieben;
  return entry;
}

}  // namespace

void writeTextDiagnostics(std::ostream& err, std::vector<Diagnose> const& diagnosen) {
  for (Diagnose const& d : diagnosen) {
    err << cp1252::toUtf8(d.datei);
    if (d.zeile) err << ':' << *d.zeile;
    err << ": " << severityLabel(d) << ": " << cp1252::toUtf8(d.meldung) << '\n';
  }
}

void writeWrittenFiles(std::ostream& out,
                       std::vector<Fahrplandefinition::Ausgabe> const& ausgaben) {
  for (Fahrplandefinition::Ausgabe const& a : ausgaben)
    if (a.geschrieben) out << cp1252::toUtf8(a.pfad) << '\n';
}

void writeJsonReport(std::ostream& out, bool ok, std::vector<Diagnose> const& diagnosen,
                     std::vector<Fahrplandefinition::Ausgabe> const& ausgaben) {
  nlohmann::ordered_json report;
  report["ok"] = ok;
  report["diagnostics"] = nlohmann::ordered_json::array();
  for (Diagnose const& d : diagnosen)
    report["diagnostics"].push_back(diagnoseToJson(d));
  report["outputs"] = nlohmann::ordered_json::array();
  for (Fahrplandefinition::Ausgabe const& a : ausgaben)
    report["outputs"].push_back(ausgabeToJson(a));
  // The texts are valid UTF-8 after the conversion; replacing is only a safeguard.
  out << report.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}
