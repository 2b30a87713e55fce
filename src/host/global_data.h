// The process-wide table of named items, through which modules that know nothing of each other share objects.
// A key is a class identity and a narrow name. Identities are compared by their identifier, not by the
// address of the record, because each module has records of its own.
#pragma once

#include <atomic>
#include <cstdint>

#include "host/class_identity.h"

namespace quorvelin {

/// All operations may be called from any thread, and by static objects before main and at exit.
class BGlobalData {
  public:
    /// How often the table has changed. Who looks the same item up again and again keeps what it found for as
    /// long as this number stays.
    static std::uint32_t changeCount() { return changes_.load(std::memory_order_acquire); }

    /// The pointer kept under the key, or null. The table goes on owning the item.
    static void* getItem(const stype_info& identity, const char* name);

    /// Keeps `pointer` under the key. `name` is copied. `cleanUp` may be null; otherwise it is called once
    /// with the pointer when the item leaves the table: when another pointer takes its place, when it is
    /// removed, or at exit. At exit the newest item goes first, and the table can still be read meanwhile.
    ///
    /// A null pointer removes the item. Setting the pointer that is there already only replaces its clean-up
    /// function. Clean-up functions are called outside the table's lock and may use the table.
    ///
    /// False, and nothing changed, when there is no memory for a new item.
    static bool setItem(const stype_info& identity, const char* name, void* pointer, void (*cleanUp)(void*));

  private:
    static std::atomic<std::uint32_t> changes_;
};

}  // namespace quorvelin
