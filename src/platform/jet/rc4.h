// The stream cipher of encoded database pages.
#pragma once

#include <cstdint>
#include <span>

namespace relvane::jet {

// XORs `data` in place with the RC4 key stream of `key`; the same call encodes and decodes.
void applyRc4(std::span<const std::uint8_t> key, std::span<std::uint8_t> data);

} // namespace relvane::jet
