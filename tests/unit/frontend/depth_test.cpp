// Deep nesting: whatever a text or a saved tree nests, it is parsed or refused with a message, and the tree
// can be written, saved and released.
#include <gtest/gtest.h>
#include <pthread.h>

#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::loaded;
using support::parse;
using support::saved;

constexpr size_t kDepth = 100000;

std::u16string repeated(std::u16string_view part, size_t count) {
    std::u16string text;
    text.reserve(part.size() * count);
    for (size_t i = 0; i < count; ++i) text += part;
    return text;
}

// Parses, writes back, saves, loads and releases. The message when the parser refused the text.
std::string goThrough(const std::u16string& script) {
    Owned<JSNode> root = parse(script);
    if (!root) return "null";
    const BString source = root->regenerate();
    EXPECT_FALSE(source.isEmpty());
    if (root->kind == kErrorKind) return ascii(source).substr(ascii(source).find("): ") + 3);
    Owned<JSNode> readBack = loaded(saved(root.get()));
    EXPECT_TRUE(readBack);
    readBack->regenerate();
    readBack.reset();
    root.reset();
    return "fine";
}

TEST(Depth, NestingThatRecursesIsParsedOrRefused) {
    const std::u16string scripts[] = {
        repeated(u"(", kDepth) + u"a" + repeated(u")", kDepth),
        repeated(u"[", kDepth) + repeated(u"]", kDepth),
        repeated(u"f(", kDepth) + repeated(u")", kDepth),
        repeated(u"a[", kDepth) + u"0" + repeated(u"]", kDepth),
        repeated(u"{", kDepth) + u"a" + repeated(u"}", kDepth),
        repeated(u"-", kDepth) + u"a",
        repeated(u"- ", kDepth) + u"a",
        repeated(u"typeof ", kDepth) + u"a",
        repeated(u"new ", kDepth) + u"a",
        repeated(u"a=", kDepth) + u"b",
        repeated(u"a,", kDepth) + u"b",
        repeated(u"a||", kDepth) + u"b",
        repeated(u"a&&", kDepth) + u"b",
        repeated(u"a&", kDepth) + u"b",
        repeated(u"a==", kDepth) + u"b",
        repeated(u"a<", kDepth) + u"b",
        repeated(u"a?b:", kDepth) + u"c",
        repeated(u"a?", kDepth) + u"b" + repeated(u":c", kDepth),
        repeated(u"l:", kDepth) + u"a",
        repeated(u"if(a)b;else ", kDepth) + u"c",
        repeated(u"if(a)", kDepth) + u"b",
        repeated(u"while(a)", kDepth) + u"b",
        repeated(u"for(;;)", kDepth) + u"b",
        repeated(u"with(a)", kDepth) + u"b",
        repeated(u"do ", kDepth) + u"a" + repeated(u";while(b)", kDepth) + u";",
        repeated(u"function f(){", kDepth) + repeated(u"}", kDepth),
        repeated(u"switch(a){case 1:", kDepth) + u"b" + repeated(u"}", kDepth),
    };
    for (const std::u16string& script : scripts) {
        const std::string answer = goThrough(script);
        EXPECT_TRUE(answer == "fine" || answer == "too deep")
            << ascii(script.substr(0, 20)) << ": " << answer;
    }
}

TEST(Depth, NestingWithoutEndIsRefused) {
    EXPECT_EQ(goThrough(repeated(u"(", 10 * kDepth)), "too deep");
    EXPECT_EQ(goThrough(repeated(u"a=", 10 * kDepth)), "too deep");
    EXPECT_EQ(goThrough(repeated(u"{", 10 * kDepth)), "too deep");
}

TEST(Depth, NestingThatLoopsHasNoLimit) {
    const std::u16string scripts[] = {
        u"a" + repeated(u"+a", kDepth),
        u"a" + repeated(u"*a", kDepth),
        u"a" + repeated(u"|a", kDepth),
        u"a" + repeated(u"^a", kDepth),
        u"a" + repeated(u"<<a", kDepth),
        u"a" + repeated(u".b", kDepth),
        u"a" + repeated(u".b()", kDepth),
        u"a" + repeated(u"()", kDepth),
        u"a" + repeated(u"[0]", kDepth),
        u"a" + repeated(u"++ ", kDepth),
        repeated(u"a;", kDepth),
        repeated(u"a\n", kDepth),
        repeated(u"if(a){b}\n", kDepth),
        u"f(" + repeated(u"a,", kDepth) + u")",
        u"var a" + repeated(u",b=1", kDepth),
    };
    for (const std::u16string& script : scripts)
        EXPECT_EQ(goThrough(script), "fine") << ascii(script.substr(0, 20));
}

TEST(Depth, OrdinaryNestingIsAccepted) {
    EXPECT_EQ(goThrough(repeated(u"(", 1000) + u"a" + repeated(u")", 1000)), "fine");
    EXPECT_EQ(goThrough(repeated(u"if(a){", 500) + u"a" + repeated(u"}", 500)), "fine");
}

TEST(Depth, SmallStackIsRespected) {
    struct Task {
        std::u16string script = repeated(u"(", kDepth);
        std::string answer;
        static void* run(void* pointer) {
            Task& task = *static_cast<Task*>(pointer);
            task.answer = goThrough(task.script);
            return nullptr;
        }
    } task;
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1536 * 1024), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, Task::run, &task), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(task.answer, "too deep");
}

// A saved tree of `count` nested nodes with what stands in front of each child.
std::vector<uint8_t> nested(const std::vector<uint8_t>& opening, size_t count) {
    std::vector<uint8_t> bytes = {1};
    for (size_t i = 0; i < count; ++i) bytes.insert(bytes.end(), opening.begin(), opening.end());
    return bytes;
}

TEST(Depth, DeepSavedTrees) {
    const std::vector<uint8_t> openings[] = {
        {13, 0, 0, 0, 0},      // prefix operator
        {7},                   // left of a comma
        {28, 28},              // statement list
        {22},                  // return
        {12, 0},               // then part of a conditional
        {23, 0, 24},           // test of a case
        {1, 0, 0, 0, 0, 0},    // function body
        {30, 30, 0, 0, 0, 0},  // initialiser
        {38, 38},              // array
    };
    for (const std::vector<uint8_t>& opening : openings) {
        Owned<JSNode> root = loaded(nested(opening, 3 * kDepth));
        ASSERT_TRUE(root);
        EXPECT_NE(ascii(root->regenerate()).find("too deep"), std::string::npos);
        EXPECT_FALSE(saved(root.get()).empty());
        root.reset();
    }
}

}  // namespace
}  // namespace quorvelin
