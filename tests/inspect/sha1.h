// SHA-1 of bytes, by which the decoded samples keep long binary values.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

namespace relvane::test {

inline std::string sha1(std::vector<std::uint8_t> bytes) {
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    bytes.push_back(0x80);
    while (bytes.size() % 64 != 56) {
        bytes.push_back(0);
    }
    for (int shift = 56; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
    }
    std::array<std::uint32_t, 5> hash = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
    for (std::size_t block = 0; block < bytes.size(); block += 64) {
        std::array<std::uint32_t, 80> words{};
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (i < 16) {
                for (std::size_t j = 0; j < 4; ++j) {
                    words[i] = words[i] << 8 | bytes[block + 4 * i + j];
                }
            } else {
                words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
            }
        }
        std::uint32_t a = hash[0], b = hash[1], c = hash[2], d = hash[3], e = hash[4];
        for (std::size_t i = 0; i < words.size(); ++i) {
            const auto [mixed, constant] = [&]() -> std::pair<std::uint32_t, std::uint32_t> {
                switch (i / 20) {
                case 0:
                    return {(b & c) | (~b & d), 0x5A827999};
                case 1:
                    return {b ^ c ^ d, 0x6ED9EBA1};
                case 2:
                    return {(b & c) | (b & d) | (c & d), 0x8F1BBCDC};
                default:
                    return {b ^ c ^ d, 0xCA62C1D6};
                }
            }();
            const std::uint32_t next = std::rotl(a, 5) + mixed + e + constant + words[i];
            e = d;
            d = c;
            c = std::rotl(b, 30);
            b = a;
            a = next;
        }
        const std::array<std::uint32_t, 5> added = {a, b, c, d, e};
        for (std::size_t i = 0; i < hash.size(); ++i) {
            hash[i] += added[i];
        }
    }
    std::string text;
    for (const std::uint32_t word : hash) {
        for (int shift = 28; shift >= 0; shift -= 4) {
            text += "0123456789abcdef"[word >> shift & 15];
        }
    }
    return text;
}

} // namespace relvane::test
