// Ten thousand damaged scripts and saved trees through the commands: whatever the bytes are, each command
// ends with a status of its own and a message where there is an error. Memory errors are for the sanitizers
// to find.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <vector>

#include <nlohmann/json.hpp>

#include "quorvelin/syntax_commands.h"
#include "support/process.h"

namespace quorvelin::tool {
namespace {

constexpr int kShards = 10;
constexpr int kMutantsPerShard = 1000;

std::vector<std::string> startingPoints() {
    std::vector<std::string> texts;
    const support::TemporaryFolder folder;
    const std::string tree = folder.file("tree");
    std::string ignored;
    Output nowhere(&ignored);
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(QUORVELIN_TESTS_FOLDER) / "scripts")) {
        const std::string text = support::readFile(entry.path().string());
        EXPECT_EQ(compileScript({"script", text}, tree, {nowhere, nowhere}), kFine) << entry.path();
        texts.push_back(text);
        texts.push_back(support::readFile(tree));
    }
    std::sort(texts.begin(), texts.end());  // folders have no order of their own
    return texts;
}

// Pieces that the scanner or a decoder looks at closely.
const std::string_view kPieces[] = {"(",
                                    ")",
                                    "[",
                                    "]",
                                    "{",
                                    "}",
                                    ";",
                                    ",",
                                    "\"",
                                    "'",
                                    "/",
                                    "/*",
                                    "*/",
                                    "//",
                                    "\\",
                                    "\\x",
                                    "\\0",
                                    "\n",
                                    "\r\n",
                                    "\t",
                                    "0x",
                                    "1e",
                                    ".",
                                    "..",
                                    "++",
                                    "--",
                                    ">>>=",
                                    "&&",
                                    "? :",
                                    "case",
                                    "else ",
                                    "var ",
                                    "function",
                                    "switch",
                                    "for(",
                                    "do ",
                                    "while(",
                                    "break ",
                                    "return",
                                    "new ",
                                    "a:",
                                    "#",
                                    "\xC3",
                                    "\xFF",
                                    "\xED\xA0\x80",
                                    "\xF0\x9F\x98\x80",
                                    "\xEF\xBF\xBF"};

class Mutator {
  public:
    explicit Mutator(unsigned seed) : random_(seed) {}

    std::string mutant(const std::vector<std::string>& texts) {
        std::string text = texts[below(texts.size())];
        const size_t changes = 1 + below(8);
        for (size_t i = 0; i < changes; ++i) change(text, texts);
        return text;
    }

  private:
    // Not a distribution of the library: those differ between implementations.
    size_t below(size_t limit) { return limit == 0 ? 0 : random_() % limit; }

    void change(std::string& text, const std::vector<std::string>& texts) {
        const size_t place = below(text.size() + 1);
        const size_t length = std::min(text.size() - place, 1 + below(30));
        switch (below(8)) {
            case 0:
                text.erase(place, length);
                break;
            case 1:
                text.insert(place, text.substr(place, length));
                break;
            case 2:
                text.insert(place, 1, static_cast<char>(below(256)));
                break;
            case 3:
                if (place < text.size()) text[place] = static_cast<char>(below(256));
                break;
            case 4:
                if (place < text.size()) text[place] = static_cast<char>(text[place] ^ 1 << below(8));
                break;
            case 5:
                text.resize(place);
                break;
            case 6: {
                const std::string& other = texts[below(texts.size())];
                text.insert(place, other.substr(below(other.size() + 1), 1 + below(60)));
                break;
            }
            default:
                text.insert(place, kPieces[below(std::size(kPieces))]);
                break;
        }
    }

    std::mt19937 random_;
};

// Runs a command and holds it to its contract.
template <typename CommandFunction, typename... Arguments>
ExitStatus tryCommand(CommandFunction command, const std::string& bytes, std::string& resultText,
                      Arguments... arguments) {
    resultText.clear();
    std::string messageText;
    Output results(&resultText);
    Output messages(&messageText);
    const ExitStatus status = command(Input{"mutant", bytes}, arguments..., ProgramOutput{results, messages});
    EXPECT_EQ(status == kFine, messageText.empty()) << messageText;
    if (status != kFine) {
        EXPECT_EQ(messageText.compare(0, 7, "mutant:"), 0) << messageText;
    }
    return status;
}

// The library refuses unpaired surrogates, which an escape may well hold: here they stand for other
// characters.
bool isJson(std::string text) {
    for (size_t place = 0; (place = text.find("\\uD", place)) != std::string::npos; ++place)
        text[place + 2] = '1';
    return nlohmann::json::accept(text);
}

class MutatedFiles : public testing::TestWithParam<int> {};

TEST_P(MutatedFiles, EveryCommandAnswers) {
    const std::vector<std::string> texts = startingPoints();
    Mutator mutator(static_cast<unsigned>(GetParam()));
    int errors = 0;
    for (int i = 0; i < kMutantsPerShard; ++i) {
        const std::string bytes = mutator.mutant(texts);
        std::string results;
        tryCommand(showTokens, bytes, results);
        const ExitStatus status = tryCommand(checkScript, bytes, results);
        EXPECT_EQ(results, "");
        EXPECT_EQ(tryCommand(showTree, bytes, results, TreeForm::outline), status);
        EXPECT_EQ(tryCommand(formatScript, bytes, results), status);
        EXPECT_EQ(tryCommand(showTree, bytes, results, TreeForm::json), status);
        EXPECT_EQ(isJson(results), status == kFine);
        if (status != kFine) ++errors;
        if (HasFailure()) FAIL() << "shard " << GetParam() << ", mutant " << i;
    }
    // The mutants are worth something only when some are scripts and some are not.
    EXPECT_GT(errors, kMutantsPerShard / 10);
    EXPECT_LT(errors, kMutantsPerShard * 9 / 10);
}

INSTANTIATE_TEST_SUITE_P(Shards, MutatedFiles, testing::Range(0, kShards));

}  // namespace
}  // namespace quorvelin::tool
