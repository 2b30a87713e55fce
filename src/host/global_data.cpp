#include "host/global_data.h"

#include <cstring>
#include <mutex>

#include "host/allocator.h"

namespace quorvelin {
namespace {

struct Item {
    Item* next;
    BGuid guid;
    void* pointer;
    void (*cleanUp)(void*);
    char name[1];  // as long as the name is
};

// A plain list, newest first: there are a handful of items in a process. Mutex and list need no construction,
// and nothing here is destroyed but the items.
constinit std::mutex tableMutex;
constinit Item* newestItem = nullptr;

// The link that points to the item of the key, or the link at the end of the list.
Item** findLink(const BGuid& guid, const char* name) {
    Item** link = &newestItem;
    while (*link != nullptr && !((*link)->guid == guid && std::strcmp((*link)->name, name) == 0)) {
        link = &(*link)->next;
    }
    return link;
}

Item* makeItem(const BGuid& guid, const char* name) {
    const std::size_t length = std::strlen(name);
    Item* item = static_cast<Item*>(_smalloc(sizeof(Item) + length));
    if (item != nullptr) {
        item->guid = guid;
        std::memcpy(item->name, name, length + 1);
    }
    return item;
}

// What has left the table and is cleaned up once the lock is free.
struct Removed {
    void* pointer = nullptr;
    void (*cleanUp)(void*) = nullptr;

    void run() const {
        if (cleanUp != nullptr) {
            cleanUp(pointer);
        }
    }
};

Removed takeOut(Item** link) {
    Item* item = *link;
    const Removed removed{item->pointer, item->cleanUp};
    *link = item->next;
    _sfree(item);
    return removed;
}

// Runs when the library is unloaded or the process ends, after the static objects of everything that links
// it.
[[gnu::destructor]] void cleanUpAllItems() {
    for (;;) {
        Removed removed;
        {
            const std::lock_guard lock(tableMutex);
            if (newestItem == nullptr) {
                return;
            }
            removed = takeOut(&newestItem);
        }
        removed.run();
    }
}

}  // namespace

constinit std::atomic<std::uint32_t> BGlobalData::changes_{1};

void* BGlobalData::getItem(const stype_info& identity, const char* name) {
    const std::lock_guard lock(tableMutex);
    const Item* item = *findLink(identity.guid, name);
    return item != nullptr ? item->pointer : nullptr;
}

bool BGlobalData::setItem(const stype_info& identity, const char* name, void* pointer,
                          void (*cleanUp)(void*)) {
    Removed removed;
    {
        const std::lock_guard lock(tableMutex);
        Item** link = findLink(identity.guid, name);
        if (pointer == nullptr) {
            if (*link != nullptr) {
                removed = takeOut(link);
            }
        } else if (*link != nullptr) {
            Item* item = *link;
            if (item->pointer != pointer) {
                removed = {item->pointer, item->cleanUp};
            }
            item->pointer = pointer;
            item->cleanUp = cleanUp;
        } else {
            Item* item = makeItem(identity.guid, name);
            if (item == nullptr) {
                return false;
            }
            item->next = newestItem;
            item->pointer = pointer;
            item->cleanUp = cleanUp;
            newestItem = item;
        }
        changes_.fetch_add(1, std::memory_order_release);
    }
    removed.run();
    return true;
}

}  // namespace quorvelin
