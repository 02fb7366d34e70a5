#include "jet/page_file.h"

#include <algorithm>

namespace relvane::jet {
namespace {

constexpr std::size_t cachedPages = 512;
constexpr std::uint64_t mostPages = 0x1000000; // a row pointer has three bytes for the page

} // namespace

PageFile::PageFile(std::unique_ptr<ByteSource> source, TextView password)
    : source_(std::move(source)),
      header_(readFileHeader(*source_)),
      cipher_(openPageCipher(header_, password)),
      cache_(cachedPages) {
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
    if (cipher_) {
        cipher_->decode(number, *bytes);
    }
    return {number, std::move(bytes)};
}

} // namespace relvane::jet
