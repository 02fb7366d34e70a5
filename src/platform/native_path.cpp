#include "platform/native_path.h"

#include <algorithm>
#include <filesystem>

namespace relvane {
namespace {

constexpr char16_t escapedByteBase = 0xDC00; // U+DC80 to U+DCFF stand for the bytes 80 to FF

std::string bytesOf(TextView path) {
    std::string bytes;
    std::size_t done = 0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const bool escaped = path[i] >= 0xDC80 && path[i] <= 0xDCFF;
        const bool secondOfPair = i > done && path[i - 1] >= 0xD800 && path[i - 1] < 0xDC00;
        if (escaped && !secondOfPair) {
            bytes += toUtf8(path.substr(done, i - done));
            bytes += static_cast<char>(path[i] - escapedByteBase);
            done = i + 1;
        }
    }
    return bytes + toUtf8(path.substr(done));
}

} // namespace

std::string nativePath(TextView path) {
    std::string bytes = bytesOf(path);
    std::error_code ignored;
    if (bytes.find('\\') != std::string::npos && !std::filesystem::exists(bytes, ignored)) {
        std::ranges::replace(bytes, '\\', '/');
    }
    return bytes;
}

Text textOfNativePath(std::string_view bytes) {
    Text text;
    for (std::size_t at = 0; at < bytes.size();) {
        // One character at a time, so that a malformed byte can be told apart from a stored U+FFFD.
        const auto lead = static_cast<unsigned char>(bytes[at]);
        const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
        const std::string_view character = bytes.substr(at, length);
        const Text decoded = fromUtf8(character);
        if (toUtf8(decoded) == character) {
            text += decoded;
            at += length;
        } else {
            text += static_cast<char16_t>(escapedByteBase + static_cast<unsigned char>(bytes[at]));
            ++at;
        }
    }
    return text;
}

} // namespace relvane
