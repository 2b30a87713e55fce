#include "quorvelin/batch_command.h"

#include <cstring>
#include <istream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>

#include "foundation/character.h"
#include "foundation/stream.h"
#include "quorvelin/observed_kernel.h"
#include "quorvelin/text_encoding.h"

namespace quorvelin::tool {

namespace {

using nlohmann::ordered_json;

std::string quoted(const BString& text) { return jsonString(unitsOf(text)); }

// JSON for the parser of the library, which takes no lone surrogates: each escape of a surrogate, and of U+0000, becomes
// U+0000 followed by its four digits.
std::string hideSurrogates(std::string_view json) {
    std::string out;
    for (size_t i = 0; i < json.size(); ++i) {
        if (json[i] != '\\' || i + 1 >= json.size()) {
            out += json[i];
            continue;
        }
        const std::string_view escape = json.substr(i, 6);
        const bool hidden = escape.size() == 6 && escape[1] == 'u' &&
                            (escape.substr(2) == "0000" || ((escape[2] == 'd' || escape[2] == 'D') &&
                                                            std::strchr("89abcdefABCDEF", escape[3]) != nullptr));
        if (hidden) {
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

const char* typeWord(JSValueType type) {
    static constexpr const char* kWords[] = {"undefined", "string",   "number",    "boolean",
                                             "object",    "function", "expression"};
    const auto index = static_cast<uint32_t>(type);
    return index < std::size(kWords) ? kWords[index] : "undefined";
}

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

std::string performCase(const ordered_json& testCase) {
    RunRecord record;
    const Owned<ObservedKernel> machine(new ObservedKernel(&record));
    std::string runs;
    for (const ordered_json& run : testCase["runs"]) {
        if (!runs.empty()) runs += ',';
        runs += performRun(*machine, run, record);
    }
    return "{\"id\":" + testCase["id"].dump(-1, ' ', true) + ",\"runs\":[" + runs + "]}";
}

}  // namespace

bool runBatch(std::istream& in, std::ostream& out) {
    bool allCases = true;
    for (std::string line; std::getline(in, line);) {
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        const ordered_json testCase = ordered_json::parse(hideSurrogates(line), nullptr, false);
        if (!testCase.is_object() || !testCase.contains("id") || !testCase.contains("runs") ||
            !testCase["runs"].is_array()) {
            out << "{\"error\":\"not a case\"}" << std::endl;
            allCases = false;
            continue;
        }
        out << performCase(testCase) << std::endl;
    }
    return allCases;
}

}  // namespace quorvelin::tool
