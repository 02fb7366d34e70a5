#include "system/link_map_file.h"

#include <algorithm>
#include <optional>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "system/linux_files.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view headOfNewFile =
    "# リンクテーブルのパスと、このコンピュータのフォルダの対応です。1行に1組、UTF-8 で書きます。\n"
    "# Where linked tables lie on this machine: one PREFIX=DIR a line, in UTF-8.\n"
    "# C:\\data=/srv/data\n";

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

bool isComment(std::string_view line) {
    return trimmed(line).empty() || trimmed(line).front() == '#';
}

// The lines of the file, without the byte order mark that an editor may have put before them. Nothing without a file.
std::vector<std::string> readLines(const fs::path& path) {
    std::vector<std::string> lines;
    std::error_code ignored;
    if (fs::status(path, ignored).type() == fs::file_type::not_found) {
        return lines;
    }
    const Bytes bytes = LinuxFiles().read(textOfNativePath(path.native()));
    std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (rest.starts_with(byteOrderMark)) {
        rest.remove_prefix(byteOrderMark.size());
    }
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        lines.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return lines;
}

// What stands before the "=" of a line that is a mapping, valid or not.
std::optional<Text> prefixOf(std::string_view line) {
    const std::size_t equals = line.find('=');
    return isComment(line) || equals == std::string_view::npos
               ? std::nullopt
               : std::optional(fromUtf8(trimmed(line.substr(0, equals))));
}

} // namespace

std::variant<LinkMapping, MappingFault> parseLinkMapping(std::string_view text, const fs::path& base) {
    const auto fault = [&](MappingFault::Kind kind) {
        return MappingFault{kind, std::string(trimmed(text))};
    };
    if (toUtf8(fromUtf8(text)) != text) {
        return fault(MappingFault::Kind::NoUtf8);
    }
    const std::size_t equals = std::min(text.find('='), text.size());
    const std::string_view prefix = trimmed(text.substr(0, equals));
    const std::string_view folder = trimmed(text.substr(std::min(equals + 1, text.size())));
    const bool hasLineEnd =
        trimmed(text).find_first_of(std::string_view("\n\r\0", 3)) != std::string_view::npos;
    if (prefix.empty() || isComment(prefix) || folder.empty() || hasLineEnd) {
        return fault(MappingFault::Kind::NoMapping);
    }
    const fs::path absolute = (base / folder).lexically_normal();
    std::error_code ignored;
    if (!fs::is_directory(absolute, ignored)) {
        return fault(MappingFault::Kind::FolderMissing);
    }
    return LinkMapping{fromUtf8(prefix), absolute};
}

LinkMap readLinkMap(const fs::path& programFolder) {
    LinkMap map;
    std::vector<std::string> lines;
    try {
        lines = readLines(programFolder / linkMapFile);
    } catch (const RunTimeError& error) {
        map.faults.push_back({MappingFault::Kind::Unreadable, toUtf8(error.description())});
    }
    int number = 0;
    for (const std::string& line : lines) {
        ++number;
        if (isComment(line)) {
            continue;
        }
        auto read = parseLinkMapping(line, programFolder);
        if (auto* fault = std::get_if<MappingFault>(&read)) {
            fault->line = number;
            map.faults.push_back(std::move(*fault));
        } else {
            map.mappings.push_back(std::get<LinkMapping>(std::move(read)));
        }
    }
    return map;
}

void keepLinkMappings(const fs::path& programFolder, const std::vector<LinkMapping>& mappings) {
    if (mappings.empty()) {
        return;
    }
    const fs::path path = programFolder / linkMapFile;
    std::vector<std::string> lines = readLines(path);
    std::string content(lines.empty() ? headOfNewFile : std::string_view());
    for (const LinkMapping& mapping : mappings) {
        const std::string written = toUtf8(mapping.prefix) + '=' + mapping.folder.native();
        const auto same = std::ranges::find_if(lines, [&](const std::string& line) {
            const auto prefix = prefixOf(line);
            return prefix && isSamePrefix(*prefix, mapping.prefix);
        });
        if (same == lines.end()) {
            lines.push_back(written);
        } else {
            *same = written;
        }
    }
    for (const std::string& line : lines) {
        content += line + '\n';
    }
    LinuxFiles().write(textOfNativePath(path.native()), Bytes(content.begin(), content.end()));
}

} // namespace relvane
