// The bytes of a database file, wherever they lie: a file on disk, or memory for tests and fuzzing.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/value.h"

namespace relvane::jet {

class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t size() const = 0;
    // Fills `buffer` from `offset` on. Error 57 when the medium fails or ends before.
    virtual void read(std::uint64_t offset, std::span<std::uint8_t> buffer) const = 0;
};

// Opens a file for reading only. It is read page by page with pread rather than mapped: a file that another
// program shortens must end in an error, not in a signal. `path` is the system's own bytes.
// Errors: 3044 the folder does not exist, 3024 the file does not, 3051 it cannot be read.
std::unique_ptr<ByteSource> openByteFile(const std::string& path);

std::unique_ptr<ByteSource> makeMemorySource(Bytes bytes);

} // namespace relvane::jet
