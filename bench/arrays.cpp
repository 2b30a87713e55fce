// What scripts do with arrays of 10, 1,000 and 100,000 elements. Below each group stands how the time grew:
// an element is found and appended in constant time whatever the size, join, reverse and split take time in
// proportion, sort the usual factor of a logarithm more.
#include "script_benchmark.h"

namespace quorvelin::benchmarks {
namespace {

// `a` is an array of `size` numbers in no order, `words` the text of as many words.
std::string arrayOf(int64_t size) {
    return "a = new Array(); words = ''; seed = 7;\n"
           "for (i = 0; i < " +
           std::to_string(size) +
           "; i++) {\n"
           "    seed = (seed * 16807 + 11) % 65537;\n"
           "    a[i] = seed; words += (i > 0 ? ',' : '') + 'word';\n"
           "}\n"
           "order = new Array();\n"
           "keep = new Function(\"for (i = 0; i < a.length; i++) order[i] = a[i];\");\n"
           "shuffle = new Function(\"for (i = 0; i < order.length; i++) a[i] = order[i];\");\n"
           "byNumber = new Function(\"x\", \"y\", \"return x - y;\");\n"
           "keep();\n"
           "last = a.length - 1;\n";
}

void measureScript(benchmark::State& state, const std::string& function) {
    ScriptBenchmark script(arrayOf(state.range(0)));
    script.define("f", function);
    script.measure(state, "f");
    state.SetComplexityN(state.range(0));
}

void join(benchmark::State& state) {
    measureScript(state, "a.join(';');");
}
void reverse(benchmark::State& state) {
    measureScript(state, "a.reverse();");
}
void splitByText(benchmark::State& state) {
    measureScript(state, "words.split(',');");
}
void splitByPattern(benchmark::State& state) {
    measureScript(state, "words.split(/,/);");
}
void readLastElement(benchmark::State& state) {
    measureScript(state, "return a[last];");
}
void writeLastElement(benchmark::State& state) {
    measureScript(state, "a[last] = 1;");
}
void appendElements(benchmark::State& state) {
    measureScript(state, "var b = new Array(), i; for (i = 0; i < order.length; i++) b[i] = 1;");
}

void sortWith(benchmark::State& state, const std::string& comparison) {
    ScriptBenchmark script(arrayOf(state.range(0)));
    script.define("f", "a.sort(" + comparison + ");");
    script.measure(state, "shuffle", "f");
    state.SetComplexityN(state.range(0));
}

void sortAsTexts(benchmark::State& state) {
    sortWith(state, "");
}
void sortByFunction(benchmark::State& state) {
    sortWith(state, "byNumber");
}

void sizes(benchmark::internal::Benchmark* each) {
    each->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(join)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(reverse)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(splitByText)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(splitByPattern)->Apply(sizes)->Complexity(benchmark::oN);
BENCHMARK(sortAsTexts)->Apply(sizes)->Complexity(benchmark::oNLogN);
BENCHMARK(sortByFunction)->Apply(sizes)->Complexity(benchmark::oNLogN);
BENCHMARK(readLastElement)->Apply(sizes)->Complexity(benchmark::o1);
BENCHMARK(writeLastElement)->Apply(sizes)->Complexity(benchmark::o1);
BENCHMARK(appendElements)->Apply(sizes)->Complexity(benchmark::oN);

}  // namespace
}  // namespace quorvelin::benchmarks

BENCHMARK_MAIN();
