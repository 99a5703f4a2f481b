#pragma once

#include <optional>
#include <utility>

namespace tarnwick {

// What a front end last showed of a field of the model: nothing before the first time.
template <class T> class Shown {
public:
    Shown() = default;
    explicit Shown(T shown) : shown_(std::move(shown)) {}

    // Whether `value` is not what is shown; it counts as shown from here on.
    bool Differs(const T& value) {
        if (shown_ == value)
            return false;
        shown_ = value;
        return true;
    }

private:
    std::optional<T> shown_;
};

} // namespace tarnwick
