#include "frontend/report.h"

#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <tuple>

#include "tokenizer/cp1252.h"

namespace {

char const* severityLabel(Diagnose const& d) {
  return d.fehler ? "Fehler" : "Warnung";
}

// ANSI escapes, or nothing when the report has no colour.
struct Farben {
  bool an;
  char const* fett() const { return an ? "\x1b[1m" : ""; }
  char const* rot() const { return an ? "\x1b[1;31m" : ""; }
  char const* magenta() const { return an ? "\x1b[1;35m" : ""; }
  char const* gruen() const { return an ? "\x1b[1;32m" : ""; }
  char const* cyan() const { return an ? "\x1b[1;36m" : ""; }
  char const* aus() const { return an ? "\x1b[0m" : ""; }
};

// What makes two findings the same for the text report.
auto schluessel(Diagnose const& d) {
  return std::tie(d.fehler, d.datei, d.zeile, d.spalte, d.meldung, d.pruefung, d.notizen);
}

struct NachSchluessel {
  bool operator()(Diagnose const* a, Diagnose const* b) const {
    return schluessel(*a) < schluessel(*b);
  }
};

// The source line and, under the token, a caret followed by tildes; tabs before
// the token are kept so that the caret stands under it.
void writeQuellzeile(std::ostream& err, Diagnose const& d, Farben const& f) {
  if (d.zeilentext.empty() || !d.spalte) return;
  err << ' ' << cp1252::toUtf8(d.zeilentext) << "\n ";
  std::string einzug;
  for (std::size_t i = 0; i + 1 < *d.spalte && i < d.zeilentext.size(); ++i)
    einzug += d.zeilentext[i] == '\t' ? '\t' : ' ';
  err << einzug << f.gruen() << '^' << std::string(d.laenge > 1 ? d.laenge - 1 : 0, '~') << f.aus()
      << '\n';
}

void writeDiagnose(std::ostream& err, Diagnose const& d, unsigned anzahl, Farben const& f) {
  err << f.fett() << cp1252::toUtf8(d.datei);
  if (d.zeile) err << ':' << *d.zeile;
  if (d.zeile && d.spalte) err << ':' << *d.spalte;
  err << ": " << f.aus() << (d.fehler ? f.rot() : f.magenta()) << severityLabel(d) << ": "
      << f.aus() << f.fett() << cp1252::toUtf8(d.meldung);
  if (!d.pruefung.empty()) err << " [" << d.pruefung << ']';
  if (anzahl > 1) err << " (" << anzahl << "-mal)";
  err << f.aus() << '\n';
  writeQuellzeile(err, d, f);
  for (std::string const& notiz : d.notizen)
    err << "  " << f.cyan() << "Hinweis: " << f.aus() << cp1252::toUtf8(notiz) << '\n';
}

std::string anzahlText(std::size_t n, char const* einzahl, char const* mehrzahl) {
  return std::to_string(n) + ' ' + (n == 1 ? einzahl : mehrzahl);
}

nlohmann::ordered_json optionalZahl(std::optional<std::uint32_t> zahl) {
  return zahl ? nlohmann::ordered_json(*zahl) : nlohmann::ordered_json(nullptr);
}

nlohmann::ordered_json diagnoseToJson(Diagnose const& d) {
  nlohmann::ordered_json entry;
  entry["severity"] = d.fehler ? "error" : "warning";
  entry["file"] = cp1252::toUtf8(d.datei);
  entry["line"] = optionalZahl(d.zeile);
  entry["column"] = optionalZahl(d.spalte);
  entry["message"] = cp1252::toUtf8(d.meldung);
  if (!d.pruefung.empty()) entry["check"] = d.pruefung;
  if (!d.notizen.empty()) {
    entry["notes"] = nlohmann::ordered_json::array();
    for (std::string const& notiz : d.notizen)
      entry["notes"].push_back(cp1252::toUtf8(notiz));
  }
  return entry;
}

nlohmann::ordered_json ausgabeToJson(Fahrplandefinition::Ausgabe const& a) {
  nlohmann::ordered_json entry;
  entry["path"] = cp1252::toUtf8(a.pfad);
  entry["written"] = a.geschrieben;
  return entry;
}

}  // namespace

void writeTextDiagnostics(std::ostream& err, std::vector<Diagnose> const& diagnosen,
                          TextBericht const& art) {
  Farben const f{art.farbe};
  std::size_t warnungen = 0, fehler = 0;
  // Each finding once, in the order of its first occurrence, with its count.
  std::map<Diagnose const*, unsigned, NachSchluessel> anzahl;
  std::vector<Diagnose const*> reihenfolge;
  for (Diagnose const& d : diagnosen) {
    (d.fehler ? fehler : warnungen)++;
    if (anzahl[&d]++ == 0) reihenfolge.push_back(&d);
  }
  for (Diagnose const* d : reihenfolge)
    writeDiagnose(err, *d, anzahl[d], f);
  if (warnungen == 0 && fehler == 0) return;
  std::string zaehlung;
  if (warnungen) zaehlung = anzahlText(warnungen, "Warnung", "Warnungen");
  if (fehler) zaehlung += (zaehlung.empty() ? "" : ", ") + anzahlText(fehler, "Fehler", "Fehler");
  err << zaehlung << ".\n";
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
