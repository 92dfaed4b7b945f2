// The language server's latency from an editor change to the published
// diagnostics: one didChange with the full text, compiled when the input falls
// idle, as the server does between keystrokes.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "generator/synthetic_timetable.h"
#include "lsp/server.h"
#include "lsp/text_encoding.h"

namespace {

using nlohmann::json;

std::string readFile(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

json textDocument(std::string const& path) {
  return {{"uri", fplc::lsp::uriOfPath(fplc::lsp::normalisiert(path))}};
}

// `definition`: a definition file inside an installation, found as fplc finds it.
void BM_ChangeToPublishedDiagnostics(benchmark::State& state, std::string const& definition) {
  std::string const text = readFile(definition);
  if (text.empty()) {
    state.SkipWithError(("cannot read " + definition).c_str());
    return;
  }
  int published = 0;
  fplc::lsp::Server server([&published](json const& m) {
    if (m.value("method", "") == "textDocument/publishDiagnostics") ++published;
  });
  server.verarbeite(
      json{{"jsonrpc", "2.0"}, {"id", 1}, {"method", "initialize"}, {"params", {}}}.dump());
  json open = {{"jsonrpc", "2.0"},
               {"method", "textDocument/didOpen"},
               {"params", {{"textDocument", textDocument(definition)}}}};
  open["params"]["textDocument"]["text"] = text;
  server.verarbeite(open.dump());
  server.leerlauf();

  int version = 1;
  for (auto _ : state) {
    // Typing a comment at the end changes the text without changing the result.
    json change = {{"jsonrpc", "2.0"},
                   {"method", "textDocument/didChange"},
                   {"params",
                    {{"textDocument", textDocument(definition)},
                     {"contentChanges",
                      json::array({{{"text", text + "// " + std::to_string(++version)}}})}}}};
    server.verarbeite(change.dump());
    server.leerlauf();
  }
  state.counters["published"] = published;
}

}  // namespace

// Aim: below 50 ms.
BENCHMARK_CAPTURE(BM_ChangeToPublishedDiagnostics, example,
                  std::string(FPLC_SOURCE_DIR "/examples/installation/fahrplaene/beispiel.fpl"))
    ->Unit(benchmark::kMillisecond);

// A generated regional timetable of 30,000 trains over 50 layouts. Aim: below 300 ms.
namespace {

std::string generatedDefinition() {
  std::filesystem::path const folder =
      std::filesystem::temp_directory_path() / "fplc-lsp-bench-30000";
  fplc::bench::SyntheticTimetable parameters;
  parameters.trains = 30000;
  return fplc::bench::writeSyntheticInstallation(folder, parameters).string();
}

}  // namespace

BENCHMARK_CAPTURE(BM_ChangeToPublishedDiagnostics, generated_30000, generatedDefinition())
    ->Unit(benchmark::kMillisecond);
