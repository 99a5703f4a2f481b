#pragma once

#include <utility>

namespace tarnwick {

// A field that a window's layout table fills and nobody writes afterwards, so that a front end reads it once, when it
// builds the real control. Reads as a T.
template <class T> class Fixed {
public:
    Fixed() = default;
    explicit(false) Fixed(T value) : value_(std::move(value)) {} // its value before the table has been applied
    Fixed& operator=(const Fixed&) = delete;

    operator const T&() const { return value_; }
    const T* operator->() const { return &value_; }
    const T& operator*() const { return value_; }

private:
    friend class LayoutTable;

    T value_{};
};

} // namespace tarnwick
