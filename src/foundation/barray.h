// BArray, the growable array under everything that keeps a list: the member cells of script objects, the
// class factory's stack, and the parser's own lists.
//
// It is deliberately small: elements are plain data (pointers and small records) that are moved with memmove,
// the storage comes from the host's allocator, and the growth rule is part of the design because a host can
// observe it in memory use. The array frees its storage only; whoever stores owned pointers walks them first.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "host/allocator.h"

namespace quorvelin {

template <typename T>
class BArray {
    static_assert(std::is_trivially_copyable_v<T>, "elements are moved with memmove");

  public:
    static constexpr int32_t kStartCapacity = 8;

    // An empty array with room for `startCapacity` elements, all zero. When the allocation fails the array
    // is valid and has no room yet; the next insert tries again.
    explicit BArray(int32_t startCapacity = kStartCapacity) { allocate(startCapacity); }

    // An empty array that allocates nothing until the first insert, which then sizes it as if it had been
    // made with the start capacity. For owners of which most never hold an element.
    struct Lazy {};
    explicit BArray(Lazy) {}

    BArray(const BArray&) = delete;
    BArray& operator=(const BArray&) = delete;

    virtual ~BArray() { _sfree(data_); }

    int32_t count() const { return count_; }
    int32_t capacity() const { return capacity_; }
    T* data() { return data_; }
    const T* data() const { return data_; }

    // The element at `index`, which is not checked: 0 <= index < count().
    T& at(int32_t index) { return data_[index]; }
    const T& at(int32_t index) const { return data_[index]; }

    // Puts `copies` copies of `element` in front of position `position` (0 to count()). When there is no room
    // the capacity becomes the larger of the needed count and twice the old capacity, and the new tail is
    // zeroed. False, with the array unchanged, when memory fails or the count would pass the 32-bit range.
    bool insert(int32_t position, const T& element, int32_t copies = 1) {
        if (copies <= 0) return true;
        const T value = element;  // the element may lie in this very array, whose storage may move now
        if (!makeRoom(copies)) return false;
        std::memmove(data_ + position + copies, data_ + position,
                     static_cast<size_t>(count_ - position) * sizeof(T));
        for (int32_t i = 0; i < copies; ++i) data_[position + i] = value;
        count_ += copies;
        return true;
    }

    // Insert at the end. False, with the array unchanged, when memory fails.
    bool append(const T& element) { return insert(count_, element); }

    // Takes the element at `position` out, closes the gap and hands the element back. The capacity stays.
    T erase(int32_t position) {
        T element = data_[position];
        --count_;
        std::memmove(data_ + position, data_ + position + 1,
                     static_cast<size_t>(count_ - position) * sizeof(T));
        return element;
    }

    // Drops the last element and hands it back. The array must not be empty.
    T eraseLast() { return data_[--count_]; }

    void swap(BArray& other) {
        std::swap(data_, other.data_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
    }

    // Forgets all elements; the storage stays.
    void clear() { count_ = 0; }

  private:
    bool allocate(int32_t capacity) {
        data_ = static_cast<T*>(_smalloc(static_cast<size_t>(capacity) * sizeof(T)));
        if (data_ == nullptr) return false;
        std::memset(static_cast<void*>(data_), 0, static_cast<size_t>(capacity) * sizeof(T));
        capacity_ = capacity;
        return true;
    }

    bool makeRoom(int32_t more) {
        if (data_ == nullptr && !allocate(kStartCapacity)) return false;
        const int64_t needed = int64_t{count_} + more;
        if (needed <= capacity_) return true;
        int64_t newCapacity = int64_t{capacity_} * 2;
        if (newCapacity < needed) newCapacity = needed;
        if (newCapacity > INT32_MAX) newCapacity = INT32_MAX;
        if (newCapacity < needed) return false;
        T* moved = static_cast<T*>(_srealloc(data_, static_cast<size_t>(newCapacity) * sizeof(T)));
        if (moved == nullptr) return false;
        data_ = moved;
        capacity_ = static_cast<int32_t>(newCapacity);
        std::memset(static_cast<void*>(data_ + count_), 0,
                    static_cast<size_t>(capacity_ - count_) * sizeof(T));
        return true;
    }

    T* data_ = nullptr;
    int32_t count_ = 0;
    int32_t capacity_ = 0;
};

}  // namespace quorvelin
