// The place of a virtual operation in the table of its class: hosts are built against these places, so tests
// pin them. Known for compilers whose pointers to members tell it.
#pragma once

#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)
#define QUORVELIN_KNOWS_OPERATION_PLACES

#include <cstddef>
#include <cstring>

namespace quorvelin::support {

// Counted from 0; the two forms of a virtual destructor take two places.
template <typename Operation>
size_t operationPlace(Operation operation) {
    size_t word = 0;
    static_assert(sizeof operation >= sizeof word);
    std::memcpy(&word, &operation, sizeof word);
    return (word - 1) / sizeof(void*);
}

}  // namespace quorvelin::support

#endif
