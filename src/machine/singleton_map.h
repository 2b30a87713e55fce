// The class factory's memory of the objects of which it keeps only one: a chained hash from class identifier
// to object, with the object pointer kept as it is. The machine is not of that kind, so in this module the
// map stays empty; a host that derives a factory with singletons relies on its order and growth.
#pragma once

#include <cstdint>

#include "host/class_identity.h"

namespace quorvelin {

class IBSingleton;

class JSSingletonMap {
  public:
    struct Entry {
        uint32_t hash;
        Entry* next;
        BGuid id;
        IBSingleton* object;
    };

    // An empty map. Without memory for its buckets it is not usable: it stays empty and finds nothing.
    JSSingletonMap();
    ~JSSingletonMap();
    JSSingletonMap(const JSSingletonMap&) = delete;
    JSSingletonMap& operator=(const JSSingletonMap&) = delete;

    bool isUsable() const { return buckets_ != nullptr; }

    // The object under the identifier, or null. The map owns no reference.
    IBSingleton* find(const BGuid& id) const;

    // Puts the object under the identifier, replacing what is there, and gives what was there before or null.
    // Without memory for a new entry nothing is stored.
    IBSingleton* insert(const BGuid& id, IBSingleton* object);

    // Forgets the identifier and gives the object that was under it, or null.
    IBSingleton* remove(const BGuid& id);

    int32_t count() const { return count_; }
    int32_t bucketCount() const { return bucketCount_; }
    uint32_t mask() const { return mask_; }
    // First entry of the chain in bucket `index`, or null.
    const Entry* chain(uint32_t index) const { return buckets_[index]; }

  private:
    static constexpr int32_t kStartBuckets = 64;

    // The link that points to the entry of the identifier, or the end of its chain.
    Entry** findLink(const BGuid& id) const;
    void growIfCrowded();

    Entry** buckets_ = nullptr;
    int32_t bucketCount_ = kStartBuckets;
    uint32_t mask_ = kStartBuckets - 1;
    [[maybe_unused]] const int32_t initialSize_ = kStartBuckets;  // kept for reference
    int32_t count_ = 0;
    const double loadFactor_ = 24575.0;
    const int32_t growthBias_ = kStartBuckets;
    IBSingleton* const missValue_ = nullptr;  // the answer for an identifier without an entry
};

}  // namespace quorvelin
