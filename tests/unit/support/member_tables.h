// Tables of the members of a standard object: what each name answers when it is asked for, read, written and
// called. One row a member; the tests hold nothing but the rows.
#pragma once

#include <cstddef>
#include <span>

#include "support/script_machine.h"

namespace quorvelin::support {

// A member that can be called. All of them are of type function and read as a reference of their name; a
// value that is written shadows them.
struct MethodRow {
    const char16_t* name;
    const char* withoutList;  // the result of a call without a list of arguments, as only the system makes it
    const char* withNone;     // with an empty list
    const char* withEmpty;    // with a list of one entry that holds nothing
    const char16_t* many;     // a script that gives a list with more than it takes
    const char* withMany;     // the result for it
};

// A member that holds a value. A call of it gives nothing.
struct ValueRow {
    const char16_t* name;
    JSValueType type;
    const char* value;     // what a read gives
    const char16_t* next;  // a script that gives a value to be written; null for the absent value
    const char* written;   // what the write gives
    const char* after;     // what a read gives then
};

class MemberTableTest : public ScriptTest {
  protected:
    // The object that the rows are about, made anew for each question.
    virtual Value subject() = 0;
    // What a call left of the object; it stands behind the result where the results alone tell too little.
    virtual std::string trace(JSObject& /*subject*/) { return std::string(); }

    void expectMethods(std::span<const MethodRow> rows);
    // Only the calls: for names that cannot be read.
    void expectCalls(std::span<const MethodRow> rows);
    void expectValues(std::span<const ValueRow> rows);
    // Names that the object does not answer, whatever is asked.
    void expectNothing(std::span<const char16_t* const> names);

  private:
    std::string callOf(const char16_t* name, JSObject* arguments);
    Value read(JSObject& object, const char16_t* name);
    std::string write(JSObject& object, const char16_t* name, JSObject* value);
};

}  // namespace quorvelin::support
