#include "quorvelin/diagnostics.h"

#include <gtest/gtest.h>

namespace quorvelin::tool {
namespace {

std::string shown(std::string_view script, int32_t line, int32_t column,
                  std::u16string_view message = u"reason") {
    std::string text;
    Output output(&text);
    showDiagnostic(output, "file.js", *SourceText::decode(script), line, column, message);
    return text;
}

TEST(Diagnostics, PlaceMessageSourceLineAndMark) {
    EXPECT_EQ(shown("x y;", 1, 5), "file.js:1:5: reason\nx y;\n   ^\n");
    EXPECT_EQ(shown("a\nx y;", 2, 5), "file.js:2:5: reason\nx y;\n   ^\n");
}

TEST(Diagnostics, TabsStayInFrontOfTheMark) {
    EXPECT_EQ(shown("\tx\ty;", 1, 17), "file.js:1:17: reason\n\tx\ty;\n\t \t^\n");
}

TEST(Diagnostics, CharactersOutsideTheBasicPlaneAreOneWide) {
    EXPECT_EQ(shown("'\xF0\x9F\x98\x80' b", 1, 7), "file.js:1:7: reason\n'\xF0\x9F\x98\x80' b\n    ^\n");
}

TEST(Diagnostics, ControlCharactersDoNotReachTheTerminal) {
    EXPECT_EQ(shown("a\x1B[2J b", 1, 2, u"\u001Bc\nd"), "file.js:1:2: \\u001Bc\\nd\na\xEF\xBF\xBD[2J b\n^\n");
}

TEST(Diagnostics, LongLineIsCutAroundThePlace) {
    const std::string script = std::string(1000, 'a') + "#" + std::string(1000, 'b');
    const std::string text = shown(script, 1, 1002);
    EXPECT_EQ(text, "file.js:1:1002: reason\n..." + std::string(120, 'a') + "#" + std::string(119, 'b') +
                        "...\n" + std::string(123, ' ') + "^\n");
    EXPECT_EQ(shown(script, 1, 2), "file.js:1:2: reason\n" + std::string(240, 'a') + "...\n^\n");
    EXPECT_EQ(shown(script, 1, 2002),
              "file.js:1:2002: reason\n..." + std::string(240, 'b') + "\n" + std::string(242, ' ') + "^\n");
}

TEST(Diagnostics, WithoutPositionThereIsNoSourceLine) {
    EXPECT_EQ(shown("a", 0, 0), "file.js: reason\n");
    EXPECT_EQ(shown("\x01\x1C\x1D", 1, 1), "file.js: reason\n");
}

TEST(Diagnostics, SyntaxErrorShowsItsReasonOnce) {
    std::string text;
    Output output(&text);
    const JSErrorNode error(1, 5, u"need ;");
    showSyntaxError(output, "-", *SourceText::decode("x y;"), error);
    EXPECT_EQ(text, "-:1:5: need ;\nx y;\n   ^\n");
}

}  // namespace
}  // namespace quorvelin::tool
