// How fast the parser is over ordinary source of 1, 4 and 16 MiB, the release of the tree included, and how
// much memory the tree takes for each byte of source. The time for a byte should not depend on the size.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <string>

#include "foundation/stream.h"
#include "frontend/parser.h"

namespace quorvelin {
namespace {

// One of the pieces that ordinary scripts are made of, with names that differ from piece to piece.
std::string piece(int number) {
    const std::string n = std::to_string(number % 997);
    switch (number % 6) {
        case 0:
            return "// Adds up what the orders of a customer come to.\n"
                   "function total" +
                   n +
                   "(orders, rate) {\n"
                   "    var sum = 0, count = orders.length;\n"
                   "    for (var i = 0; i < count; i++) {\n"
                   "        var order = orders[i];\n"
                   "        if (order.valid && order.amount > 0) {\n"
                   "            sum += order.amount * rate - order.discount / 2;\n"
                   "        }\n"
                   "    }\n"
                   "    return sum;\n"
                   "}\n\n";
        case 1:
            return "var customer" + n + " = new Customer(\"Number " + n + "\", 'street and place', " + n +
                   ");\n"
                   "customer" +
                   n + ".address.city = cities[" + n +
                   " % cities.length];\n"
                   "customer" +
                   n + ".save(true, null, 0x1F, 3.25);\n";
        case 2:
            return "/* A state machine, as they come. */\n"
                   "switch (state" +
                   n +
                   ") {\n"
                   "    case 1:\n        next = waiting == 0 ? 2 : 3;\n        break;\n"
                   "    case 2:\n        println(\"state \" + next + \" of \" + names[next]);\n        "
                   "break;\n"
                   "    default:\n        next = 1;\n"
                   "}\n";
        case 3:
            return "while (!queue.empty() && steps" + n +
                   " < limit) {\n"
                   "    var item = queue.take();\n"
                   "    if (item == null) { break; } else { item.visit(visitor, steps" +
                   n +
                   "++); }\n"
                   "}\n";
        case 4:
            return "words" + n +
                   " = text.split(/[ ,;]+/);\n"
                   "result = [first + second * (third - 4), words" +
                   n +
                   "[0].toUpperCase(), -1, !done];\n"
                   "flags = flags << 2 | mask & 15 ^ ~bits;\n";
        default:
            return "do {\n    value = Math.floor(value / 10) + digits[value % 10];\n} while (value > " + n +
                   ");\n";
    }
}

BString source(size_t size) {
    std::string text;
    for (int i = 0; text.size() < size; ++i) text += piece(i);
    return BString(std::u16string(text.begin(), text.end()).data(), static_cast<int32_t>(text.size()));
}

size_t allocatedBytes() {
    const struct mallinfo2 information = mallinfo2();
    return information.uordblks + information.hblkhd;
}

Owned<JSNode> parse(const BString& text) {
    BStringInputStream stream(&text);
    JSParser parser(&stream);
    return Owned<JSNode>(parser.parseProgram());
}

void parseSource(benchmark::State& state) {
    const BString text = source(static_cast<size_t>(state.range(0)) << 20);
    const double units = static_cast<double>(text.length());
    {
        // Outside the measured time, as the question is slow. The tree is largest at the end of the parse,
        // and then nothing else of size lives.
        const size_t before = allocatedBytes();
        const Owned<JSNode> root = parse(text);
        state.counters["memory_per_byte"] = static_cast<double>(allocatedBytes() - before) / units;
        if (!root || root->kind == kErrorKind) {
            state.SkipWithError("the source does not parse");
            return;
        }
    }
    for (auto _ : state) parse(text).reset();
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.length());
    state.counters["time_per_byte"] = benchmark::Counter(
        units, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(parseSource)->Arg(1)->Arg(4)->Arg(16)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

}  // namespace
}  // namespace quorvelin

BENCHMARK_MAIN();
