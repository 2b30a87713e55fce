#include "foundation/name.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

#include "foundation/well_known_names.h"
#include "host/allocator.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::textOf;

class NameTest : public testing::Test {
  protected:
    void TearDown() override { cancelAllocationFailure(); }
};

TEST_F(NameTest, SameTextIsTheSameAtom) {
    const Name first(u"a name of this test");
    const Name second(textOf(u"a name of this test"));
    EXPECT_EQ(first, second);
    EXPECT_EQ(first.atom(), second.atom());
    EXPECT_FALSE(first == Name(u"another name of this test"));
    EXPECT_EQ(ascii(first.text()), "a name of this test");
}

TEST_F(NameTest, TextOfANameIsKnownWithoutASearch) {
    const Name name(u"a name of this test");
    EXPECT_EQ(Atom::ofInternedText(name.text()), name.atom());
    EXPECT_EQ(Atom::ofInternedText(BString(u"a name of this test")), nullptr);
    const BString copy(name.text());
    EXPECT_EQ(Atom::ofInternedText(copy), nullptr);
    EXPECT_EQ(copy, name.text());
    EXPECT_EQ(Name(name.text()), name);
}

TEST_F(NameTest, TextOfANameCanBeCopiedAndMovedFrom) {
    Name name(u"a name of this test");
    BString assigned;
    assigned = name.text();
    assigned += u"!";
    EXPECT_EQ(ascii(assigned), "a name of this test!");
    EXPECT_EQ(ascii(name.text()), "a name of this test");
    EXPECT_EQ(ascii(name.text().substr(2, 4)), "name");
}

TEST_F(NameTest, FindStoresNothing) {
    EXPECT_EQ(Name::find(BString(u"nobody holds this name")).atom(), nullptr);
    {
        const Name held(u"nobody holds this name");
        EXPECT_EQ(Name::find(BString(u"nobody holds this name")), held);
    }
    EXPECT_EQ(Name::find(BString(u"nobody holds this name")).atom(), nullptr);
}

TEST_F(NameTest, NameLeavesWithItsLastHandle) {
    Name first(u"a name that goes");
    Name second(first);
    Name third(std::move(first));
    second = Name();
    EXPECT_NE(Name::find(BString(u"a name that goes")).atom(), nullptr);
    third = Name(u"another");
    EXPECT_EQ(Name::find(BString(u"a name that goes")).atom(), nullptr);
}

TEST_F(NameTest, AssignmentToItself) {
    Name name(u"a name of this test");
    const Name& alias = name;
    name = alias;
    EXPECT_EQ(ascii(name.text()), "a name of this test");
}

TEST_F(NameTest, EmptyHandleIsNoNameButHasAText) {
    const Name none;
    EXPECT_EQ(none.atom(), nullptr);
    EXPECT_EQ(ascii(none.text()), "");
    EXPECT_EQ(none, Name());
    EXPECT_FALSE(none == Name(u""));
}

TEST_F(NameTest, TextsMayHoldNuls) {
    const Name one(textOf(std::u16string_view(u"a\0b", 3)));
    const Name other(textOf(std::u16string_view(u"a\0c", 3)));
    EXPECT_FALSE(one == other);
    EXPECT_EQ(one.text().length(), 3);
}

TEST_F(NameTest, Lookup) {
    const Name held(u"a name of this test");
    EXPECT_EQ(NameLookup(held.text()).atom(), held.atom());
    EXPECT_EQ(NameLookup(BString(u"a name of this test")).atom(), held.atom());
    EXPECT_EQ(NameLookup(BString(u"nobody holds this name")).atom(), nullptr);
}

TEST_F(NameTest, WithoutMemoryThereIsNoName) {
    const BString text(u"a name for which there is no memory");
    failAllocation(1, AllocationFailure::onwards);
    const Name name(text);
    cancelAllocationFailure();
    EXPECT_EQ(name.atom(), nullptr);
    EXPECT_NE(Name(text).atom(), nullptr);
}

TEST_F(NameTest, ManyNames) {
    std::vector<Name> names;
    for (int i = 0; i < 20000; ++i)
        names.emplace_back(textOf(u"name " + std::u16string(1, static_cast<char16_t>(i + 1))));
    for (int i = 0; i < 20000; ++i) {
        EXPECT_EQ(Name::find(textOf(u"name " + std::u16string(1, static_cast<char16_t>(i + 1)))),
                  names[static_cast<size_t>(i)]);
    }
}

TEST_F(NameTest, TableMayBeUsedByManyThreads) {
    std::vector<std::thread> threads;
    std::vector<const Atom*> shared(4);
    const Name kept(u"kept by all");
    for (size_t t = 0; t < 4; ++t) {
        threads.emplace_back([&shared, t] {
            for (int i = 0; i < 20000; ++i) {
                const Name coming(
                    textOf(std::u16string(u"comes and goes ") + static_cast<char16_t>(u'a' + i % 7)));
                const Name copy(coming);
                EXPECT_EQ(copy.atom(), Name::find(coming.text()).atom());
                shared[t] = Name(u"kept by all").atom();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const Atom* atom : shared) EXPECT_EQ(atom, kept.atom());
    EXPECT_EQ(Name::find(BString(u"comes and goes a")).atom(), nullptr);
}

// ---- the engine's own names ----

TEST_F(NameTest, OwnNamesAreThereAndDifferent) {
    std::set<const Atom*> atoms;
    for (int32_t i = 0; i < static_cast<int32_t>(WellKnownName::count); ++i) {
        const Atom* atom = nameAtom(static_cast<WellKnownName>(i));
        ASSERT_NE(atom, nullptr) << i;
        EXPECT_EQ(atom->wellKnown(), i) << ascii(atom->text());
        EXPECT_EQ(Name(BString(atom->text())).atom(), atom);
        atoms.insert(atom);
    }
    EXPECT_EQ(atoms.size(), static_cast<size_t>(WellKnownName::count));
    EXPECT_EQ(Name(u"a name of this test").atom()->wellKnown(), -1);
}

TEST_F(NameTest, OwnNamesHaveTheirTexts) {
    EXPECT_EQ(ascii(nameText(WellKnownName::thisWord)), "this");
    EXPECT_EQ(ascii(nameText(WellKnownName::none)), "(none)");
    EXPECT_EQ(ascii(nameText(WellKnownName::December)), "December");
    EXPECT_EQ(ascii(nameText(overloadName(WellKnownName::addOperator))), "operator$+");
    EXPECT_EQ(ascii(nameText(overloadName(WellKnownName::deleteWordOperator))), "operator$delete");
}

TEST_F(NameTest, OwnNamesStayWhateverIsDropped) {
    for (int i = 0; i < 100; ++i) {
        Name name(u"this");
        name = Name();
    }
    EXPECT_EQ(Name::find(BString(u"this")).atom(), nameAtom(WellKnownName::thisWord));
}

}  // namespace
}  // namespace quorvelin
