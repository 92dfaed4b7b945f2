// How long a definition takes to compile, by its number of trains: reading,
// executing, post-processing with automatic successors, and validation. All
// trains turn at the same two tracks, the hardest case for the successor
// search, which looks at every train starting where a train ends.
#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

#include "model/fahrplandefinition.h"

namespace {

// Shuttle trains between two stations that turn round and find their successor
// automatically: `paare` pairs of trains, one pair every ten minutes.
std::string pendelverkehr(int paare) {
  std::ostringstream text;
  text << "Quorvel FplDef 1\n"
          "BTR XA Astadt\nBTR XB Bdorf\n"
          "ZL Hin {\n XA . N1 H - 0:00\n XB . N2 H 0:20 - FOLGE ZN *\n}\n"
          "ZL Rueck {\n XB . N2 H - 0:00\n XA . N1 H 0:20 - FOLGE ZN *\n}\n"
          "SET Zuglauf Hin\n"
       << "TZ 10001 " << 10001 + 2 * (paare - 1) << " 2 5:00 0:10 tgl\n"
       << "SET Zuglauf Rueck\n"
       << "TZ 10002 " << 10002 + 2 * (paare - 1) << " 2 5:25 0:10 tgl\n";
  return text.str();
}

void compile(benchmark::State& state, bool mitPruefung) {
  std::string const text = pendelverkehr(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Fahrplandefinition fpl;
    std::istringstream in(text);
    fpl.read(in, "bench.fpl");
    fpl.execute(true, static_cast<TokenList const*>(nullptr));
    fpl.postprocess();
    if (mitPruefung) fpl.validate();
    benchmark::DoNotOptimize(fpl.getZuege().size());
  }
  state.SetComplexityN(state.range(0));
}

void BM_ExecuteAndPostprocess(benchmark::State& state) {
  compile(state, false);
}
void BM_ExecutePostprocessAndValidate(benchmark::State& state) {
  compile(state, true);
}

}  // namespace

BENCHMARK(BM_ExecuteAndPostprocess)->RangeMultiplier(4)->Range(16, 1024)->Complexity();
BENCHMARK(BM_ExecutePostprocessAndValidate)->RangeMultiplier(4)->Range(16, 1024)->Complexity();
