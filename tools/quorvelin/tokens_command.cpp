#include <CLI/CLI.hpp>
#include <memory>

#include "foundation/stream.h"
#include "frontend/tokenizer.h"
#include "quorvelin/diagnostics.h"
#include "quorvelin/script.h"
#include "quorvelin/syntax_commands.h"
#include "quorvelin/text_encoding.h"

namespace quorvelin::tool {

namespace {

void showErrorToken(Output& messages, const Input& input, const SourceText& source,
                    const JSTokenizer& tokenizer) {
    const JSErrorNode error(tokenizer.line(), tokenizer.column(), tokenizer.kind(), tokenizer.text());
    showSyntaxError(messages, input.name, source, error);
}

}  // namespace

ExitStatus showTokens(const Input& input, const ProgramOutput& output) {
    SourceText source;
    const ExitStatus decoded = decodeScript(input, &source, output.messages);
    if (decoded != kFine) return decoded;
    if (source.isSavedTree()) {
        showFileMessage(output.messages, input.name, "is a saved tree, which has no tokens");
        return kUnusable;
    }

    BStringInputStream stream(&source.text());
    JSTokenizer tokenizer(&stream);
    ExitStatus status = kFine;
    int32_t kind = JSTT_NONE;
    while (kind != JSTT_EOF && !output.results.isClosed()) {
        kind = tokenizer.nextToken(false);
        output.results.write(std::to_string(tokenizer.line()) + "\t" + std::to_string(tokenizer.column()) +
                             "\t" + tokenKindName(kind) + "\t");
        // At the end the tokenizer still holds the text of the token before.
        if (kind != JSTT_EOF) output.results.write(shownOnOneLine(unitsOf(tokenizer.text())));
        output.results.write('\n');
        if (kind >= kFirstErrorKind && kind <= kLastErrorKind) {
            status = kScriptError;
            showErrorToken(output.messages, input, source, tokenizer);
        }
    }
    return status;
}

CommandAction declareTokens(CLI::App& arguments) {
    const auto file = std::make_shared<std::string>();
    arguments.add_option("FILE", *file, kFileHelp)->required()->type_name("");
    arguments.footer(
        "A line holds line, column, kind and text, separated by tabs; in the text \\n stands for a line "
        "feed, and\n"
        "other control characters and the backslash are escaped likewise. Line and column are those that the "
        "engine\n"
        "counts. What a regular-expression literal is only the parser knows: here its parts are tokens like "
        "others.");
    return [file](const ProgramOutput& output) {
        const std::optional<Input> input = readInput(*file, output.messages);
        return input ? showTokens(*input, output) : kUnusable;
    };
}

}  // namespace quorvelin::tool
