#include "jet/file_header.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "jet/byte_span.h"
#include "platform/codepage.h"

namespace relvane::jet {
namespace {

constexpr std::string_view jetSignature{"Standard Jet DB\0", 16};
constexpr std::string_view aceSignature{"Standard ACE DB\0", 16};
constexpr int newestVersion = 6;

// Where Access 1.0 to 2.0 keep the version of their format, and the values they write there.
constexpr std::size_t oldVersion = 0x40A;
constexpr std::uint8_t oldVersions[] = {7, 8, 9};

bool hasSignature(const ByteSpan& page, std::string_view signature) {
    return std::ranges::equal(page.part(header::signature, signature.size()).bytes(), signature,
                              [](std::uint8_t byte, char c) { return byte == static_cast<std::uint8_t>(c); });
}

void unmask(Bytes& page, const JetFormat& format) {
    for (std::size_t i = 0; i < format.header.maskedLength; ++i) {
        page[header::masked + i] ^= header::mask[i];
    }
}

Text jet3Password(const ByteSpan& page, int codePage) {
    const auto bytes = page.part(header::password, jet3.header.passwordLength).bytes();
    return decode(bytes.first(static_cast<std::size_t>(std::ranges::find(bytes, 0) - bytes.begin())),
                  codePage);
}

// The password of Jet 4 is XORed once more, with the days of the creation date.
Text jet4Password(const ByteSpan& page, bool isAce) {
    const double created = page.f64(header::creationDate);
    const double limit = 2147483647.0;
    const auto days = static_cast<std::uint32_t>(
        std::isfinite(created) && std::fabs(created) < limit ? static_cast<std::int32_t>(created) : 0);
    Text password;
    bool allEqual = true;
    std::uint16_t first = 0;
    for (std::size_t i = 0; i < jet4.header.passwordLength; i += 2) {
        const auto mask = static_cast<std::uint16_t>(i % 4 == 0 ? days & 0xFFFF : days >> 16);
        const auto unit = static_cast<std::uint16_t>(page.u16(header::password + i) ^ mask);
        first = i == 0 ? unit : first;
        allEqual = allEqual && unit == first;
        password += static_cast<char16_t>(unit);
    }
    if (isAce && allEqual) {
        return {}; // what an encrypted ACE file holds there
    }
    return password.substr(0, password.find(u'\0'));
}

} // namespace

FileHeader readFileHeader(const ByteSource& source) {
    FileHeader result;
    if (source.size() < jet3.pageSize) {
        throw RunTimeError(ErrorNumber::UnrecognizedFormat);
    }
    Bytes bytes(std::min<std::uint64_t>(source.size(), jet4.pageSize));
    source.read(0, bytes);
    const ByteSpan page(bytes, 0);
    const bool isAce = hasSignature(page, aceSignature);
    if (!isAce && !hasSignature(page, jetSignature)) {
        throw RunTimeError(ErrorNumber::UnrecognizedFormat);
    }
    result.version = page.u8(header::version);
    if (result.version > newestVersion) {
        throw RunTimeError(ErrorNumber::UnrecognizedFormat);
    }
    result.format = result.isJet3() ? &jet3 : &jet4;
    if (bytes.size() < result.format->pageSize) {
        throw RunTimeError(ErrorNumber::UnrecognizedFormat);
    }
    if (result.isJet3() && std::ranges::find(oldVersions, page.u8(oldVersion)) != std::end(oldVersions)) {
        result.isBeforeJet3 = true;
        return result;
    }

    unmask(bytes, *result.format);
    result.statedCodePage = page.u16(header::codePage);
    result.codePage = isKnownCodePage(result.statedCodePage) ? result.statedCodePage : latinCodePage;
    result.pageKey = page.u32(header::databaseKey);
    if (result.isJet3()) {
        result.sortOrder = page.u16(header::sortOrder);
        result.password = jet3Password(page, result.codePage);
    } else {
        result.sortOrder = page.u16(header::jet4SortOrder);
        result.encryptedByAce = result.version >= 2 && result.pageKey != 0;
        if (result.encryptedByAce) {
            result.encryption = page.part(header::encryption, page.u16(header::encryptionLength)).copy();
        } else {
            result.password = jet4Password(page, isAce);
        }
    }
    return result;
}

} // namespace relvane::jet
