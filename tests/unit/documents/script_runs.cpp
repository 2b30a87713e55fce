#include "documents/script_runs.h"

#include <array>
#include <optional>

#include "machine/kernel.h"
#include "stdlib/console.h"
#include "support/script_text.h"

namespace quorvelin::documents {
namespace {

class AccountConsole final : public JSConsole {
  public:
    explicit AccountConsole(Account* account) : account_(account) {}
    void println(const BString& text) override {
        const std::string printed = support::ascii(text);
        if (printed.empty()) account_->push_back("->");
        for (const std::string& line : linesOf(printed))
            account_->push_back(line.empty() ? "->" : "-> " + line);
    }

  private:
    Account* account_;
};

class AccountMachine final : public JSKernel {
  public:
    explicit AccountMachine(Account* account) : account_(account) {}
    void reportError(const BString& message) override { account_->push_back("! " + support::ascii(message)); }
    JSObject* makeConsole(JSContext*, JSObject*) override { return new AccountConsole(account_); }

  private:
    Account* account_;
};

// What the comment of a line expects, if it has one of the two forms.
std::optional<std::string> expectationOf(std::string_view line) {
    for (const std::string_view mark : {"// ->", "// ! "}) {
        const size_t at = line.find(mark);
        if (at == std::string_view::npos) continue;
        std::string_view expected = line.substr(at + 3);
        while (!expected.empty() && expected.back() == ' ') expected.remove_suffix(1);
        return std::string(expected);
    }
    return std::nullopt;
}

constexpr std::string_view kFence = "```";
constexpr std::array<std::string_view, 5> kNotRun = {"text", "cpp", "c", "cmake", "sh"};

bool isKnown(std::string_view kind) {
    if (kind == "js") return true;
    for (const std::string_view known : kNotRun) {
        if (kind == known) return true;
    }
    return false;
}

}  // namespace

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        lines.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return lines;
}

Account accountOf(std::string_view script) {
    Account account;
    std::u16string units;
    for (const char character : script) {
        if (static_cast<unsigned char>(character) >= 0x80) return {"the script is not ASCII"};
        units.push_back(static_cast<char16_t>(character));
    }
    // Lines lose blanks at their ends in documents, so they do here.
    {
        const Owned<AccountMachine> machine(new AccountMachine(&account));
        const Value result(machine->evaluateText(support::textOf(units), nullptr));
    }
    for (std::string& line : account) {
        while (!line.empty() && line.back() == ' ') line.pop_back();
    }
    return account;
}

DocumentBlocks blocksOf(std::string_view document) {
    DocumentBlocks blocks;
    Example example;
    std::optional<std::string> kind;
    int number = 0;
    for (const std::string& line : linesOf(document)) {
        ++number;
        if (!line.starts_with(kFence)) {
            if (kind != "js") continue;
            example.script += line + "\n";
            if (std::optional<std::string> expected = expectationOf(line)) {
                example.expected.push_back(std::move(*expected));
            }
        } else if (!kind) {
            kind = line.substr(kFence.size());
            example = {number, "", {}};
            if (!isKnown(*kind)) {
                blocks.faults.push_back("line " + std::to_string(number) + ": no kind of block: '" + *kind +
                                        "'");
            }
        } else {
            if (kind == "js") blocks.examples.push_back(std::move(example));
            kind.reset();
        }
    }
    if (kind) blocks.faults.push_back("line " + std::to_string(example.line) + ": the block has no end");
    for (const Example& block : blocks.examples) {
        if (block.expected.empty()) {
            blocks.faults.push_back("line " + std::to_string(block.line) + ": the example expects nothing");
        }
    }
    return blocks;
}

std::string difference(const Account& expected, const Account& said) {
    if (expected == said) return "";
    size_t same = 0;
    while (same < expected.size() && same < said.size() && expected[same] == said[same]) ++same;
    const auto entry = [same](const Account& account) {
        return same < account.size() ? "\"" + account[same] + "\"" : std::string("nothing more");
    };
    return "after " + std::to_string(same) + " as expected: expected " + entry(expected) + ", came " +
           entry(said);
}

}  // namespace quorvelin::documents
