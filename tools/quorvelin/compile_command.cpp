#include <CLI/CLI.hpp>
#include <memory>

#include "frontend/tree_writer.h"
#include "quorvelin/diagnostics.h"
#include "quorvelin/script.h"
#include "quorvelin/syntax_commands.h"
#include "quorvelin/text_encoding.h"
#include "quorvelin/tree_walk.h"

namespace quorvelin::tool {

namespace {

// Warns of what is in a tree and has no place in its saved form.
class LossWarnings final : public TreeVisitor {
  public:
    LossWarnings(const Script& script, Output& messages) : script_(script), messages_(messages) {}

    void beginNode(const char*, const JSNode& node) override {
        if (node.kind == kLabelKind) {
            const JSLabelNode& label = static_cast<const JSLabelNode&>(node);
            if (label.statement) {
                warn(node, u"the statement of label \"" + std::u16string(unitsOf(label.label.text())) +
                               u"\" is lost: a saved tree has no place for it");
            }
        }
        const NodeShape& shape = node.shape();
        for (int32_t i = 0; i < shape.fieldCount; ++i) {
            const NodeField& field = shape.fields[i];
            if (field.type != FieldType::text) continue;
            if (unitsOf(node.*field.text).find(u'\0') != std::u16string_view::npos) {
                warn(node, u"a text is cut short at its U+0000: in a saved tree that ends a text");
            }
        }
    }

  private:
    void warn(const JSNode& node, const std::u16string& loss) {
        showDiagnostic(messages_, script_.name, script_.source, node.line, node.column, u"warning: " + loss);
    }

    const Script& script_;
    Output& messages_;
};

}  // namespace

ExitStatus compileScript(const Input& input, const std::string& target, const ProgramOutput& output) {
    Script script;
    const ExitStatus status = openScript(input, &script, output.messages);
    if (status != kFine) return status;
    LossWarnings warnings(script, output.messages);
    walkTree(script.root.get(), warnings);

    SavedTree tree;
    if (!tree.write(script.root.get())) {
        showFileMessage(output.messages, input.name, "Out of memory");
        return kUnusable;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(tree.bytes()), tree.size());
    return writeFile(target, bytes, output) ? kFine : kUnusable;
}

CommandAction declareCompile(CLI::App& arguments) {
    struct Values {
        std::string file;
        std::string target;
    };
    const auto values = std::make_shared<Values>();
    arguments.add_option("FILE", values->file, kFileHelp)->required()->type_name("");
    arguments.add_option("-o,--output", values->target, "The file to write; - is standard output")
        ->required()
        ->type_name("OUT");
    arguments.footer(
        "The other commands take the saved tree in place of the script. It holds no positions, no statements "
        "of\n"
        "labels, and no text beyond a U+0000; what is lost is warned of. A script with an error is not "
        "written.");
    return [values](const ProgramOutput& output) {
        const std::optional<Input> input = readInput(values->file, output.messages);
        return input ? compileScript(*input, values->target, output) : kUnusable;
    };
}

}  // namespace quorvelin::tool
