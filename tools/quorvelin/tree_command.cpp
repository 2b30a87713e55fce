#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "frontend/token.h"
#include "quorvelin/script.h"
#include "quorvelin/syntax_commands.h"
#include "quorvelin/text_encoding.h"
#include "quorvelin/tree_walk.h"

namespace quorvelin::tool {

namespace {

// One node a line, indented by its depth.
class OutlineWriter final : public TreeVisitor {
  public:
    explicit OutlineWriter(Output& output) : output_(output) {}

    void beginNode(const char* role, const JSNode& node) override {
        beginLine(role);
        const NodeShape& shape = node.shape();
        output_.write(shape.className);
        output_.write(" " + std::to_string(node.line) + ":" + std::to_string(node.column));
        for (int32_t i = 0; i < shape.fieldCount; ++i) writeValue(node, shape.fields[i]);
        output_.write('\n');
        ++depth_;
    }
    void endNode() override { --depth_; }

    void absentNode(const char* role) override {
        beginLine(role);
        output_.write("(absent)\n");
    }

    void beginList(const char* role, bool isEmpty) override {
        beginLine(nullptr);
        output_.write(role);
        output_.write(isEmpty ? " (empty)\n" : "\n");
        ++depth_;
    }
    void endList() override { --depth_; }

    void beginRecord(const Name* name) override {
        beginLine(nullptr);
        if (name == nullptr) {
            output_.write("case");
        } else {
            output_.write("variable ");
            writeQuoted(name->text());
        }
        output_.write('\n');
        ++depth_;
    }
    void endRecord() override { --depth_; }

    bool wantsMore() const override { return !output_.isClosed(); }

  private:
    // A long chain of operators is as deep a tree. Indenting it without a limit would take space that grows
    // with the square of its length, so deeper lines begin with the number of their level instead.
    static constexpr size_t kDeepestIndentation = 40;

    void beginLine(const char* role) {
        output_.write(std::string(2 * std::min(depth_, kDeepestIndentation), ' '));
        if (depth_ > kDeepestIndentation) output_.write("[" + std::to_string(depth_) + "] ");
        if (role != nullptr) {
            output_.write(role);
            output_.write(": ");
        }
    }

    void writeQuoted(const BString& text) { output_.write("\"" + shownOnOneLine(unitsOf(text)) + "\""); }

    void writeValue(const JSNode& node, const NodeField& field) {
        switch (field.type) {
            case FieldType::name:
                beginValue(field);
                writeQuoted((node.*field.identifier).text());
                break;
            case FieldType::text:
                beginValue(field);
                writeQuoted(node.*field.text);
                break;
            case FieldType::number: {
                beginValue(field);
                const int32_t number = node.*field.number;
                output_.write(std::to_string(number));
                const char* name = tokenKindName(number);
                if (*name != 0) output_.write(std::string(" (") + name + ")");
                break;
            }
            case FieldType::parameters: {
                beginValue(field);
                const ParameterRecord* first = (node.*field.parameters).first;
                if (first == nullptr) output_.write("(empty)");
                for (const ParameterRecord* record = first; record != nullptr; record = record->next) {
                    if (record != first) output_.write(", ");
                    writeQuoted(record->name.text());
                }
                break;
            }
            default:
                break;
        }
    }

    void beginValue(const NodeField& field) {
        output_.write(' ');
        output_.write(field.name);
        output_.write(' ');
    }

    Output& output_;
    size_t depth_ = 0;
};

// The tree as one JSON value: a node is an object with "class", "kind", "line", "column" and its fields, an
// absent child is null, a list an array. It is written piece by piece, as a tree may nest deeper than a
// library recurses.
class JsonWriter final : public TreeVisitor {
  public:
    explicit JsonWriter(Output& output) : output_(output) {}

    void beginNode(const char* role, const JSNode& node) override {
        const NodeShape& shape = node.shape();
        beginMember(role);
        output_.write('{');
        isFirst_ = true;
        writeMember("class", "\"" + std::string(shape.className) + "\"");
        writeMember("kind", std::to_string(node.kind));
        writeMember("line", std::to_string(node.line));
        writeMember("column", std::to_string(node.column));
        for (int32_t i = 0; i < shape.fieldCount; ++i) writeValue(node, shape.fields[i]);
    }
    void endNode() override { end('}'); }
    void absentNode(const char* role) override { writeMember(role, "null"); }
    void beginList(const char* role, bool) override {
        beginMember(role);
        output_.write('[');
        isFirst_ = true;
    }
    void endList() override { end(']'); }
    void beginRecord(const Name* name) override {
        beginMember(nullptr);
        output_.write('{');
        isFirst_ = true;
        if (name != nullptr) writeMember("name", jsonString(unitsOf(name->text())));
    }
    void endRecord() override { end('}'); }
    bool wantsMore() const override { return !output_.isClosed(); }

  private:
    void beginMember(const char* role) {
        if (!isFirst_) output_.write(',');
        isFirst_ = false;
        if (role != nullptr) output_.write("\"" + std::string(role) + "\":");
    }
    void writeMember(const char* role, const std::string& value) {
        beginMember(role);
        output_.write(value);
    }
    void end(char bracket) {
        output_.write(bracket);
        isFirst_ = false;
    }

    void writeValue(const JSNode& node, const NodeField& field) {
        switch (field.type) {
            case FieldType::name:
                writeMember(field.name, jsonString(unitsOf((node.*field.identifier).text())));
                break;
            case FieldType::text:
                writeMember(field.name, jsonString(unitsOf(node.*field.text)));
                break;
            case FieldType::number:
                writeMember(field.name, std::to_string(node.*field.number));
                break;
            case FieldType::parameters:
                beginList(field.name, false);
                for (const ParameterRecord* record = (node.*field.parameters).first; record != nullptr;
                     record = record->next) {
                    writeMember(nullptr, jsonString(unitsOf(record->name.text())));
                }
                endList();
                break;
            default:
                break;
        }
    }

    Output& output_;
    bool isFirst_ = true;
};

}  // namespace

ExitStatus showTree(const Input& input, TreeForm form, const ProgramOutput& output) {
    Script script;
    const ExitStatus status = openScript(input, &script, output.messages);
    if (status != kFine) return status;
    if (form == TreeForm::json) {
        JsonWriter writer(output.results);
        walkTree(script.root.get(), writer);
        output.results.write('\n');
    } else {
        OutlineWriter writer(output.results);
        walkTree(script.root.get(), writer);
    }
    return kFine;
}

CommandAction declareTree(CLI::App& arguments) {
    struct Values {
        std::string file;
        bool json = false;
    };
    const auto values = std::make_shared<Values>();
    arguments.add_option("FILE", values->file, kFileHelp)->required()->type_name("");
    arguments.add_flag("--json", values->json, "Write JSON, on one line and in ASCII");
    arguments.footer(
        "A node is shown with its class, its line and column as the engine counts them (0:0 in a saved "
        "tree), and\n"
        "its fields; its children stand below it.");
    return [values](const ProgramOutput& output) {
        const std::optional<Input> input = readInput(values->file, output.messages);
        return input ? showTree(*input, values->json ? TreeForm::json : TreeForm::outline, output)
                     : kUnusable;
    };
}

}  // namespace quorvelin::tool
