// One call each of what scripts use to show dates and numbers.
#include "script_benchmark.h"

namespace quorvelin::benchmarks {
namespace {

void measureScript(benchmark::State& state, const std::string& function) {
    ScriptBenchmark script(
        "date = new Date(2004, 1, 29, 12, 30, 59); text = 'Sun, 29 Feb 2004 12:30:59 GMT'; x = 1234567.891;");
    script.define("f", function);
    script.measure(state, "f");
}

void emptyFunction(benchmark::State& state) {
    measureScript(state, "");
}
void dateFromFields(benchmark::State& state) {
    measureScript(state, "new Date(2004, 1, 29, 12, 30, 59);");
}
void dateFromText(benchmark::State& state) {
    measureScript(state, "Date.parse(text);");
}
void dateToFields(benchmark::State& state) {
    measureScript(state, "date.getFullYear();");
}
void dateToText(benchmark::State& state) {
    measureScript(state, "date.toString();");
}
void printfText(benchmark::State& state) {
    measureScript(state, "util.printf('%-20s|', 'text');");
}
void printfInteger(benchmark::State& state) {
    measureScript(state, "util.printf('%,d', 1234567);");
}
void printfDecimals(benchmark::State& state) {
    measureScript(state, "util.printf('%.2f', x);");
}
void printfExponent(benchmark::State& state) {
    measureScript(state, "util.printf('%e', x);");
}
void printx(benchmark::State& state) {
    measureScript(state, "util.printx('999-9999', '5551234');");
}
void printd(benchmark::State& state) {
    measureScript(state, "util.printd('yyyy/mm/dd HH:MM', date);");
}

BENCHMARK(emptyFunction);
BENCHMARK(dateFromFields);
BENCHMARK(dateFromText);
BENCHMARK(dateToFields);
BENCHMARK(dateToText);
BENCHMARK(printfText);
BENCHMARK(printfInteger);
BENCHMARK(printfDecimals);
BENCHMARK(printfExponent);
BENCHMARK(printx);
BENCHMARK(printd);

}  // namespace
}  // namespace quorvelin::benchmarks

BENCHMARK_MAIN();
