#include "machine/singleton_map.h"

#include <bit>
#include <cstring>

#include "host/allocator.h"

namespace quorvelin {

namespace {

// The load factor counts in these, so that 32767 stands for a table as full as it has buckets.
constexpr double kLoadScale = 3.051850947599719e-5;

JSSingletonMap::Entry** makeBuckets(int32_t count) {
    const size_t size = static_cast<size_t>(count) * sizeof(JSSingletonMap::Entry*);
    void* buckets = _smalloc(size);
    if (buckets != nullptr) std::memset(buckets, 0, size);
    return static_cast<JSSingletonMap::Entry**>(buckets);
}

}  // namespace

JSSingletonMap::JSSingletonMap() : buckets_(makeBuckets(kStartBuckets)) {}

JSSingletonMap::~JSSingletonMap() {
    if (buckets_ == nullptr) return;
    for (int32_t i = 0; i < bucketCount_; ++i) {
        Entry* entry = buckets_[i];
        while (entry != nullptr) {
            Entry* next = entry->next;
            _sfree(entry);
            entry = next;
        }
    }
    _sfree(buckets_);
}

JSSingletonMap::Entry** JSSingletonMap::findLink(const BGuid& id) const {
    const uint32_t hash = id.hash();
    Entry** link = &buckets_[hash & mask_];
    while (*link != nullptr && !((*link)->hash == hash && (*link)->id == id)) link = &(*link)->next;
    return link;
}

IBSingleton* JSSingletonMap::find(const BGuid& id) const {
    if (!isUsable()) return missValue_;
    const Entry* entry = *findLink(id);
    return entry != nullptr ? entry->object : missValue_;
}

IBSingleton* JSSingletonMap::insert(const BGuid& id, IBSingleton* object) {
    if (!isUsable()) return missValue_;
    if (Entry* held = *findLink(id)) {
        IBSingleton* previous = held->object;
        held->object = object;
        return previous;
    }
    Entry* entry = static_cast<Entry*>(_smalloc(sizeof(Entry)));
    if (entry == nullptr) return missValue_;
    Entry** head = &buckets_[id.hash() & mask_];
    *entry = {id.hash(), *head, id, object};
    *head = entry;
    ++count_;
    growIfCrowded();
    return missValue_;
}

IBSingleton* JSSingletonMap::remove(const BGuid& id) {
    if (!isUsable()) return missValue_;
    Entry** link = findLink(id);
    Entry* entry = *link;
    if (entry == nullptr) return missValue_;
    IBSingleton* object = entry->object;
    *link = entry->next;
    _sfree(entry);
    --count_;
    return object;
}

void JSSingletonMap::growIfCrowded() {
    const int32_t places = growthBias_ / 2 + bucketCount_;
    const double limit = places * loadFactor_ * kLoadScale;
    if (!(limit < static_cast<double>(count_))) return;
    const auto newCount = static_cast<int32_t>(std::bit_ceil(static_cast<uint32_t>(bucketCount_)) * 2);
    Entry** newBuckets = makeBuckets(newCount);
    if (newBuckets == nullptr) return;  // crowded chains are slower, not wrong
    const uint32_t newMask = static_cast<uint32_t>(newCount) - 1;
    for (int32_t i = 0; i < bucketCount_; ++i) {
        Entry* entry = buckets_[i];
        while (entry != nullptr) {
            Entry* next = entry->next;
            Entry** head = &newBuckets[entry->hash & newMask];
            entry->next = *head;
            *head = entry;
            entry = next;
        }
    }
    _sfree(buckets_);
    buckets_ = newBuckets;
    bucketCount_ = newCount;
    mask_ = newMask;
}

}  // namespace quorvelin
