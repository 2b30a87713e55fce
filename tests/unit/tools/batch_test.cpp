// The batch protocol, answer by answer, and as a conversation with the built program.
#include "quorvelin/batch_command.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/partner_process.h"
#include "support/process.h"

namespace quorvelin::tool {
namespace {

using support::PartnerProcess;

std::string answer(std::string_view line) {
    bool isCase = false;
    std::string text = answerBatchLine(line, &isCase);
    EXPECT_TRUE(isCase) << line;
    return text;
}

// The results of the runs of one case.
nlohmann::json results(std::string_view runs) {
    const nlohmann::json all =
        nlohmann::json::parse(answer("{\"id\":\"a\",\"runs\":[" + std::string(runs) + "]}"));
    EXPECT_EQ(all["id"], "a");
    return all["runs"];
}

TEST(Batch, WholeAnswer) {
    EXPECT_EQ(
        answer(R"({"id": "a-1", "runs": ["x = 1; console.println('p'); Array = 2; 'r'"]})"),
        R"({"id":"a-1","runs":[{"completion":0,"line":0,"column":0,"type":"string","text":"r","messages":)"
        R"([{"text":"not correct use prototype","line":1,"column":38}],"printed":["p"]}]})");
}

TEST(Batch, TypesOfResults) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "null"},          {"void 0", "null"},
        {"nope", "undefined"}, {"var v; v", "undefined"},
        {"1", "number"},       {"'a'", "string"},
        {"1 == 1", "boolean"}, {"[1]", "object"},
        {"x = [1]", "object"}, {"new Function('1')", "function"},
    };
    for (const auto& [text, type] : cases) {
        const nlohmann::json result = results('"' + std::string(text) + '"')[0];
        EXPECT_EQ(result["type"], type) << text;
        EXPECT_EQ(result["text"].is_null(), std::string(type) == "null") << text;
    }
}

TEST(Batch, RunsOfACaseShareAMachineAndCasesDoNot) {
    EXPECT_EQ(results(R"("x = 1", "x")")[1]["text"], "1");
    EXPECT_EQ(results(R"("x")")[0]["type"], "undefined");
}

TEST(Batch, CompletionStaysUntilReset) {
    const nlohmann::json all = results(R"("x = 1; return 5; x = 2", "x = 3", {"reset": true}, "x")");
    EXPECT_EQ(all[0]["completion"], 3);
    EXPECT_EQ(all[0]["type"], "null");
    EXPECT_EQ(all[1]["completion"], 3);
    EXPECT_EQ(all[2], nlohmann::json({{"completion", 0}}));
    EXPECT_EQ(all[3]["text"], "1");
    EXPECT_EQ(results(R"("break;", {"reset": true}, "continue;")")[0]["completion"], 1);
    EXPECT_EQ(results(R"("break;", {"reset": true}, "continue;")")[2]["completion"], 2);
}

TEST(Batch, StreamOfUnits) {
    const nlohmann::json all =
        results(R"({"stream": [34, 97, 34]}, {"stream": [1, 28, 29]}, {"stream": []})");
    EXPECT_EQ(all[0]["text"], "a");
    // A saved tree: an empty list.
    EXPECT_EQ(all[1]["type"], "null");
    EXPECT_TRUE(all[1]["messages"].empty());
    EXPECT_EQ(all[2]["type"], "null");
    // An unpaired surrogate between quotes.
    EXPECT_NE(answer(R"({"id":"a","runs":[{"stream":[34,55296,34]}]})").find(R"("text":"\uD800")"),
              std::string::npos);
}

TEST(Batch, UnitsAreEscapedByNumber) {
    const std::string text =
        answer(R"({"id":"i","runs":["'\ud800\\n\\t~\\x7f\u00e4\ud83d\ude00\udc00/\\\"\\\\'"]})");
    EXPECT_NE(text.find(R"("text":"\uD800\u000A\u0009~\u007F\u00E4\uD83D\uDE00\uDC00/\"\\")"),
              std::string::npos)
        << text;
}

TEST(Batch, UnitsOfATextAreTakenAsTheyStand) {
    EXPECT_EQ(results(R"("'\ud800'.length")")[0]["text"], "1");
    EXPECT_EQ(results(R"("'\uD83D\uDE00'.length")")[0]["text"], "2");
    // An escaped backslash before it makes it no escape.
    EXPECT_EQ(results(R"("'a\\\\ud800'.length")")[0]["text"], "7");
    EXPECT_EQ(results(R"("'\\u'")")[0]["text"], "u");
    // A U+0000 ends the text.
    EXPECT_EQ(results(R"("1\u00002")")[0]["text"], "1");
    // Four digits behind it are the text's own.
    EXPECT_EQ(results(R"("'\ud8001234'.length")")[0]["text"], "5");
}

TEST(Batch, IdentifierComesBackAsItWas) {
    EXPECT_EQ(answer(R"({"id":"\ud800\u0000é\n","runs":[]})"),
              R"({"id":"\uD800\u0000\u00E9\u000A","runs":[]})");
    EXPECT_EQ(answer(R"({"id":7,"runs":[]})"), R"({"id":7,"runs":[]})");
}

TEST(Batch, MessagesAndPrintsOfTheConversionCount) {
    const nlohmann::json result =
        results(R"("a = [1]; a.join = new Function('console.println(5); Array = 1; return 7;'); a")")[0];
    EXPECT_EQ(result["text"], "7");
    EXPECT_EQ(result["printed"], nlohmann::json({"5"}));
    EXPECT_EQ(result["messages"].size(), 1u);
    // The position was read before.
    EXPECT_EQ(result["line"], 0);
}

TEST(Batch, LineThatIsNoCase) {
    for (const char* line :
         {"{", "[]", "\"a\"", "{}", R"({"id":"a"})", R"({"runs":[]})", R"({"id":"a","runs":"x"})",
          R"({"id":{},"runs":[]})", R"({"id":"\ud8zz","runs":[]})", "\xFF", "nul\0l"}) {
        bool isCase = true;
        EXPECT_EQ(answerBatchLine(line, &isCase), R"({"error":"not a case"})") << line;
        EXPECT_FALSE(isCase) << line;
    }
}

TEST(Batch, RunThatIsNone) {
    const nlohmann::json all = results(R"(5, "1", null, {"stream": 3})");
    EXPECT_EQ(all[0], nlohmann::json({{"error", "not a run"}}));
    EXPECT_EQ(all[1]["text"], "1");
    EXPECT_TRUE(all[2].contains("error"));
    EXPECT_TRUE(all[3].contains("error"));
}

TEST(Batch, DeepJson) {
    bool isCase = true;
    const std::string deep(1000000, '[');
    answerBatchLine(deep, &isCase);
    EXPECT_FALSE(isCase);
    EXPECT_TRUE(results("\"1\", " + deep + std::string(1000000, ']'))[1].contains("error"));
}

// ---- the program ----

TEST(BatchProgram, EveryLineIsAnsweredAtOnce) {
    PartnerProcess program(QUORVELIN_PROGRAM_FILE, {"batch"}, PartnerProcess::Link::pipes);
    for (int i = 0; i < 3; ++i) {
        const std::string number = std::to_string(i);
        program.write("{\"id\":" + number + ",\"runs\":[\"" + number + " + 1\"]}\n");
        const std::string line = program.readUntil("\n");
        EXPECT_EQ(nlohmann::json::parse(line)["runs"][0]["text"], std::to_string(i + 1)) << line;
    }
    program.closeInput();
    EXPECT_EQ(program.readUntil("\n"), "");
    EXPECT_EQ(program.wait(), 0);
}

TEST(BatchProgram, BrokenLineIsAnsweredAndTheNextOneToo) {
    const support::ProcessResult result =
        support::runProcess(QUORVELIN_PROGRAM_FILE, {"batch"}, "{broken\n\n \r\n{\"id\":\"a\",\"runs\":[]}");
    EXPECT_EQ(result.output, "{\"error\":\"not a case\"}\n{\"id\":\"a\",\"runs\":[]}\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 2);
}

TEST(BatchProgram, NoInput) {
    const support::ProcessResult result = support::runProcess(QUORVELIN_PROGRAM_FILE, {"batch"}, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
}

}  // namespace
}  // namespace quorvelin::tool
