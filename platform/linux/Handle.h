#pragma once

#include <memory>

namespace platform {

template <auto function>
struct Releaser {
    template <typename T>
    void operator()(T* object) const {
        function(object);
    }
};

// Owns one object, released by function.
template <typename T, auto function>
using Handle = std::unique_ptr<T, Releaser<function>>;

}  // namespace platform
