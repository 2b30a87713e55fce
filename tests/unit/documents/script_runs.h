// Runs scripts that come with an account of what they have to say: examples in documents, and programs with a
// file of expected lines beside them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvelin::documents {

// What a script says, in order: "-> LINE" for each line printed, "! TEXT" for each message.
using Account = std::vector<std::string>;

// Runs the script, which is to be ASCII, on a machine of its own and gives what it says.
Account accountOf(std::string_view script);

// A block of a document that is meant to run.
struct Example {
    int line;  // of the opening fence, from 1
    std::string script;
    Account expected;
};

// A document's blocks.
struct DocumentBlocks {
    std::vector<Example> examples;
    // What is wrong with the document itself: a fence without an end, a block that does not say what it is.
    std::vector<std::string> faults;
};

// Collects the blocks fenced as `js`. What each has to say stands in its comments: `// -> LINE` and `// !
// TEXT`.
DocumentBlocks blocksOf(std::string_view document);

// The lines of a text, the end of the last one not counted.
std::vector<std::string> linesOf(std::string_view text);

// Both accounts up to where they part, for the message of a failed test; "" when they are the same.
std::string difference(const Account& expected, const Account& said);

}  // namespace quorvelin::documents
