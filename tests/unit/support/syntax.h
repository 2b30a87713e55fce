// Shortcuts for the tests of the front end: from script text to tokens, trees, source text and saved trees,
// in forms that are easy to write down in a test and to read in its failure message.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/nodes.h"

namespace quorvelin::support {

// All tokens up to the end of the text, each as its kind without the prefix and its text: "IDENFICATOR a, INT
// 1". A line end shows as "\n".
std::string tokens(std::u16string_view script, bool skipLineEnds = false);

// The same with line and column in front of each token, the end of the text included: "1:3 IDENFICATOR a, 1:3
// EOF".
std::string tokensWithPositions(std::u16string_view script, bool skipLineEnds = false);

// The tree of a script; the root is an error node when it has a syntax error.
Owned<JSNode> parse(std::u16string_view script);
Owned<JSNode> parseText(const BString& script);

// The statement at the front of a script's tree, as most tests have just one; null when there is none.
const JSNode* firstStatement(const JSNode* root);

// Source text of a whole script, and of its first statement alone. A syntax error gives its message.
std::string regenerated(std::u16string_view script);
std::string statement(std::u16string_view script);

// A tree as nested parentheses: class name without JS and Node, then the fields in order of declaration. An
// absent child is "-", entries of a list stand in brackets. With positions, each class name carries
// "@line:column".
std::string outline(const JSNode* node, bool positions = false);

// The outline of a script's first statement, or the message of its syntax error.
std::string outlineOf(std::u16string_view script, bool positions = false);

// The message of a script's syntax error, "" when it has none.
std::string syntaxError(std::u16string_view script);

// The bytes of a saved tree, marker included, and the tree in such bytes.
std::vector<uint8_t> saved(const JSNode* root);
Owned<JSNode> loaded(const std::vector<uint8_t>& bytes);

}  // namespace quorvelin::support
