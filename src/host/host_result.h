// What an operation of the host side gives when it can fail for reasons that a person should read.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace quorvelin {

/// Either a value or the reason why there is none, one English sentence without a full stop.
template <class T>
struct HostResult {
    std::optional<T> value;
    std::string error;

    explicit operator bool() const { return value.has_value(); }

    static HostResult success(T value) { return {std::move(value), {}}; }
    static HostResult failure(std::string error) { return {std::nullopt, std::move(error)}; }
};

}  // namespace quorvelin
