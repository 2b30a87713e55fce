#include "quorvelin/batch_command.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstring>
#include <new>
#include <nlohmann/json.hpp>

#include "foundation/character.h"
#include "foundation/stream.h"
#include "quorvelin/files.h"
#include "quorvelin/script_session.h"
#include "quorvelin/text_encoding.h"

namespace quorvelin::tool {

namespace {

using nlohmann::ordered_json;

std::string quoted(const BString& text) {
    return jsonString(unitsOf(text), ControlEscapes::numbers);
}

bool isHexadecimal(std::string_view digits) {
    return digits.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

// The digits of an escape that `hideSurrogates` hides.
bool isHidden(std::string_view digits) {
    const bool isSurrogate = (digits[0] == 'd' || digits[0] == 'D') && digits[1] >= '8';
    return digits == "0000" || (isSurrogate && isHexadecimal(digits));
}

// JSON for the parser of the library, which takes no lone surrogates: each escape of a surrogate, and of
// U+0000, becomes U+0000 followed by its four digits.
std::string hideSurrogates(std::string_view json) {
    std::string out;
    for (size_t i = 0; i < json.size(); ++i) {
        if (json[i] != '\\' || i + 1 >= json.size()) {
            out += json[i];
            continue;
        }
        const std::string_view escape = json.substr(i, 6);
        if (escape.size() == 6 && escape[1] == 'u' && isHidden(escape.substr(2))) {
            out.append("\\u0000").append(escape.substr(2));
            i += 5;
        } else {
            out.append(json.substr(i, 2));
            ++i;
        }
    }
    return out;
}

// The units of a string whose surrogates were hidden.
BString textOf(const std::string& json) {
    const std::u16string hidden = decodeUtf8(json);
    std::u16string units;
    for (size_t i = 0; i < hidden.size(); ++i) {
        if (hidden[i] != 0 || i + 4 >= hidden.size()) {
            units += hidden[i];
            continue;
        }
        char16_t unit = 0;
        for (int digits = 0; digits < 4; ++digits) {
            unit = static_cast<char16_t>(unit * 16 + hexadecimalDigitValue(hidden[++i]));
        }
        units += unit;
    }
    return BString(units.data(), static_cast<int32_t>(units.size()));
}

// What a machine says during one run, as the members of a result.
class RunRecord final : public MachineObserver {
  public:
    void messageReported(const BString& message, int32_t line, int32_t column) override {
        if (!messages_.empty()) messages_ += ',';
        messages_ += "{\"text\":" + quoted(message) + ",\"line\":" + std::to_string(line) +
                     ",\"column\":" + std::to_string(column) + "}";
    }
    void linePrinted(const BString& text) override {
        if (!printed_.empty()) printed_ += ',';
        printed_ += quoted(text);
    }
    void clear() {
        messages_.clear();
        printed_.clear();
    }
    std::string members() const { return "\"messages\":[" + messages_ + "],\"printed\":[" + printed_ + "]"; }

  private:
    std::string messages_;
    std::string printed_;
};

// Completion and position come first: the conversions that follow may run script code.
std::string resultOf(JSKernel& machine, const Value& value, RunRecord& record) {
    int32_t line = 0;
    int32_t column = 0;
    machine.getPosition(line, column);
    std::string out = "{\"completion\":" + std::to_string(static_cast<int32_t>(machine.getCompletion())) +
                      ",\"line\":" + std::to_string(line) + ",\"column\":" + std::to_string(column);
    if (!value) return out + ",\"type\":\"null\",\"text\":null," + record.members() + "}";
    out += std::string(",\"type\":\"") + typeWord(value->valueType(&machine, nullptr)) + "\"";
    BString text;
    value->asString(text, &machine, nullptr);
    return out + ",\"text\":" + quoted(text) + "," + record.members() + "}";
}

std::string performRun(JSKernel& machine, const ordered_json& run, RunRecord& record) {
    record.clear();
    if (run.is_string()) {
        const BString text = textOf(run.get<std::string>());
        const Value value(machine.evaluateText(text, nullptr));
        return resultOf(machine, value, record);
    }
    if (run.is_object() && run.contains("stream") && run["stream"].is_array()) {
        BString units;
        for (const ordered_json& unit : run["stream"]) {
            units.append(static_cast<char16_t>(unit.is_number_integer() ? unit.get<int64_t>() : 0));
        }
        BStringInputStream stream(&units);
        const Value value(machine.evaluateStream(&stream, nullptr));
        return resultOf(machine, value, record);
    }
    if (run.is_object() && run.contains("reset")) {
        machine.setCompletion(JSCompletion::normal);
        return "{\"completion\":0}";
    }
    return "{\"error\":\"not a run\"}";
}

// What a case goes by is a text or a number.
std::string shownIdentifier(const ordered_json& identifier) {
    return identifier.is_string() ? quoted(textOf(identifier.get<std::string>())) : identifier.dump();
}

std::string performCase(const ordered_json& testCase) {
    RunRecord record;
    const Owned<ObservedKernel> machine(new ObservedKernel(&record));
    if (!machine) throw std::bad_alloc();
    std::string runs;
    for (const ordered_json& run : testCase["runs"]) {
        if (!runs.empty()) runs += ',';
        runs += performRun(*machine, run, record);
    }
    return "{\"id\":" + shownIdentifier(testCase["id"]) + ",\"runs\":[" + runs + "]}";
}

bool isTestCase(const ordered_json& line) {
    return line.is_object() && line.contains("id") && (line["id"].is_string() || line["id"].is_number()) &&
           line.contains("runs") && line["runs"].is_array();
}

}  // namespace

std::string answerBatchLine(std::string_view line, bool* isCase) {
    const ordered_json testCase = ordered_json::parse(hideSurrogates(line), nullptr, false);
    *isCase = isTestCase(testCase);
    return *isCase ? performCase(testCase) : "{\"error\":\"not a case\"}";
}

ExitStatus runBatch(LineReader& in, const ProgramOutput& output) {
    ExitStatus status = kFine;
    while (!output.results.isClosed()) {
        const std::optional<std::string> line = in.next();
        if (!line) break;
        if (line->find_first_not_of(" \t\r") == std::string::npos) continue;
        bool isCase = false;
        output.results.write(answerBatchLine(*line, &isCase) + '\n');
        output.results.flush();
        if (!isCase) status = kUnusable;
    }
    if (in.failure() == 0) return status;
    showFileMessage(output.messages, kStandardStream, std::strerror(in.failure()));
    return kUnusable;
}

CommandAction declareBatch(CLI::App& arguments) {
    arguments.footer(
        "Reads cases from standard input and writes a result for each, as soon as it is there:\n"
        "  {\"id\": \"a\", \"runs\": [\"1 + 1\"]}\n"
        "Each case has a machine of its own, on which its runs happen in turn. A run is a text, "
        "{\"stream\": [UNIT, ...]}\n"
        "or {\"reset\": true}. A line that is no case is answered with {\"error\": ...}, and the exit status "
        "is "
        "then 2.");
    return [](const ProgramOutput& output) {
        LineReader in(STDIN_FILENO);
        return runBatch(in, output);
    };
}

}  // namespace quorvelin::tool
