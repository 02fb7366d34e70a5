#include "password_option.h"

#include <filesystem>
#include <fstream>

namespace relvane::cli {
namespace {

constexpr std::size_t longestLine = 1000; // far longer than any password
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string firstLine(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string line(longestLine, '\0');
    file.read(line.data(), static_cast<std::streamsize>(line.size()));
    if (file.bad() || !file.is_open() || std::filesystem::is_directory(path)) {
        throw UsageError(std::string(passwordOption.name) + ": cannot read " + path);
    }
    line.resize(static_cast<std::size_t>(file.gcount()));
    line.resize(std::min(line.find_first_of("\r\n"), line.size()));
    return line.starts_with(byteOrderMark) ? line.substr(byteOrderMark.size()) : line;
}

} // namespace

std::optional<Text> givenPassword(const Arguments& arguments) {
    const auto path = arguments.value(passwordOption.name);
    if (!path) {
        return std::nullopt;
    }
    const std::string line = firstLine(*path);
    Text password = fromUtf8(line);
    if (toUtf8(password) != line) {
        throw UsageError(std::string(passwordOption.name) + ": the first line of " + *path + " is not UTF-8");
    }
    return password;
}

} // namespace relvane::cli
