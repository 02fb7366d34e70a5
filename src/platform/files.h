// The file system as the program sees it. Paths are Text and may use both separators, "/" and "\"; helpers
// below cut them. A realisation resolves paths of another system (links into "C:\...") in one place.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane {

// Where the last separator stands, counted from 0; npos without one.
std::size_t lastSeparator(TextView path);

class Files {
public:
    virtual ~Files() = default;

    virtual bool exists(const Text& path) = 0;
    virtual std::int64_t FileLen(const Text& path) = 0;  // bytes; 53, 76
    virtual DateTime FileDateTime(const Text& path) = 0; // last change; 53, 76
    virtual bool isReadOnly(const Text& path) = 0;       // no write permission; 53, 76

    virtual Bytes read(const Text& path) = 0;                       // the whole file; 53, 76, 57
    virtual void write(const Text& path, const Bytes& content) = 0; // replaces it; 70, 76, 61, 57

    virtual Text currentFolder() = 0;                // no separator at the end, but for the root
    virtual void changeFolder(const Text& path) = 0; // 76
};

} // namespace relvane
