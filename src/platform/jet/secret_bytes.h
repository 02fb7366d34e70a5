// Bytes that must not stay behind in memory: passwords and the keys made from them.
#pragma once

#include <cstdint>
#include <memory>
#include <string.h>
#include <vector>

namespace relvane::jet {

// Overwrites what it gives back, also when a vector grows.
template <class T>
struct WipingAllocator {
    using value_type = T;
    WipingAllocator() = default;
    template <class Other>
    WipingAllocator(const WipingAllocator<Other>&) {}

    T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
    void deallocate(T* memory, std::size_t count) {
        explicit_bzero(memory, count * sizeof(T));
        std::allocator<T>().deallocate(memory, count);
    }
    bool operator==(const WipingAllocator&) const = default;
};

using SecretBytes = std::vector<std::uint8_t, WipingAllocator<std::uint8_t>>;

} // namespace relvane::jet
