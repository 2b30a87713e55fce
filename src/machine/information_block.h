// The module's information block: what a host reads out of the file to learn, before it loads the module,
// which factory the module has and what that makes. It is a small XML tree in binary form: all integers are
// little-endian 32-bit words, all text is UTF-16LE without a terminator. The engine never reads it. It is
// built at compile time here, and only the module carries it, in a section of its own.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// The section, and the name under which hosts look the block up.
#define QUORVELIN_INFORMATION_SECTION "PLUGININFO"

namespace quorvelin {

using InformationBlock = std::array<unsigned char, 574>;

// Writes the nodes of a block one behind the other.
class InformationBlockWriter {
  public:
    constexpr InformationBlockWriter() {
        for (const char c : std::string_view("xmlbin")) byte(static_cast<unsigned char>(c));
        word(kFormatWord);
    }

    // The start of an element; its `childCount` children are to follow.
    constexpr void element(std::u16string_view name, uint32_t childCount) {
        word(kElement);
        string(name);
        word(childCount);
    }

    constexpr void attribute(std::u16string_view name, std::u16string_view value) {
        word(kAttribute);
        string(name);
        string(value);
    }

    // An attribute whose name has been written before, as the `nameNumber`-th string of the block. Strings
    // count from 1, names, values and comments alike.
    constexpr void attribute(uint32_t nameNumber, std::u16string_view value) {
        word(kAttribute);
        word(0 - nameNumber);
        string(value);
    }

    constexpr void comment(std::u16string_view text) {
        word(kComment);
        string(text);
    }

    constexpr size_t size() const { return size_; }
    constexpr const InformationBlock& block() const { return block_; }

  private:
    static constexpr uint32_t kFormatWord = 0x00000100;
    static constexpr uint32_t kComment = 1;
    static constexpr uint32_t kElement = 2;
    static constexpr uint32_t kAttribute = 3;

    constexpr void byte(unsigned value) { block_[size_++] = static_cast<unsigned char>(value & 0xFF); }

    constexpr void word(uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8) byte(value >> shift);
    }

    constexpr void string(std::u16string_view text) {
        word(static_cast<uint32_t>(text.size()));
        for (const char16_t c : text) {
            byte(c);
            byte(static_cast<unsigned>(c) >> 8);
        }
    }

    InformationBlock block_{};
    size_t size_ = 0;
};

consteval InformationBlockWriter writeInformationBlock() {
    InformationBlockWriter writer;
    writer.element(u"TarvonRC", 3);
    writer.attribute(u"Version", u"1.00");
    writer.comment(u" quorvelin ");
    writer.element(u"Plugin", 4);
    writer.attribute(u"GUID", u"0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1");
    writer.attribute(u"Manufacturer", u"");
    writer.comment(u" Sample:\n\t\t<Interface Name=\"\" GUID=\"@GUID@\" />\n\t");
    writer.element(u"Interface", 2);
    writer.attribute(u"Name", u"Quorvelin.NewInstance");
    constexpr uint32_t kGuidNumber = 6;  // "GUID" is the sixth string
    writer.attribute(kGuidNumber, u"0xEC65A4CB, 0x44A3C650, 0x90EFFD9B, 0xB55DF85E");
    return writer;
}

// The block, byte for byte.
inline constexpr InformationBlock kInformationBlock = writeInformationBlock().block();
static_assert(writeInformationBlock().size() == kInformationBlock.size());

}  // namespace quorvelin
