#include "uno/file_url.h"

#include <charconv>

namespace relvane::spreadsheet {
namespace {

bool standsForItself(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           std::string_view("/-_.~").find(byte) != std::string_view::npos;
}

} // namespace

std::string fileUrl(std::string_view path) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string url = "file://";
    for (const char byte : path) {
        if (standsForItself(byte)) {
            url += byte;
        } else {
            const auto value = static_cast<unsigned char>(byte);
            url += {'%', digits[value >> 4], digits[value & 15]};
        }
    }
    return url;
}

std::string unescaped(std::string_view url) {
    std::string bytes;
    while (!url.empty()) {
        unsigned value = 0;
        const std::string_view code = url.substr(0, 3);
        const bool escaped = code.size() == 3 && code[0] == '%' &&
                             std::from_chars(&code[1], &code[1] + 2, value, 16).ptr == &code[1] + 2;
        bytes += escaped ? static_cast<char>(value) : url[0];
        url.remove_prefix(escaped ? 3 : 1);
    }
    return bytes;
}

} // namespace relvane::spreadsheet
