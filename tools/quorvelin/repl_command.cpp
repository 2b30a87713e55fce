#include "quorvelin/repl_command.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstring>

#include "foundation/stream.h"
#include "frontend/parser.h"
#include "frontend/tokenizer.h"
#include "quorvelin/files.h"
#include "quorvelin/line_editor.h"
#include "quorvelin/line_reader.h"
#include "quorvelin/script_session.h"
#include "quorvelin/text_encoding.h"

namespace quorvelin::tool {

namespace {

bool hasOpenBrackets(const BString& text) {
    BStringInputStream stream(&text);
    JSTokenizer tokenizer(&stream);
    int64_t depth = 0;
    for (int32_t kind = tokenizer.nextToken(false); kind != JSTT_EOF; kind = tokenizer.nextToken(false)) {
        // No further line mends these.
        if (kind >= kFirstErrorKind && kind <= kLastErrorKind) return false;
        if (kind != JSTT_PARENTHESES) continue;
        const bool opens = std::u16string_view(u"([{").find(tokenizer.text()[0]) != std::u16string_view::npos;
        depth += opens ? 1 : -1;
        if (depth < 0) return false;
    }
    return depth > 0;
}

bool canBeParsed(const BString& text) {
    BStringInputStream stream(&text);
    JSParser parser(&stream);
    const Owned<JSNode> root(parser.parseProgram());
    return root && root->kind != kErrorKind;
}

ExitStatus converseAtTerminal(const ProgramOutput& output) {
    LineEditor editor;
    std::string input;
    converse(
        [&](bool isFirst) {
            if (isFirst && !input.empty()) editor.remember(input);
            if (isFirst) input.clear();
            std::optional<std::string> line = editor.next(isFirst ? "> " : "... ");
            if (line) input += isFirst ? *line : '\n' + *line;
            // The end of input leaves the cursor behind the prompt.
            if (!line) output.results.write('\n');
            return line;
        },
        output);
    return kFine;
}

ExitStatus conversePlainly(const ProgramOutput& output) {
    LineReader reader(STDIN_FILENO);
    converse([&](bool) { return reader.next(); }, output);
    if (reader.failure() == 0) return kFine;
    showFileMessage(output.messages, kStandardStream, std::strerror(reader.failure()));
    return kUnusable;
}

}  // namespace

bool isIncomplete(const std::string& input) {
    const std::optional<SourceText> source = SourceText::decode(input);
    return source && !source->isSavedTree() && hasOpenBrackets(source->text()) &&
           !canBeParsed(source->text());
}

void converse(const LineSource& nextLine, const ProgramOutput& output) {
    ScriptSession session(output);
    int number = 0;
    while (!output.results.isClosed()) {
        std::optional<std::string> input = nextLine(true);
        if (!input) return;
        while (isIncomplete(*input)) {
            const std::optional<std::string> line = nextLine(false);
            if (!line) break;
            *input += '\n' + *line;
        }
        Value value;
        const std::string name = "(input " + std::to_string(++number) + ")";
        if (session.addAndRun({name, *input}, &value) == kFine) session.showValue(value, false);
        output.results.flush();
        output.messages.flush();
    }
}

CommandAction declareRepl(CLI::App& arguments) {
    arguments.footer(
        "Each input is run on the same machine and its result shown, unless it is undefined. An input whose "
        "brackets\n"
        "are open goes on with the next line. At a terminal lines can be edited and earlier ones called "
        "back; "
        "Ctrl-D\n"
        "ends it. Otherwise lines are read from standard input without prompts.");
    return [](const ProgramOutput& output) {
        const bool atTerminal = ::isatty(STDIN_FILENO) != 0 && ::isatty(STDOUT_FILENO) != 0;
        return atTerminal ? converseAtTerminal(output) : conversePlainly(output);
    };
}

}  // namespace quorvelin::tool
