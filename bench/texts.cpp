// Texts of 1 KiB to 16 MiB: searching one, joining two, and growing one by small pieces. Each takes time in
// proportion to the text; the growth copies the text at most once a step, which its time for a step shows.
#include "script_benchmark.h"

namespace quorvelin::benchmarks {
namespace {

// `text` has `size` characters, none of which is an "x" but the last.
std::string searchedText(int64_t size) {
    return "text = 'abcdefgh'; while (text.length < " + std::to_string(size) +
           ") text = text + text;\n"
           "text = text.substring(0, " +
           std::to_string(size - 1) + ") + 'x';\n";
}

void measureScript(benchmark::State& state, const std::string& function) {
    ScriptBenchmark script(searchedText(state.range(0)));
    script.define("f", function);
    script.measure(state, "f");
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void findCharacter(benchmark::State& state) {
    measureScript(state, "text.indexOf('x');");
}
void findWord(benchmark::State& state) {
    measureScript(state, "text.indexOf('ghx');");
}
void findNothing(benchmark::State& state) {
    measureScript(state, "text.indexOf('abd');");
}
void concatenate(benchmark::State& state) {
    measureScript(state, "var joined = text + text;");
}
void appendOne(benchmark::State& state) {
    measureScript(state, "var longer = text; longer += 'y';");
}
void upperCase(benchmark::State& state) {
    measureScript(state, "text.toUpperCase();");
}
void readCharacter(benchmark::State& state) {
    measureScript(state, "text.charAt(500);");
}

// From nothing to `size` characters by pieces of 64.
void growByPieces(benchmark::State& state) {
    measureScript(state,
                  "var grown = '', piece = text.substring(0, 64), n = text.length / 64, i;"
                  "for (i = 0; i < n; i++) grown += piece;");
}

void sizes(benchmark::internal::Benchmark* each) {
    each->RangeMultiplier(16)->Range(1 << 10, 16 << 20)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(findCharacter)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(findWord)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(findNothing)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(concatenate)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(appendOne)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(upperCase)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(readCharacter)->Apply(sizes)->Complexity();
BENCHMARK(growByPieces)
    ->RangeMultiplier(4)
    ->Range(1 << 10, 1 << 20)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity();

}  // namespace
}  // namespace quorvelin::benchmarks

BENCHMARK_MAIN();
