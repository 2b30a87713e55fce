// The engine's own names: every text that the engine compares names with or hands out often, each one atom
// that is made when the library loads and lives as long as the process.
//
// The first 144 are the system's fixed list in its fixed order; behind them stand the further names that
// single classes answer. `WellKnownName` is the index, `nameText` the text, and `Atom::wellKnown` tells
// whether a name at hand is one of them, so that a dispatch function can switch on the number.
#pragma once

#include <cstdint>

#include "foundation/name.h"

namespace quorvelin {

// X(identifier, text)
#define QUORVELIN_FIXED_NAMES(X)          \
    X(December, "December")               \
    X(November, "November")               \
    X(October, "October")                 \
    X(September, "September")             \
    X(August, "August")                   \
    X(July, "July")                       \
    X(June, "June")                       \
    X(May, "May")                         \
    X(April, "April")                     \
    X(March, "March")                     \
    X(February, "February")               \
    X(January, "January")                 \
    X(Sunday, "Sunday")                   \
    X(Saturday, "Saturday")               \
    X(Friday, "Friday")                   \
    X(Thursday, "Thursday")               \
    X(Wednesday, "Wednesday")             \
    X(Tuesday, "Tuesday")                 \
    X(Monday, "Monday")                   \
    X(errorValue, "error value")          \
    X(undefined, "undefined")             \
    X(trueWord, "true")                   \
    X(falseWord, "false")                 \
    X(decompile, "decompile")             \
    X(length, "length")                   \
    X(constructor, "constructor")         \
    X(toString, "toString")               \
    X(thisWord, "this")                   \
    X(valueOf, "valueOf")                 \
    X(StringClass, "String")              \
    X(ExpressionClass, "Expression")      \
    X(NumberClass, "Number")              \
    X(BooleanClass, "Boolean")            \
    X(ArrayClass, "Array")                \
    X(FunctionClass, "Function")          \
    X(stringWord, "string")               \
    X(expressionWord, "expression")       \
    X(numberWord, "number")               \
    X(booleanWord, "boolean")             \
    X(arrayWord, "array")                 \
    X(functionWord, "function")           \
    X(objectWord, "object")               \
    X(unknow, "unknow")                   \
    X(nullWord, "null")                   \
    X(eval, "eval")                       \
    X(wrongObject, "wrong object")        \
    X(none, "(none)")                     \
    X(wrongLvalue, "wrong lvalue")        \
    X(operatorPrefix, "operator$")        \
    X(join, "join")                       \
    X(reverse, "reverse")                 \
    X(sort, "sort")                       \
    X(show, "show")                       \
    X(println, "println")                 \
    X(hide, "hide")                       \
    X(clear, "clear")                     \
    X(evalName, "_eval")                  \
    X(parseInt, "parseInt")               \
    X(parseFloat, "parseFloat")           \
    X(escape, "escape")                   \
    X(unescape, "unescape")               \
    X(UTC, "UTC")                         \
    X(parse, "parse")                     \
    X(setDate, "setDate")                 \
    X(setHours, "setHours")               \
    X(setMinutes, "setMinutes")           \
    X(setMonth, "setMonth")               \
    X(setSeconds, "setSeconds")           \
    X(setMilliseconds, "setMilliseconds") \
    X(setTime, "setTime")                 \
    X(setYear, "setYear")                 \
    X(setFullYear, "setFullYear")         \
    X(toGMTString, "toGMTString")         \
    X(toLocaleString, "toLocaleString")   \
    X(getDate, "getDate")                 \
    X(getDay, "getDay")                   \
    X(getFullYear, "getFullYear")         \
    X(getHours, "getHours")               \
    X(getMilliseconds, "getMilliseconds") \
    X(getMinutes, "getMinutes")           \
    X(getMonth, "getMonth")               \
    X(getSeconds, "getSeconds")           \
    X(getTime, "getTime")                 \
    X(getYear, "getYear")                 \
    X(console, "console")                 \
    X(E, "E")                             \
    X(LN2, "LN2")                         \
    X(LN10, "LN10")                       \
    X(LOG2E, "LOG2E")                     \
    X(LOG10E, "LOG10E")                   \
    X(PI, "PI")                           \
    X(SQRT1_2, "SQRT1_2")                 \
    X(SQRT2, "SQRT2")                     \
    X(abs, "abs")                         \
    X(acos, "acos")                       \
    X(asin, "asin")                       \
    X(atan, "atan")                       \
    X(atan2, "atan2")                     \
    X(ceil, "ceil")                       \
    X(cos, "cos")                         \
    X(exp, "exp")                         \
    X(floor, "floor")                     \
    X(log, "log")                         \
    X(max, "max")                         \
    X(min, "min")                         \
    X(pow, "pow")                         \
    X(random, "random")                   \
    X(round, "round")                     \
    X(sin, "sin")                         \
    X(sqrt, "sqrt")                       \
    X(tan, "tan")                         \
    X(prototype, "prototype")             \
    X(input, "input")                     \
    X(lastMatch, "lastMatch")             \
    X(lastParen, "lastParen")             \
    X(leftContext, "leftContext")         \
    X(rightContext, "rightContext")       \
    X(multiline, "multiline")             \
    X(global, "global")                   \
    X(ignoreCase, "ignoreCase")           \
    X(lastIndex, "lastIndex")             \
    X(source, "source")                   \
    X(test, "test")                       \
    X(compile, "compile")                 \
    X(exec, "exec")                       \
    X(printf, "printf")                   \
    X(printx, "printx")                   \
    X(printd, "printd")                   \
    X(fromCharCode, "fromCharCode")       \
    X(charAt, "charAt")                   \
    X(charCodeAt, "charCodeAt")           \
    X(concat, "concat")                   \
    X(indexOf, "indexOf")                 \
    X(lastIndexOf, "lastIndexOf")         \
    X(match, "match")                     \
    X(replace, "replace")                 \
    X(search, "search")                   \
    X(slice, "slice")                     \
    X(split, "split")                     \
    X(substr, "substr")                   \
    X(substring, "substring")             \
    X(toLowerCase, "toLowerCase")         \
    X(toUpperCase, "toUpperCase")         \
    X(defaultDateFormat, "ddd mmm d H:MM:ss yyyy")

#define QUORVELIN_FURTHER_NAMES(X)            \
    X(empty, "")                              \
    X(arguments, "arguments")                 \
    X(caller, "caller")                       \
    X(Object, "Object")                       \
    X(Date, "Date")                           \
    X(Math, "Math")                           \
    X(RegExp, "RegExp")                       \
    X(util, "util")                           \
    X(MAX_VALUE, "MAX_VALUE")                 \
    X(NaN, "NaN")                             \
    X(NEGATIVE_INFINITY, "NEGATIVE_INFINITY") \
    X(POSITIVE_INFINITY, "POSITIVE_INFINITY") \
    X(index, "index")                         \
    X(outOfMemory, "Out of memory")

// The operators, as nodes hold them. For each there is a second name, with which a script object takes the
// operator over: "operator$+" for "+".
#define QUORVELIN_OPERATOR_NAMES(X)             \
    X(assignOperator, "=")                      \
    X(addAssignOperator, "+=")                  \
    X(andAssignOperator, "&=")                  \
    X(orAssignOperator, "|=")                   \
    X(xorAssignOperator, "^=")                  \
    X(divideAssignOperator, "/=")               \
    X(shiftLeftAssignOperator, "<<=")           \
    X(remainderAssignOperator, "%=")            \
    X(multiplyAssignOperator, "*=")             \
    X(shiftRightUnsignedAssignOperator, ">>>=") \
    X(subtractAssignOperator, "-=")             \
    X(shiftRightAssignOperator, ">>=")          \
    X(logicalOrOperator, "||")                  \
    X(logicalAndOperator, "&&")                 \
    X(bitOrOperator, "|")                       \
    X(bitXorOperator, "^")                      \
    X(bitAndOperator, "&")                      \
    X(identicalOperator, "===")                 \
    X(notIdenticalOperator, "!==")              \
    X(equalOperator, "==")                      \
    X(notEqualOperator, "!=")                   \
    X(lessOrEqualOperator, "<=")                \
    X(lessOperator, "<")                        \
    X(greaterOrEqualOperator, ">=")             \
    X(greaterOperator, ">")                     \
    X(shiftLeftOperator, "<<")                  \
    X(shiftRightOperator, ">>")                 \
    X(shiftRightUnsignedOperator, ">>>")        \
    X(addOperator, "+")                         \
    X(subtractOperator, "-")                    \
    X(multiplyOperator, "*")                    \
    X(divideOperator, "/")                      \
    X(remainderOperator, "%")                   \
    X(incrementOperator, "++")                  \
    X(decrementOperator, "--")                  \
    X(complementOperator, "~")                  \
    X(logicalNotOperator, "!")                  \
    X(typeofWordOperator, "typeof")             \
    X(newWordOperator, "new")                   \
    X(voidWordOperator, "void")                 \
    X(deleteWordOperator, "delete")

enum class WellKnownName : int32_t {
#define QUORVELIN_NAME(identifier, text) identifier,
#define QUORVELIN_OVERLOAD(identifier, text) identifier##Overload,
    QUORVELIN_FIXED_NAMES(QUORVELIN_NAME) QUORVELIN_FURTHER_NAMES(QUORVELIN_NAME)
        QUORVELIN_OPERATOR_NAMES(QUORVELIN_NAME) QUORVELIN_OPERATOR_NAMES(QUORVELIN_OVERLOAD)
#undef QUORVELIN_NAME
#undef QUORVELIN_OVERLOAD
            count
};

// How many names the fixed list has.
inline constexpr int32_t kFixedNameCount = 144;

namespace detail {
extern const Atom* wellKnownAtoms[static_cast<int32_t>(WellKnownName::count)];
void buildWellKnownAtoms();
}  // namespace detail

// The atom of a name of the engine's own. Also right while other static objects are being built.
inline const Atom* nameAtom(WellKnownName name) {
    const Atom* atom = detail::wellKnownAtoms[static_cast<int32_t>(name)];
    if (atom == nullptr) [[unlikely]] {
        detail::buildWellKnownAtoms();
        atom = detail::wellKnownAtoms[static_cast<int32_t>(name)];
    }
    return atom;
}

// The name under which an object takes the operator over.
constexpr WellKnownName overloadName(WellKnownName op) {
    constexpr int32_t distance = static_cast<int32_t>(WellKnownName::assignOperatorOverload) -
                                 static_cast<int32_t>(WellKnownName::assignOperator);
    return static_cast<WellKnownName>(static_cast<int32_t>(op) + distance);
}

inline const BString& nameText(WellKnownName name) {
    return nameAtom(name)->text();
}

}  // namespace quorvelin
