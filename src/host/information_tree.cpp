#include "host/information_tree.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace quorvelin {
namespace {

constexpr char kMagic[] = {'x', 'm', 'l', 'b', 'i', 'n'};
constexpr std::uint32_t kFormatWord = 0x00000100;
constexpr int kDeepestElement = 64;
// A string can stand for an earlier one at the cost of four bytes, so the texts of a tree are bounded on
// their own.
constexpr std::size_t kMostCharacters = std::size_t{1} << 22;

// Reads a block from front to back. After the first error everything reads as 0 or empty.
class BlockReader {
  public:
    explicit BlockReader(std::span<const unsigned char> block) : block_(block) {}

    const std::string& error() const { return error_; }

    void readHeader() {
        if (block_.size() < sizeof kMagic || std::memcmp(block_.data(), kMagic, sizeof kMagic) != 0) {
            fail("does not begin with \"xmlbin\"");
            return;
        }
        position_ = sizeof kMagic;
        if (readWord() != kFormatWord) {
            fail("has an unknown format word");
        }
    }

    InformationNode readNode(int depth) {
        InformationNode node;
        const std::uint32_t tag = readWord();
        if (failed()) {
            return node;
        }
        node.kind = static_cast<InformationKind>(tag);
        switch (node.kind) {
            case InformationKind::comment:
                node.value = readString();
                break;
            case InformationKind::element:
                node.name = readString();
                readChildren(node, depth);
                break;
            case InformationKind::attribute:
                node.name = readString();
                node.value = readString();
                break;
            default:
                fail("has a node of unknown kind " + std::to_string(tag));
        }
        return node;
    }

  private:
    bool failed() const { return !error_.empty(); }

    void fail(const std::string& what) {
        if (!failed()) {
            error_ = "the information block " + what + " at offset " + std::to_string(position_);
        }
    }

    std::size_t remaining() const { return block_.size() - position_; }

    std::uint32_t readWord() {
        if (failed() || remaining() < 4) {
            fail("ends too early");
            return 0;
        }
        std::uint32_t word = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            word |= static_cast<std::uint32_t>(block_[position_ + i]) << (8 * i);
        }
        position_ += 4;
        return word;
    }

    std::u16string readString() {
        const auto length = static_cast<std::int32_t>(readWord());
        std::u16string text;
        if (failed()) {
            return text;
        }
        if (length < 0) {
            const std::uint32_t number = 0 - static_cast<std::uint32_t>(length);
            if (number > strings_.size()) {
                fail("refers to a string that has not appeared");
                return text;
            }
            text = strings_[number - 1];
        } else {
            if (static_cast<std::size_t>(length) > remaining() / 2) {
                fail("has a string that reaches past the end");
                return text;
            }
            text.reserve(static_cast<std::size_t>(length));
            for (std::int32_t i = 0; i < length; ++i, position_ += 2) {
                text += static_cast<char16_t>(block_[position_] | block_[position_ + 1] << 8);
            }
        }
        characters_ += text.size();
        if (characters_ > kMostCharacters) {
            fail("holds too much text");
        } else {
            strings_.push_back(text);
        }
        return text;
    }

    void readChildren(InformationNode& node, int depth) {
        if (depth > kDeepestElement) {
            fail("nests too deeply");
            return;
        }
        // The count may be damaged: memory is taken child by child, and each child takes bytes of the block.
        const std::uint32_t count = readWord();
        for (std::uint32_t i = 0; i < count && !failed(); ++i) {
            node.children.push_back(readNode(depth + 1));
        }
    }

    std::span<const unsigned char> block_;
    std::size_t position_ = 0;
    std::vector<std::u16string> strings_;
    std::size_t characters_ = 0;
    std::string error_;
};

int hexadecimalDigit(char16_t c) {
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'A' && c <= u'F') {
        return c - u'A' + 10;
    }
    return c >= u'a' && c <= u'f' ? c - u'a' + 10 : -1;
}

void skipBlanks(std::u16string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
}

bool takeWord(std::u16string_view& text, std::uint32_t& word) {
    skipBlanks(text);
    if (!text.starts_with(u"0x")) {
        return false;
    }
    text.remove_prefix(2);
    int digits = 0;
    for (word = 0; !text.empty() && hexadecimalDigit(text.front()) >= 0; ++digits, text.remove_prefix(1)) {
        word = word << 4 | static_cast<std::uint32_t>(hexadecimalDigit(text.front()));
    }
    skipBlanks(text);
    return digits >= 1 && digits <= 8;
}

}  // namespace

const InformationNode* InformationNode::find(InformationKind wanted, std::u16string_view wantedName) const {
    const auto found = std::find_if(children.begin(), children.end(), [&](const InformationNode& child) {
        return child.kind == wanted && child.name == wantedName;
    });
    return found != children.end() ? &*found : nullptr;
}

const std::u16string* InformationNode::attribute(std::u16string_view wantedName) const {
    const InformationNode* found = find(InformationKind::attribute, wantedName);
    return found != nullptr ? &found->value : nullptr;
}

HostResult<InformationNode> parseInformationBlock(std::span<const unsigned char> block) {
    using Result = HostResult<InformationNode>;
    BlockReader reader(block);
    reader.readHeader();
    InformationNode root = reader.readNode(1);
    if (!reader.error().empty()) {
        return Result::failure(reader.error());
    }
    if (root.kind != InformationKind::element) {
        return Result::failure("the root of the information block is not an element");
    }
    return Result::success(std::move(root));
}

const BGuid* ModuleDescription::classIdentifier(std::u16string_view interfaceName) const {
    const auto found = std::find_if(interfaces.begin(), interfaces.end(), [&](const Interface& candidate) {
        return candidate.name == interfaceName;
    });
    return found != interfaces.end() ? &found->classIdentifier : nullptr;
}

HostResult<ModuleDescription> describeModule(const InformationNode& root) {
    using Result = HostResult<ModuleDescription>;
    ModuleDescription description;
    if (const std::u16string* version = root.attribute(u"Version")) {
        description.version = *version;
    }
    const InformationNode* plugin = root.find(InformationKind::element, u"Plugin");
    if (plugin == nullptr) {
        return Result::failure("the information block describes no plug-in");
    }
    if (const std::u16string* manufacturer = plugin->attribute(u"Manufacturer")) {
        description.manufacturer = *manufacturer;
    }
    const std::u16string* factory = plugin->attribute(u"GUID");
    if (factory == nullptr || !parseIdentifierText(*factory, description.factory)) {
        return Result::failure("the information block has no valid identifier for the factory");
    }
    for (const InformationNode& child : plugin->children) {
        if (child.kind != InformationKind::element || child.name != u"Interface") {
            continue;
        }
        const std::u16string* name = child.attribute(u"Name");
        const std::u16string* identifier = child.attribute(u"GUID");
        ModuleDescription::Interface made;
        if (name == nullptr || identifier == nullptr ||
            !parseIdentifierText(*identifier, made.classIdentifier)) {
            return Result::failure(
                "the information block has an interface without a name or a valid identifier");
        }
        made.name = *name;
        description.interfaces.push_back(std::move(made));
    }
    return Result::success(std::move(description));
}

bool parseIdentifierText(std::u16string_view text, BGuid& guid) {
    BGuid read;
    for (std::size_t i = 0; i < std::size(read.words); ++i) {
        if (i > 0) {
            if (!text.starts_with(u',')) {
                return false;
            }
            text.remove_prefix(1);
        }
        if (!takeWord(text, read.words[i])) {
            return false;
        }
    }
    if (!text.empty()) {
        return false;
    }
    guid = read;
    return true;
}

}  // namespace quorvelin
