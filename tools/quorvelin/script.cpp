#include "quorvelin/script.h"

#include "foundation/stream.h"
#include "frontend/parser.h"
#include "frontend/tree_reader.h"
#include "quorvelin/diagnostics.h"
#include "quorvelin/text_encoding.h"
#include "quorvelin/tree_walk.h"

namespace quorvelin::tool {

namespace {

// The first error node of a tree. In a parsed tree it can only be the root; a saved tree that nests too
// deeply has one where the reader gave up.
class ErrorSearch final : public TreeVisitor {
  public:
    void beginNode(const char*, const JSNode& node) override {
        if (found == nullptr && node.kind == kErrorKind) found = static_cast<const JSErrorNode*>(&node);
    }
    bool wantsMore() const override { return found == nullptr; }

    const JSErrorNode* found = nullptr;
};

Owned<JSNode> readTree(const SourceText& source) {
    BStringInputStream stream(&source.text());
    if (source.isSavedTree()) {
        stream.readChar();
        return Owned<JSNode>(readNode(&stream));
    }
    JSParser parser(&stream);
    return Owned<JSNode>(parser.parseProgram());
}

}  // namespace

ExitStatus decodeScript(const Input& input, SourceText* source, Output& messages) {
    std::optional<SourceText> decoded = SourceText::decode(input.bytes);
    if (!decoded) {
        showFileMessage(messages, input.name, "the text is too long");
        return kUnusable;
    }
    *source = std::move(*decoded);
    return kFine;
}

ExitStatus openScript(const Input& input, Script* script, Output& messages) {
    script->name = input.name;
    const ExitStatus decoded = decodeScript(input, &script->source, messages);
    if (decoded != kFine) return decoded;

    script->root = readTree(script->source);
    if (!script->root) {
        showFileMessage(
            messages, input.name,
            script->source.isSavedTree() ? "the saved tree is empty or damaged" : "Out of memory");
        return kScriptError;
    }
    ErrorSearch errors;
    walkTree(script->root.get(), errors);
    if (errors.found == nullptr) return kFine;
    showSyntaxError(messages, script->name, script->source, *errors.found);
    return kScriptError;
}

}  // namespace quorvelin::tool
