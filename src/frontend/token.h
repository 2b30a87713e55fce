// The kinds of tokens. The numbers stand in saved trees and the names in error messages, so both are part of
// what scripts and hosts see; the spellings are the names as they must stand.
#pragma once

#include <cstdint>

namespace quorvelin {

// X(number, name)
#define QUORVELIN_TOKEN_KINDS(X)          \
    X(0, JSTT_NONE)                       \
    X(1, JSTT_OPERATORS)                  \
    X(2, JSTT_CHAR)                       \
    X(3, JSTT_STRING)                     \
    X(4, JSTT_PARENTHESES)                \
    X(5, JSTT_INT)                        \
    X(6, JSTT_FLOAT)                      \
    X(7, JSTT_HEXINT)                     \
    X(8, JSTT_OCTALINT)                   \
    X(9, JSTT_ZERO)                       \
    X(10, JSTT_BOOL)                      \
    X(11, JSTT_NULL)                      \
    X(12, JSTT_IDENFICATOR)               \
    X(13, JSTT_RESERVED)                  \
    X(14, JSTT_OPERSEPARATOR)             \
    X(15, JSTT_EOF)                       \
    X(17, JSTT_ERROR_NEEDSINGLEQUOTATION) \
    X(18, JSTT_ERROR_NEEDDOUBLEQUOTATION) \
    X(19, JSTT_ERROR_UNEXPECTEDCHAR)      \
    X(20, JSTT_ERROR_NEEDIDENFICATOR)     \
    X(21, JSTT_ERROR_DUBLICATEIDENFICATOR)

enum TokenKind : int32_t {
#define QUORVELIN_TOKEN_KIND(number, name) name = number,
    QUORVELIN_TOKEN_KINDS(QUORVELIN_TOKEN_KIND)
#undef QUORVELIN_TOKEN_KIND
};

// The kinds from here to the last are errors of the scanner; 16 has no name and is never produced.
inline constexpr int32_t kFirstErrorKind = 16;
inline constexpr int32_t kLastErrorKind = JSTT_ERROR_DUBLICATEIDENFICATOR;

// The name of a token kind as it stands in messages; the empty text for a number that has none.
const char* tokenKindName(int32_t kind);

}  // namespace quorvelin
