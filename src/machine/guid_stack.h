// The class factory's list of the identifiers under which it keeps an object, newest on top.
#pragma once

#include "foundation/barray.h"
#include "host/class_identity.h"

namespace quorvelin {

class JSGuidStack {
  public:
    // False, with the stack unchanged, when memory fails.
    bool push(const BGuid& id) { return entries_.append(id); }

    // Takes the newest identifier off; the all-zero one when there is none.
    BGuid pop() { return isEmpty() ? BGuid() : entries_.eraseLast(); }

    // The identifier `distance` below the top, 0 being the top itself; the all-zero one when there is none.
    BGuid peek(int32_t distance) const {
        const bool exists = distance >= 0 && distance < entries_.count();
        return exists ? entries_.at(entries_.count() - 1 - distance) : BGuid();
    }

    bool isEmpty() const { return entries_.count() == 0; }
    int32_t count() const { return entries_.count(); }
    int32_t capacity() const { return entries_.capacity(); }

  private:
    BArray<BGuid> entries_;
};

}  // namespace quorvelin
