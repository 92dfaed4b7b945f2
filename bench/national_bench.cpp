// The whole compile of a synthetic national timetable (50 layouts, 20% of the
// trains turning with "FOLGE ZN *"): read, execute with OUT post-processing and
// saving every layout, validate. Beside it the floor: tinyxml2
// alone building and printing the same documents and saving them. After the
// run the program prints the ratio of each size to its floor and the growth
// from 10,000 to 100,000 trains.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <tinyxml2.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "external/installation.h"
#include "generator/synthetic_timetable.h"
#include "model/fahrplandefinition.h"

namespace {

namespace fs = std::filesystem;

// One generated installation and its definition text.
struct Installation {
  fs::path ordner;
  fs::path definition;
  std::string text;
  // The documents of a compile, as texts, for the floor to rebuild.
  std::vector<std::string> dokumente;
};

Installation& installation(int zuege) {
  static std::map<int, std::unique_ptr<Installation>> vorrat;
  std::unique_ptr<Installation>& inst = vorrat[zuege];
  if (inst) return *inst;
  inst = std::make_unique<Installation>();
  inst->ordner = fs::temp_directory_path() / ("fplc-bench-" + std::to_string(zuege));
  inst->definition = fplc::bench::writeSyntheticInstallation(inst->ordner, {zuege, 50, 0.2, 1});
  std::ostringstream text;
  text << std::ifstream(inst->definition, std::ios::binary).rdbuf();
  inst->text = text.str();
  return *inst;
}

void speichere(fs::path const& datei, char const* text, std::size_t laenge) {
  if (FILE* f = std::fopen(datei.c_str(), "wb")) {
    std::fwrite(text, 1, laenge, f);
    std::fclose(f);
  }
}

// Reads and executes the definition; OUT saves every layout's file unless
// `ohneAusgabe`.
void fuehreAus(Installation const& inst, Fahrplandefinition& fpl, bool ohneAusgabe) {
  quorvelpath = inst.ordner.string();
  std::istringstream in(inst.text);
  fpl.read(in, inst.definition.string());
  fpl.execute(ohneAusgabe, static_cast<TokenList const*>(nullptr));
}

// One whole compile, as fplc runs it.
void kompiliere(Installation const& inst) {
  Fahrplandefinition fpl;
  fuehreAus(inst, fpl, false);
  fpl.validate();
  benchmark::DoNotOptimize(fpl.getWarnungen().size());
}

// The documents of every layout, as texts, for the floor to rebuild.
std::vector<std::string> dokumente(Installation const& inst) {
  Fahrplandefinition fpl;
  fuehreAus(inst, fpl, true);
  fpl.postprocess();
  std::vector<std::string> texte;
  for (Aussenanlage const& aa : fpl.getAussenanlagen()) {
    tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
    fpl.write(doc, "Synthetisch", aa, fs::path(aa.datei).filename().string());
    tinyxml2::XMLPrinter printer;
    doc.Print(&printer);
    texte.emplace_back(printer.CStr());
  }
  return texte;
}

void BM_Compile(benchmark::State& state) {
  Installation& inst = installation(static_cast<int>(state.range(0)));
  for (auto _ : state)
    kompiliere(inst);
  state.counters["trains"] = static_cast<double>(state.range(0));
}

// Builds a copy of `quelle` under `ziel` with NewElement and SetAttribute.
void baueNach(tinyxml2::XMLDocument& doc, tinyxml2::XMLElement const* quelle,
              tinyxml2::XMLNode* ziel) {
  for (; quelle; quelle = quelle->NextSiblingElement()) {
    tinyxml2::XMLElement* e = doc.NewElement(quelle->Name());
    for (tinyxml2::XMLAttribute const* a = quelle->FirstAttribute(); a; a = a->Next())
      e->SetAttribute(a->Name(), a->Value());
    ziel->InsertEndChild(e);
    baueNach(doc, quelle->FirstChildElement(), e);
  }
}

// The floor: the same documents built element by element and printed.
void BM_Floor(benchmark::State& state) {
  Installation& inst = installation(static_cast<int>(state.range(0)));
  if (inst.dokumente.empty()) inst.dokumente = dokumente(inst);
  std::vector<std::unique_ptr<tinyxml2::XMLDocument>> vorlagen;
  for (std::string const& text : inst.dokumente) {
    vorlagen.push_back(std::make_unique<tinyxml2::XMLDocument>());
    vorlagen.back()->Parse(text.c_str(), text.size());
  }
  fs::path const datei = inst.ordner / "stellwerke" / "floor_bench.xml";
  for (auto _ : state) {
    for (auto const& vorlage : vorlagen) {
      tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
      doc.InsertEndChild(doc.NewDeclaration());
      baueNach(doc, vorlage->RootElement(), &doc);
      tinyxml2::XMLPrinter printer;
      doc.Print(&printer);
      speichere(datei, printer.CStr(), static_cast<std::size_t>(printer.CStrSize() - 1));
    }
  }
  state.counters["trains"] = static_cast<double>(state.range(0));
}

// fplc end to end, as an author runs it: one process per compile, checks
// included. The time is the processor time of that process (user and system).
void BM_Fplc(benchmark::State& state) {
  Installation& inst = installation(static_cast<int>(state.range(0)));
  std::string const wurzel = inst.ordner.string(), definition = inst.definition.string();
  char const* argumente[] = {FPLC_BINARY,        "--root",  wurzel.c_str(),
                             definition.c_str(), "--quiet", nullptr};
  for (auto _ : state) {
    pid_t prozess = 0;
    if (::posix_spawn(&prozess, FPLC_BINARY, nullptr, nullptr, const_cast<char**>(argumente),
                      environ) != 0) {
      state.SkipWithError("fplc startet nicht");
      break;
    }
    int status = 0;
    rusage verbraucht{};
    ::wait4(prozess, &status, 0, &verbraucht);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
      state.SkipWithError("fplc meldet einen Fehler");
      break;
    }
    auto sekunden = [](timeval t) { return static_cast<double>(t.tv_sec) + t.tv_usec / 1e6; };
    state.SetIterationTime(sekunden(verbraucht.ru_utime) + sekunden(verbraucht.ru_stime));
  }
  state.counters["trains"] = static_cast<double>(state.range(0));
}

// Five repetitions of each; the summary takes their median, which a shared
// machine disturbs far less than a single run.
void groessen(benchmark::internal::Benchmark* b) {
  b->Arg(10000)->Arg(30000)->Arg(100000)->Unit(benchmark::kMillisecond);
  b->Repetitions(5)->DisplayAggregatesOnly(true);
}

BENCHMARK(BM_Compile)->Apply(groessen);
BENCHMARK(BM_Fplc)->Apply(groessen)->UseManualTime();
BENCHMARK(BM_Floor)->Apply(groessen);

// Keeps the median time per compile of each benchmark for the summary: the
// processor time, of the benchmark's own process or of fplc's.
class Sammler : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(std::vector<Run> const& runs) override {
    for (Run const& run : runs) {
      if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
      bool const vonFplc = run.run_name.function_name == "BM_Fplc";
      double const zeit = vonFplc ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
      zeiten[run.run_name.function_name + "/" + run.run_name.args] =
          zeit / benchmark::GetTimeUnitMultiplier(run.time_unit);
    }
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, double> zeiten;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  Sammler sammler;
  benchmark::RunSpecifiedBenchmarks(&sammler);
  auto zeit = [&](std::string const& name, char const* n) {
    auto it = sammler.zeiten.find(name + "/" + n);
    return it == sammler.zeiten.end() ? 0.0 : it->second;
  };
  for (char const* n : {"10000", "30000", "100000"}) {
    double const floor = zeit("BM_Floor", n);
    if (floor <= 0) continue;
    std::printf("%7s trains: floor %.3f s", n, floor);
    for (auto [name, text] :
         {std::pair("BM_Compile", "library compile"), std::pair("BM_Fplc", "fplc end to end")})
      if (double const t = zeit(name, n); t > 0)
        std::printf(", %s %.3f s (ratio %.2f)", text, t, t / floor);
    std::printf("\n");
  }
  for (auto [name, text] :
       {std::pair("BM_Compile", "library compile"), std::pair("BM_Fplc", "fplc end to end"),
        std::pair("BM_Floor", "floor")})
    if (zeit(name, "10000") > 0 && zeit(name, "100000") > 0)
      std::printf("growth from 10,000 to 100,000 trains, %s: %.2f times the time\n", text,
                  zeit(name, "100000") / zeit(name, "10000"));
  benchmark::Shutdown();
  return 0;
}
