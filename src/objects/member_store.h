// MemberStore, the own properties of an object: cells in order of insertion, in one array that is seen both
// by name and by position. An entry may be empty.
//
// A search by name compares the addresses of names and gives the first match. The store counts the cells that
// have a name, so that the nameless elements of an array cost a search by name nothing.
#pragma once

#include <cstdint>

#include "foundation/barray.h"
#include "foundation/name.h"

namespace quorvelin {

class JSContext;
class JSObject;
class JSProperty;

class MemberStore {
  public:
    // More entries than this are refused as memory that there is not: one statement of a script must not be
    // able to take all memory of the process.
    static constexpr int32_t kMostEntries = 1 << 27;

    MemberStore() : cells_(BArray<JSProperty*>::Lazy{}) {}

    int32_t count() const { return cells_.count(); }
    // The entry at `index` (0 <= index < count()), which may be null. Borrowed.
    JSProperty* at(int32_t index) const { return cells_.at(index); }
    // Is there a cell with a name?
    bool hasNames() const { return namedCount_ != 0 || computedCount_ != 0; }
    bool contains(int32_t index) const { return index >= 0 && index < cells_.count(); }

    // The position of the first cell with the name, or -1. `atom` is the stored name, null if there is none.
    int32_t find(const Atom* atom, const BString& name, JSContext* ctx, JSObject* receiver) const;

    // As `find`, for names alone: the cell, or null when there is none or it takes asking a cell for its
    // name. `hint` is where to look first, and where the cell was found.
    JSProperty* peek(const Atom* atom, int32_t& hint) const;

    // The store takes the reference to `cell`, which may be null, over. False without memory; the reference
    // stays with the caller then.
    bool append(JSProperty* cell);
    // As `append`, where a cell of that name may be there already.
    bool appendRepeatable(JSProperty* cell);
    // Puts a cell into an entry; the entry's old content is handed back.
    JSProperty* replace(int32_t index, JSProperty* cell);
    // Takes an entry out and hands its reference to the caller.
    JSProperty* erase(int32_t index);
    // `copies` empty entries at the end. False without memory.
    bool appendEmpty(int32_t copies);
    // Forgets all entries without letting go of them.
    void forgetAll();
    void swap(MemberStore& other);

  private:
    void countIn(const JSProperty* cell, int32_t step);

    BArray<JSProperty*> cells_;
    int32_t namedCount_ = 0;
    // Cells of classes that compute their name; while there are any, every cell is asked.
    int32_t computedCount_ = 0;
    // Two cells may have one name, so a hint does not tell which is the first.
    bool mayRepeatNames_ = false;
};

}  // namespace quorvelin
