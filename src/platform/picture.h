// A picture as the parts of the program hand it to each other: what a window shows, what the clipboard holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace relvane {

struct Picture {
    int width = 0, height = 0;         // pixels
    std::vector<std::uint32_t> pixels; // 0x00RRGGBB, row by row from the top; width times height of them

    bool isEmpty() const { return pixels.empty(); }
    std::uint32_t& at(int x, int y) {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    std::uint32_t at(int x, int y) const { return const_cast<Picture&>(*this).at(x, y); }
};

} // namespace relvane
