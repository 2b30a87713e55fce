// The bytes of saved trees that are not tags of classes.
#pragma once

#include <cstdint>

namespace quorvelin {

// Stands for an absent child.
inline constexpr uint8_t kAbsentChild = 0;

// In front of each clause of a switch. Every other list has the tag of its class as its mark.
inline constexpr uint8_t kClauseMark = 24;

// What the writer puts behind a list: the number next to its mark. The reader takes any byte that is not the
// mark.
constexpr uint8_t listEnd(uint8_t mark) {
    return static_cast<uint8_t>(mark + 1);
}

}  // namespace quorvelin
