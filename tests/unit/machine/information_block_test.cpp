#include "machine/information_block.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/identity.h"
#include "host/module_file.h"

namespace quorvelin {
namespace {

constexpr const char16_t* kFactoryText = u"0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1";
constexpr const char16_t* kMachineText = u"0xEC65A4CB, 0x44A3C650, 0x90EFFD9B, 0xB55DF85E";

// The block as it lies in the built module.
class InformationBlockTest : public testing::Test {
  protected:
    void SetUp() override {
        const auto read = readInformationBlock(QUORVELIN_MODULE_FILE);
        ASSERT_TRUE(read) << read.error;
        block = *read.value;
        ASSERT_EQ(block.size(), 574u);
    }

    uint32_t word(size_t offset) const {
        return static_cast<uint32_t>(block[offset]) | static_cast<uint32_t>(block[offset + 1]) << 8 |
               static_cast<uint32_t>(block[offset + 2]) << 16 |
               static_cast<uint32_t>(block[offset + 3]) << 24;
    }

    // The text of a string whose length word stands at `offset`.
    std::u16string string(size_t offset) const {
        std::u16string text;
        for (uint32_t i = 0; i < word(offset); ++i) {
            const size_t unit = offset + 4 + 2 * i;
            text += static_cast<char16_t>(block[unit] | block[unit + 1] << 8);
        }
        return text;
    }

    std::vector<unsigned char> block;
};

TEST_F(InformationBlockTest, ModuleCarriesTheBlockOf574Bytes) {
    EXPECT_EQ(block, std::vector<unsigned char>(kInformationBlock.begin(), kInformationBlock.end()));
}

TEST_F(InformationBlockTest, HeaderIsMagicAndFormatWord) {
    EXPECT_EQ(std::string(block.begin(), block.begin() + 6), "xmlbin");
    EXPECT_EQ(word(6), 0x00000100u);
}

TEST_F(InformationBlockTest, TagsStandAtTheirOffsets) {
    const std::pair<size_t, uint32_t> tags[] = {{10, 2},  {38, 3},  {72, 1},  {102, 2}, {126, 3},
                                                {238, 3}, {274, 1}, {378, 2}, {408, 3}, {470, 3}};
    for (const auto& [offset, tag] : tags) EXPECT_EQ(word(offset), tag) << offset;
}

TEST_F(InformationBlockTest, ChildCountsStandAtTheirOffsets) {
    EXPECT_EQ(word(34), 3u);
    EXPECT_EQ(word(122), 4u);
    EXPECT_EQ(word(404), 2u);
}

TEST_F(InformationBlockTest, StringsStandAtTheirOffsetsWithTheirLengths) {
    struct Row {
        size_t offset;
        uint32_t length;
        const char16_t* text;
    };
    const Row rows[] = {
        {14, 8, u"TarvonRC"},
        {42, 7, u"Version"},
        {60, 4, u"1.00"},
        {76, 11, u" quorvelin "},
        {106, 6, u"Plugin"},
        {130, 4, u"GUID"},
        {142, 46, kFactoryText},
        {242, 12, u"Manufacturer"},
        {270, 0, u""},
        {278, 48, u" Sample:\n\t\t<Interface Name=\"\" GUID=\"@GUID@\" />\n\t"},
        {382, 9, u"Interface"},
        {412, 4, u"Name"},
        {424, 21, u"Quorvelin.NewInstance"},
        {478, 46, kMachineText},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(word(row.offset), row.length) << row.offset;
        EXPECT_EQ(string(row.offset), row.text) << row.offset;
    }
}

TEST_F(InformationBlockTest, NameOfTheLastAttributeIsMinusSix) {
    EXPECT_EQ(word(474), 0xFFFFFFFAu);
}

TEST_F(InformationBlockTest, LengthOfMinusSixResolvesToGuid) {
    const auto tree = parseInformationBlock(block);
    ASSERT_TRUE(tree) << tree.error;
    const InformationNode* plugin = tree.value->find(InformationKind::element, u"Plugin");
    ASSERT_NE(plugin, nullptr);
    const InformationNode* made = plugin->find(InformationKind::element, u"Interface");
    ASSERT_NE(made, nullptr);
    ASSERT_EQ(made->children.size(), 2u);
    EXPECT_EQ(made->children[1].name, u"GUID");
    EXPECT_EQ(made->children[1].value, kMachineText);
}

TEST_F(InformationBlockTest, HostLearnsFactoryAndMachineWithoutLoading) {
    const auto description = readModuleDescription(QUORVELIN_MODULE_FILE);
    ASSERT_TRUE(description) << description.error;
    EXPECT_EQ(description.value->version, u"1.00");
    EXPECT_EQ(description.value->manufacturer, u"");
    EXPECT_EQ(description.value->factory, identityOf(ClassId::quorvelinfactory).guid);
    ASSERT_EQ(description.value->interfaces.size(), 1u);
    const BGuid* machine = description.value->classIdentifier(u"Quorvelin.NewInstance");
    ASSERT_NE(machine, nullptr);
    EXPECT_EQ(*machine, identityOf(ClassId::JSKernel).guid);
}

TEST_F(InformationBlockTest, EveryTruncationIsRefused) {
    for (size_t length = 0; length < block.size(); ++length) {
        const std::vector<unsigned char> start(block.begin(),
                                               block.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(parseInformationBlock(start)) << length;
    }
}

}  // namespace
}  // namespace quorvelin
