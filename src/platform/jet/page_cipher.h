// What turns the pages of an encoded or encrypted file into plain ones.
#pragma once

#include <memory>

#include "jet/ciphers.h"
#include "jet/file_header.h"

namespace relvane::jet {

class PageCipher {
public:
    virtual ~PageCipher() = default;
    virtual void decode(std::uint32_t page, std::span<std::uint8_t> bytes) const = 0;
};

// What tells the pages of a file apart in their keys: the file's key with the page's number mixed in.
constexpr std::array<std::uint8_t, 4> pageKeyBytes(std::uint32_t fileKey, std::uint32_t page) {
    return littleEndian(fileKey ^ page);
}

// Null for a file of plain pages. Errors: 3031 the pages are encrypted with another password, 3161 in a way that is
// not known, 3049 with parameters that make no sense.
std::unique_ptr<PageCipher> openPageCipher(const FileHeader& header, TextView password);

} // namespace relvane::jet
