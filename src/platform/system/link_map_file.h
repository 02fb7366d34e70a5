// The mappings that a user keeps: the text file "Relvane.map" in the program's folder. UTF-8, one "PREFIX=DIR" a
// line, "#" begins a comment.
//
//     # where the files of the old server lie now
//     C:\data=/srv/orders
//     \\server1\共有=/mnt/share
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "system/link_paths.h"

namespace relvane {

inline constexpr const char* linkMapFile = "Relvane.map";

// Why a mapping does not count.
struct MappingFault {
    enum class Kind {
        NoMapping,     // not PREFIX=DIR
        NoUtf8,        // written in another encoding
        FolderMissing, // DIR is not a folder, or not now
        Unreadable,    // the whole file
    };
    Kind kind;
    std::string text; // the mapping as written
    int line = 0;     // in the file, from 1
};

// Reads "PREFIX=DIR", blanks around either left out; a relative DIR begins in `base`.
std::variant<LinkMapping, MappingFault> parseLinkMapping(std::string_view text,
                                                         const std::filesystem::path& base);

struct LinkMap {
    std::vector<LinkMapping> mappings;
    std::vector<MappingFault> faults; // of lines that do not count; the rest does
};

// Those of a program folder. Without the file there are none.
LinkMap readLinkMap(const std::filesystem::path& programFolder);

// Writes mappings into the file: each takes the place of the line with its prefix, or is added at the end. Comments
// and all other lines stay. Throws RunTimeError when the file cannot be written.
void keepLinkMappings(const std::filesystem::path& programFolder, const std::vector<LinkMapping>& mappings);

} // namespace relvane
