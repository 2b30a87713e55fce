// Owned keeps one reference to a smart object inside a function: from the moment it is received until it is
// handed on. It is the one place where ordinary code lets a reference go.
#pragma once

#include <utility>

namespace quorvelin {

template <typename T>
class Owned {
  public:
    Owned() = default;

    // Takes over the reference that comes with `received`; null is fine.
    explicit Owned(T* received) : object_(received) {}

    // A reference of its own to an object that somebody else holds; null is fine.
    static Owned share(T* object) {
        if (object != nullptr) object->addRef();
        return Owned(object);
    }

    Owned(Owned&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() { letGo(object_); }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

    // Hands the reference on to the caller.
    [[nodiscard]] T* take() { return std::exchange(object_, nullptr); }

    // Lets the object go now.
    void reset() { letGo(std::exchange(object_, nullptr)); }

  private:
    static void letGo(T* object) {
        if (object != nullptr) object->release();
    }

    T* object_ = nullptr;
};

}  // namespace quorvelin
