#include "lsp/diagnostics.h"

#include "tokenizer/cp1252.h"

namespace fplc::lsp {

namespace {

constexpr int kError = 1;
constexpr int kWarning = 2;

nlohmann::json rangeOf(Analyse const& analyse, Diagnose const& d) {
  std::uint32_t zeile = d.zeile.value_or(1);
  if (zeile == 0) zeile = 1;
  auto [text, kodierung] = analyse.zeile(d.datei, zeile);
  std::uint32_t line = zeile - 1;
  if (!d.spalte || *d.spalte == 0) {  // no column: the whole line
    return {
        {"start", {{"line", line}, {"character", 0}}},
        {"end",
         {{"line", line},
          {"character", utf16Offset(text, static_cast<std::uint32_t>(text.size()), kodierung)}}}};
  }
  std::uint32_t start = *d.spalte - 1;
  std::uint32_t end = start + d.laenge;
  if (end < start) end = start;  // a length that wraps is no range
  return {{"start", {{"line", line}, {"character", utf16Offset(text, start, kodierung)}}},
          {"end", {{"line", line}, {"character", utf16Offset(text, end, kodierung)}}}};
}

nlohmann::json diagnostic(Analyse const& analyse, Diagnose const& d) {
  std::string message = cp1252::toUtf8(d.meldung);
  for (std::string const& notiz : d.notizen) {
    message += '\n';
    message += cp1252::toUtf8(notiz);
  }
  nlohmann::json out = {{"range", rangeOf(analyse, d)},
                        {"severity", d.fehler ? kError : kWarning},
                        {"source", "fplc"},
                        {"message", message}};
  if (!d.pruefung.empty()) out["code"] = cp1252::toUtf8(d.pruefung);
  return out;
}

}  // namespace

nlohmann::json position(Analyse const& analyse, std::string const& datei, std::uint32_t zeile,
                        std::uint32_t spalte) {
  auto [text, kodierung] = analyse.zeile(datei, zeile);
  std::uint32_t byte = spalte > 0 ? spalte - 1 : 0;
  return {{"line", zeile > 0 ? zeile - 1 : 0}, {"character", utf16Offset(text, byte, kodierung)}};
}

std::map<std::string, nlohmann::json> diagnosenJeDatei(Analyse const& analyse) {
  std::map<std::string, nlohmann::json> out;
  out[uriOfPath(analyse.pfad)] = nlohmann::json::array();
  for (Diagnose const& d : analyse.ergebnis.diagnosen) {
    std::string datei = d.datei.empty() ? analyse.pfad : normalisiert(d.datei);
    nlohmann::json& list = out[uriOfPath(datei)];
    if (list.is_null()) list = nlohmann::json::array();
    list.push_back(diagnostic(analyse, d));
  }
  return out;
}

}  // namespace fplc::lsp
