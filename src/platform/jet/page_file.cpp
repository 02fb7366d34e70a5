#include "jet/page_file.h"

#include <algorithm>

#include "jet/rc4.h"

namespace relvane::jet {
namespace {

constexpr std::size_t cachedPages = 512;
constexpr std::uint64_t mostPages = 0x1000000; // a row pointer has three bytes for the page

// The key of a page is the file's with the page's number mixed in.
void decodePage(Bytes& bytes, std::uint32_t fileKey, std::uint32_t number) {
    const std::uint32_t key = fileKey ^ number;
    const std::uint8_t keyBytes[] = {static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(key >> 8),
                                     static_cast<std::uint8_t>(key >> 16),
                                     static_cast<std::uint8_t>(key >> 24)};
    applyRc4(keyBytes, bytes);
}

} // namespace

PageFile::PageFile(std::unique_ptr<ByteSource> source)
    : source_(std::move(source)), header_(readFileHeader(*source_)), cache_(cachedPages) {
    pageCount_ = static_cast<std::uint32_t>(std::min<std::uint64_t>(size() / format().pageSize, mostPages));
}

Page PageFile::page(std::uint32_t number) const {
    if (!exists(number)) {
        failDamaged(number, u"ファイルにないページです");
    }
    Page& slot = cache_[number % cachedPages];
    if (!slot.bytes_ || slot.number() != number) {
        slot = load(number);
    }
    return slot;
}

Page PageFile::page(std::uint32_t number, PageKind kind) const {
    Page found = page(number);
    if (!found.is(kind)) {
        failDamaged(number, u"ページの種類が違います");
    }
    return found;
}

Page PageFile::load(std::uint32_t number) const {
    auto bytes = std::make_shared<Bytes>(format().pageSize);
    source_->read(std::uint64_t{number} * format().pageSize, *bytes);
    if (header_.pageKey != 0 && !header_.encryptedByAce) {
        decodePage(*bytes, header_.pageKey, number);
    }
    return {number, std::move(bytes)};
}

} // namespace relvane::jet
