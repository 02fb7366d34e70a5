// The ciphers and hashes of encoded and encrypted files. Only ciphers.cpp knows the library that they come from.
#pragma once

#include <array>
#include <initializer_list>
#include <span>

#include "jet/secret_bytes.h"

namespace relvane::jet {

using ByteView = std::span<const std::uint8_t>;

// A number as keys and hashes take it.
constexpr std::array<std::uint8_t, 4> littleEndian(std::uint32_t number) {
    return {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8),
            static_cast<std::uint8_t>(number >> 16), static_cast<std::uint8_t>(number >> 24)};
}

enum class Direction { Encode, Decode };

// XORs `data` in place with the RC4 key stream of `key`, 1 to 256 bytes; the same call encodes and decodes.
void applyRc4(ByteView key, std::span<std::uint8_t> data);

// AES in place. Error 5 unless the key has 16, 24 or 32 bytes, `iv` one block, and `data` whole blocks.
constexpr std::size_t aesBlock = 16;
void applyAesEcb(Direction direction, ByteView key, std::span<std::uint8_t> data);
void applyAesCbc(Direction direction, ByteView key, ByteView iv, std::span<std::uint8_t> data);

enum class HashKind { Sha1, Sha256, Sha384, Sha512 };

// The hash of the parts one behind the other: 20, 32, 48 or 64 bytes.
SecretBytes hashOf(HashKind kind, std::initializer_list<ByteView> parts);

} // namespace relvane::jet
