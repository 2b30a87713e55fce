// A machine for benchmarks: functions written as scripts, called again and again by the measuring loop. So
// what is measured is what a script sees, and the text of the script is read only once.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "machine/kernel.h"

namespace quorvelin::benchmarks {

// A machine that ends the program at the first message, since whatever failed would be measured as fast.
class Machine final : public JSKernel {
  public:
    void reportError(const BString& message) override {
        std::string text;
        for (int32_t i = 0; i < message.length(); ++i) text += static_cast<char>(message[i]);
        std::fprintf(stderr, "a benchmark's script failed: %s\n", text.c_str());
        std::exit(1);
    }
};

inline BString textOf(std::string_view ascii) {
    const std::u16string wide(ascii.begin(), ascii.end());
    return BString(wide.data(), static_cast<int32_t>(wide.size()));
}

class ScriptBenchmark {
  public:
    // Runs `script`, which sets up what is measured.
    explicit ScriptBenchmark(std::string_view script) : machine_(new Machine()) { run(script); }

    // Makes a global function without parameters.
    void define(std::string_view name, std::string_view body) {
        std::string script(name);
        script += " = new Function(\"";
        for (const char character : body) {
            if (character == '"' || character == '\'' || character == '\\') script += '\\';
            script += character;
        }
        script += "\");";
        run(script);
    }

    // Measures calls of a function of the script.
    void measure(benchmark::State& state, std::string_view name) {
        const BString function = textOf(name);
        if (!isFunction(state, function)) return;
        for (auto _ : state) call(function);
    }

    // As before, with a call of `preparation` in front of each, outside the measured time.
    void measure(benchmark::State& state, std::string_view preparation, std::string_view name) {
        const BString first = textOf(preparation);
        const BString function = textOf(name);
        if (!isFunction(state, first) || !isFunction(state, function)) return;
        for (auto _ : state) {
            state.PauseTiming();
            call(first);
            state.ResumeTiming();
            call(function);
        }
    }

  private:
    void run(std::string_view script) { Value(machine_->evaluateText(textOf(script), nullptr)).reset(); }

    // A call of something else does nothing, without a message.
    bool isFunction(benchmark::State& state, const BString& name) {
        if (machine_->memberType(name, machine_.get(), nullptr) == JSValueType::function) return true;
        state.SkipWithError("no such function");
        return false;
    }

    void call(const BString& function) {
        Value(machine_->callMember(function, nullptr, machine_.get(), nullptr)).reset();
    }

    Owned<Machine> machine_;
};

}  // namespace quorvelin::benchmarks
