#include "host/information_tree.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>

namespace quorvelin {
namespace {

// Writes a block piece by piece.
class BlockBuilder {
  public:
    BlockBuilder() {
        for (const char c : {'x', 'm', 'l', 'b', 'i', 'n'}) {
            m_bytes.push_back(static_cast<unsigned char>(c));
        }
        word(0x00000100);
    }

    BlockBuilder& word(std::uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8) {
            m_bytes.push_back(static_cast<unsigned char>(value >> shift));
        }
        return *this;
    }

    BlockBuilder& string(std::u16string_view text) {
        word(static_cast<std::uint32_t>(text.size()));
        for (const char16_t c : text) {
            m_bytes.push_back(static_cast<unsigned char>(c & 0xFF));
            m_bytes.push_back(static_cast<unsigned char>(c >> 8));
        }
        return *this;
    }

    BlockBuilder& reference(std::uint32_t number) { return word(0 - number); }
    BlockBuilder& comment(std::u16string_view text) { return word(1).string(text); }
    BlockBuilder& element(std::u16string_view name, std::uint32_t children) {
        return word(2).string(name).word(children);
    }
    BlockBuilder& attribute(std::u16string_view name, std::u16string_view value) {
        return word(3).string(name).string(value);
    }

    const std::vector<unsigned char>& bytes() const { return m_bytes; }
    HostResult<InformationNode> parse() const { return parseInformationBlock(m_bytes); }

  private:
    std::vector<unsigned char> m_bytes;
};

BlockBuilder pluginBlock() {
    BlockBuilder block;
    block.element(u"Root", 3).attribute(u"Version", u"1.00").comment(u" remark ").element(u"Plugin", 4);
    block.attribute(u"GUID", u"0x00000001, 0x00000002, 0x00000003, 0x00000004")
        .attribute(u"Manufacturer", u"");
    block.element(u"Interface", 2)
        .attribute(u"Name", u"First")
        .word(3)
        .reference(6)
        .string(u"0x0000000A, 0x0000000B, 0x0000000C, 0x0000000D");
    block.element(u"Interface", 2)
        .attribute(u"Name", u"Second")
        .word(3)
        .reference(6)
        .string(u"0xFFFFFFFF, 0xB, 0xC, 0xD");
    return block;
}

TEST(InformationTreeTest, TreeHasTheShapeOfTheBlock) {
    const auto tree = pluginBlock().parse();
    ASSERT_TRUE(tree) << tree.error;
    EXPECT_EQ(tree.value->name, u"Root");
    ASSERT_EQ(tree.value->children.size(), 3u);
    EXPECT_EQ(tree.value->children[0].kind, InformationKind::attribute);
    EXPECT_EQ(tree.value->children[0].name, u"Version");
    EXPECT_EQ(tree.value->children[0].value, u"1.00");
    EXPECT_EQ(tree.value->children[1].kind, InformationKind::comment);
    EXPECT_EQ(tree.value->children[1].value, u" remark ");
    EXPECT_EQ(tree.value->children[2].kind, InformationKind::element);
    EXPECT_EQ(tree.value->children[2].children.size(), 4u);
}

TEST(InformationTreeTest, NegativeLengthStandsForEarlierString) {
    const auto tree = pluginBlock().parse();
    ASSERT_TRUE(tree) << tree.error;
    EXPECT_EQ(tree.value->children[2].children[2].children[1].name, u"GUID");
}

TEST(InformationTreeTest, StringsThatStandForOthersAreCountedToo) {
    BlockBuilder block;  // strings: 1 A, 2 A, 3 B, 4 C, 5 B
    block.word(2).string(u"A").word(2);
    block.word(3).reference(1).string(u"B");
    block.word(3).string(u"C").reference(3);
    block.word(0);
    const auto tree = block.parse();
    ASSERT_TRUE(tree) << tree.error;
    EXPECT_EQ(tree.value->children[0].name, u"A");
    EXPECT_EQ(tree.value->children[1].value, u"B");
}

TEST(InformationTreeTest, EmptyStringIsEmptyAndCounted) {
    BlockBuilder block;
    block.word(2).string(u"A").word(2).attribute(u"B", u"").word(3).string(u"C").reference(2);
    const auto tree = block.parse();
    ASSERT_TRUE(tree) << tree.error;
    EXPECT_EQ(tree.value->children[0].value, u"");
    EXPECT_EQ(tree.value->children[1].value, u"B");
}

TEST(InformationTreeTest, WideCharactersComeThrough) {
    const auto tree = BlockBuilder().element(u"\u20AC\xD83D", 0).parse();
    ASSERT_TRUE(tree) << tree.error;
    EXPECT_EQ(tree.value->name, u"\u20AC\xD83D");
}

TEST(InformationTreeTest, DescriptionNamesFactoryAndInterfaces) {
    const auto tree = pluginBlock().parse();
    ASSERT_TRUE(tree) << tree.error;
    const auto description = describeModule(*tree.value);
    ASSERT_TRUE(description) << description.error;
    EXPECT_EQ(description.value->version, u"1.00");
    EXPECT_EQ(description.value->manufacturer, u"");
    EXPECT_EQ(description.value->factory, BGuid(1, 2, 3, 4));
    ASSERT_EQ(description.value->interfaces.size(), 2u);
    ASSERT_NE(description.value->classIdentifier(u"First"), nullptr);
    EXPECT_EQ(*description.value->classIdentifier(u"First"), BGuid(10, 11, 12, 13));
    ASSERT_NE(description.value->classIdentifier(u"Second"), nullptr);
    EXPECT_EQ(*description.value->classIdentifier(u"Second"), BGuid(0xFFFFFFFF, 11, 12, 13));
    EXPECT_EQ(description.value->classIdentifier(u"Third"), nullptr);
}

TEST(InformationTreeTest, DescriptionNeedsPluginAndIdentifiers) {
    const auto errorOf = [](const BlockBuilder& block) {
        const auto tree = block.parse();
        EXPECT_TRUE(tree) << tree.error;
        return tree ? describeModule(*tree.value).error : "";
    };
    EXPECT_EQ(errorOf(BlockBuilder().element(u"Root", 0)), "the information block describes no plug-in");
    EXPECT_EQ(errorOf(BlockBuilder().element(u"Root", 1).element(u"Plugin", 0)),
              "the information block has no valid identifier for the factory");
    EXPECT_EQ(errorOf(BlockBuilder()
                          .element(u"Root", 1)
                          .element(u"Plugin", 2)
                          .attribute(u"GUID", u"0x1,0x2,0x3,0x4")
                          .element(u"Interface", 0)),
              "the information block has an interface without a name or a valid identifier");
}

TEST(InformationTreeTest, IdentifierTextIsFourHexadecimalWords) {
    BGuid guid;
    EXPECT_TRUE(parseIdentifierText(u"0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1", guid));
    EXPECT_EQ(guid, BGuid(0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1));
    EXPECT_TRUE(parseIdentifierText(u" 0x1 ,0xa,0xB , 0x00000004 ", guid));
    EXPECT_EQ(guid, BGuid(1, 10, 11, 4));
    for (const std::u16string_view wrong :
         {u"", u"0x1, 0x2, 0x3", u"0x1, 0x2, 0x3, 0x4, 0x5", u"0x1, 0x2, 0x3, 0x",
          u"0x1, 0x2, 0x3, 0x123456789", u"1, 2, 3, 4", u"0x1 0x2 0x3 0x4", u"0x1, 0x2, 0x3, 0x4x",
          u"@GUID@"}) {
        EXPECT_FALSE(parseIdentifierText(wrong, guid));
    }
    EXPECT_EQ(guid, BGuid(1, 10, 11, 4));
}

TEST(InformationTreeTest, WrongHeaderIsRefused) {
    EXPECT_EQ(parseInformationBlock({}).error,
              "the information block does not begin with \"xmlbin\" at offset 0");
    std::vector<unsigned char> bytes = pluginBlock().bytes();
    bytes[5] = 'N';
    EXPECT_EQ(parseInformationBlock(bytes).error,
              "the information block does not begin with \"xmlbin\" at offset 0");
    bytes = pluginBlock().bytes();
    bytes[7] = 2;
    EXPECT_EQ(parseInformationBlock(bytes).error,
              "the information block has an unknown format word at offset 10");
}

TEST(InformationTreeTest, UnknownTagIsRefused) {
    EXPECT_EQ(BlockBuilder().word(4).parse().error,
              "the information block has a node of unknown kind 4 at offset 14");
    EXPECT_FALSE(BlockBuilder().word(0).parse());
}

TEST(InformationTreeTest, RootThatIsNoElementIsRefused) {
    EXPECT_FALSE(BlockBuilder().comment(u"x").parse());
    EXPECT_FALSE(BlockBuilder().attribute(u"a", u"b").parse());
}

TEST(InformationTreeTest, ReferenceToItselfOrAheadIsRefused) {
    EXPECT_FALSE(BlockBuilder().word(2).reference(1).word(0).parse());
    EXPECT_FALSE(BlockBuilder().element(u"A", 1).word(3).reference(2).string(u"B").parse());
    EXPECT_TRUE(BlockBuilder().element(u"A", 1).word(3).reference(1).string(u"B").parse());
    EXPECT_FALSE(BlockBuilder().word(2).word(0x80000000).word(0).parse());
}

TEST(InformationTreeTest, HugeLengthAndHugeCountAreRefused) {
    EXPECT_FALSE(BlockBuilder().word(2).word(0x7FFFFFFF).parse());
    EXPECT_FALSE(BlockBuilder().element(u"A", 0xFFFFFFFF).parse());
}

TEST(InformationTreeTest, DeepNestingIsRefused) {
    const auto nested = [](int depth) {
        BlockBuilder block;
        for (int i = 1; i < depth; ++i) {
            block.element(u"A", 1);
        }
        return block.element(u"A", 0).parse();
    };
    EXPECT_TRUE(nested(64));
    EXPECT_FALSE(nested(65));
    EXPECT_FALSE(nested(1000000));
}

TEST(InformationTreeTest, RepeatedReferencesCannotFillMemory) {
    constexpr int children = 5000;
    BlockBuilder block;
    block.element(std::u16string(100000, u'x'), children);
    for (int i = 0; i < children; ++i) {
        block.word(1).reference(1);
    }
    EXPECT_FALSE(block.parse());
}

TEST(InformationTreeTest, EveryTruncationIsRefused) {
    const std::vector<unsigned char> bytes = pluginBlock().bytes();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        // A copy of exactly that length, so that reading past the end does not go unnoticed.
        const std::vector<unsigned char> start(bytes.begin(),
                                               bytes.begin() + static_cast<std::ptrdiff_t>(length));
        const auto tree = parseInformationBlock(start);
        EXPECT_FALSE(tree) << length;
        EXPECT_FALSE(tree.error.empty());
    }
    EXPECT_TRUE(parseInformationBlock(bytes));
}

TEST(InformationTreeTest, EveryDamagedByteGivesTreeOrError) {
    const std::vector<unsigned char> bytes = pluginBlock().bytes();
    int refused = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (const int change : {0x01, 0x02, 0x40, 0x80, 0xFF}) {
            std::vector<unsigned char> damaged = bytes;
            damaged[i] ^= static_cast<unsigned char>(change);
            const auto tree = parseInformationBlock(damaged);
            EXPECT_NE(static_cast<bool>(tree), !tree.error.empty());
            refused += tree ? 0 : 1;
            if (tree) {
                const auto description = describeModule(*tree.value);
                EXPECT_NE(static_cast<bool>(description), !description.error.empty());
            }
        }
    }
    EXPECT_GT(refused, 100);
}

TEST(InformationTreeTest, BytesBehindTheRootAreIgnored) {
    EXPECT_TRUE(BlockBuilder().element(u"A", 0).word(99).parse());
}

}  // namespace
}  // namespace quorvelin
