// The information block of a module, as a tree. The block is a small XML tree in binary form that says who a
// module is and what its factory makes; a host reads it before it decides to load the module. A block comes
// out of a file that may be damaged or hostile, so reading is checked at every step.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/class_identity.h"
#include "host/host_result.h"

namespace quorvelin {

/// The numbers are those of the tags in the block.
enum class InformationKind : std::uint32_t { comment = 1, element = 2, attribute = 3 };

struct InformationNode {
    InformationKind kind = InformationKind::element;
    std::u16string name;                    ///< of an element or attribute
    std::u16string value;                   ///< value of an attribute, text of a comment
    std::vector<InformationNode> children;  ///< of an element, attributes and comments among them

    /// The first child of the kind and name, or null.
    const InformationNode* find(InformationKind wanted, std::u16string_view wantedName) const;
    /// The value of the attribute of that name, or null.
    const std::u16string* attribute(std::u16string_view wantedName) const;
};

/// Reads a whole block into a tree and gives its root element. Bytes behind the root are ignored. Strings may
/// stand for earlier ones; all strings count in order of appearance, those included that stand for others.
HostResult<InformationNode> parseInformationBlock(std::span<const unsigned char> block);

/// What a module says of itself.
struct ModuleDescription {
    struct Interface {
        std::u16string name;
        BGuid classIdentifier;
    };

    std::u16string version;       ///< empty when not stated
    std::u16string manufacturer;  ///< empty when not stated
    BGuid factory;
    std::vector<Interface> interfaces;

    /// The class identifier under a public name such as "Quorvelin.NewInstance", or null.
    const BGuid* classIdentifier(std::u16string_view interfaceName) const;
};

/// Takes the description out of a tree. Fails when an identifier is missing or is not four hexadecimal words.
HostResult<ModuleDescription> describeModule(const InformationNode& root);

/// Reads four words such as "0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1", of one to eight digits each,
/// with blanks between and around them. False, and nothing changed, for any other text.
bool parseIdentifierText(std::u16string_view text, BGuid& guid);

}  // namespace quorvelin
