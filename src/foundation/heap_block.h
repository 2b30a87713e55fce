// Scratch memory from the host's allocator that frees itself: for work that needs a plain buffer and nothing
// of BArray's growth rule.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "host/allocator.h"

namespace quorvelin {

template <typename T>
class HeapBlock {
  public:
    HeapBlock() = default;
    HeapBlock(HeapBlock&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    HeapBlock& operator=(HeapBlock&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        return *this;
    }
    HeapBlock(const HeapBlock&) = delete;
    HeapBlock& operator=(const HeapBlock&) = delete;
    ~HeapBlock() { _sfree(data_); }

    T* data() { return data_; }
    const T* data() const { return data_; }
    size_t size() const { return size_; }
    T& operator[](size_t index) { return data_[index]; }
    const T& operator[](size_t index) const { return data_[index]; }

    // Room for `count` elements; the old ones stay, new ones are undefined. False, unchanged, without memory.
    bool resize(size_t count) {
        static_assert(std::is_trivially_copyable_v<T>, "elements are moved with realloc");
        T* moved = static_cast<T*>(_srealloc(data_, count * sizeof(T)));
        if (moved == nullptr) return false;
        data_ = moved;
        size_ = count;
        return true;
    }

    // Room for at least `count` elements, at least doubling when it has to grow.
    bool growTo(size_t count) { return count <= size_ || resize(count > size_ * 2 ? count : size_ * 2); }

  private:
    T* data_ = nullptr;
    size_t size_ = 0;
};

}  // namespace quorvelin
