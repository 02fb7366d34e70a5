// The file system as the program sees it. Paths are Text and may use both separators, "/" and "\"; helpers
// below cut them. A realisation resolves paths of another system (links into "C:\...") in one place.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane {

// Where the last separator stands, counted from 0; npos without one.
std::size_t lastSeparator(TextView path);

// Whether a file's name fits a pattern: "*" stands for any characters, none included, "?" for exactly one; case does
// not matter. Where the pattern has a dot, a name without one counts as ending with it, so that
// "*.*" takes every name.
bool matchesPattern(TextView name, TextView pattern);

// A file that is written piece by piece from its beginning. Let go without `close`, it keeps what was written so far.
class OutputFile {
public:
    virtual ~OutputFile() = default;

    virtual void write(std::string_view bytes) = 0; // 61, 57
    virtual void close() = 0;                       // the last pieces may be written only now: 61, 57
};

class Files {
public:
    virtual ~Files() = default;

    virtual bool exists(const Text& path) = 0;
    virtual std::int64_t FileLen(const Text& path) = 0;  // bytes; 53, 76
    virtual DateTime FileDateTime(const Text& path) = 0; // last change; 53, 76
    virtual bool isReadOnly(const Text& path) = 0;       // no write permission; 53, 76
    // Whether both paths lead to one file, by whatever way; not when either of them leads nowhere.
    virtual bool isSameFile(const Text& path, const Text& other) = 0;

    // The names of all files that fit the pattern (a folder, and a pattern in the last part: "/srv/app/*.m*"), in the
    // order in which the file system has them. Folders are no files, and neither is what leads to no file or to a
    // device; a name that begins with a dot is hidden. A folder that does not exist has no files, as there is no file
    // of that name; one that cannot be read is error 70.
    virtual std::vector<Text> Dir(const Text& pattern) = 0;

    // The file to which a link leads that a database in `folder` keeps. `path` is of the machine on which the link was
    // made: "C:\data\orders.mdb", "\\server\share\orders.mdb", or relative to `folder`. Errors: 53 there is no such
    // file, 76 not even its folder.
    virtual Text resolveLink(const Text& path, const Text& folder) = 0;

    virtual Bytes read(const Text& path) = 0;                       // the whole file; 53, 76, 57
    virtual void write(const Text& path, const Bytes& content) = 0; // replaces it; 70, 76, 61, 57
    // Empties the file, or makes it; 70, 76, 61, 57.
    virtual std::unique_ptr<OutputFile> openOutput(const Text& path) = 0;

    virtual Text currentFolder() = 0;                // no separator at the end, but for the root
    virtual void changeFolder(const Text& path) = 0; // 76
};

} // namespace relvane
