// The matcher over texts up to 1 MiB: patterns that go through the whole text, and repetitions, whose time is
// to grow as the number of their steps does.
#include "script_benchmark.h"

namespace quorvelin::benchmarks {
namespace {

// `text` has `size` characters: lines of a log, none of which holds "fatal", behind them "fatal 77".
std::string logOf(int64_t size) {
    return "line = '2009-11-20 13:42:02 warning queue-17: 250 items wait, limit is 200\\n'; text = line;\n"
           "while (text.length < " +
           std::to_string(size) + ") text = text + text;\n" + "text = text.substring(0, " +
           std::to_string(size - 8) + ") + 'fatal 77';\n";
}

// `text` is "a" `size` times.
std::string runOf(int64_t size) {
    return "text = 'a'; while (text.length < " + std::to_string(size) + ") text = text + text;\n";
}

void measurePattern(benchmark::State& state, const std::string& preparation, const std::string& pattern) {
    ScriptBenchmark script(preparation + "pattern = " + pattern + ";\n");
    script.define("f", "pattern.test(text);");
    script.measure(state, "f");
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void findWord(benchmark::State& state) {
    measurePattern(state, logOf(state.range(0)), "/fatal/");
}
void findAlternative(benchmark::State& state) {
    measurePattern(state, logOf(state.range(0)), "/(fatal|severe) \\d+/");
}
void findClass(benchmark::State& state) {
    measurePattern(state, logOf(state.range(0)), "/[xyz]+ [5-9]/");
}
// Each word is found, and behind each the rest of the text is searched for what follows: the square.
void failedContinuation(benchmark::State& state) {
    measurePattern(state, logOf(state.range(0)), "/[a-z]+ \\d{2}$/");
}
void ignoreCase(benchmark::State& state) {
    measurePattern(state, logOf(state.range(0)), "RegExp('FATAL', 'i')");
}
void splitIntoWords(benchmark::State& state) {
    ScriptBenchmark script(logOf(state.range(0)));
    script.define("f", "text.split(/[ :,\\n]+/);");
    script.measure(state, "f");
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

// A repetition asks at each of its steps whether the rest follows, and the rest searches to the end of the
// text: the square, and a second repetition in a row costs nothing on top, as the first is done when it finds
// none.
void greedyRun(benchmark::State& state) {
    measurePattern(state, runOf(state.range(0)), "/^a*$/");
}
void givenBackRun(benchmark::State& state) {
    measurePattern(state, runOf(state.range(0)), "/^a*b/");
}
void groupedRun(benchmark::State& state) {
    measurePattern(state, runOf(state.range(0)), "/^(a)*$/");
}
void twoRuns(benchmark::State& state) {
    measurePattern(state, runOf(state.range(0)), "/^a*a*b/");
}

void texts(benchmark::internal::Benchmark* each) {
    each->RangeMultiplier(32)->Range(1 << 10, 1 << 20)->Unit(benchmark::kMicrosecond)->Complexity();
}
void shortTexts(benchmark::internal::Benchmark* each) {
    each->RangeMultiplier(4)->Range(1 << 8, 1 << 12)->Unit(benchmark::kMicrosecond)->Complexity();
}
void runs(benchmark::internal::Benchmark* each) {
    each->RangeMultiplier(4)->Range(64, 1 << 10)->Unit(benchmark::kMicrosecond)->Complexity();
}

BENCHMARK(findWord)->Apply(texts);
BENCHMARK(findAlternative)->Apply(texts);
BENCHMARK(findClass)->Apply(texts);
BENCHMARK(failedContinuation)->Apply(shortTexts);
BENCHMARK(ignoreCase)->Apply(texts);
BENCHMARK(splitIntoWords)->Apply(texts);
BENCHMARK(greedyRun)->Apply(runs);
BENCHMARK(givenBackRun)->Apply(runs);
BENCHMARK(groupedRun)->Apply(runs);
BENCHMARK(twoRuns)->Apply(runs);

}  // namespace
}  // namespace quorvelin::benchmarks

BENCHMARK_MAIN();
