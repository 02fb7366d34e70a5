// A database file as a row of pages, read on demand, decoded, and kept in a small cache.
#pragma once

#include <memory>
#include <vector>

#include "jet/byte_source.h"
#include "jet/byte_span.h"
#include "jet/file_header.h"
#include "jet/page_cipher.h"

namespace relvane::jet {

// One page. The bytes stay valid as long as a copy of the Page lives.
class Page {
public:
    Page() = default;
    Page(std::uint32_t number, std::shared_ptr<const Bytes> bytes)
        : number_(number), bytes_(std::move(bytes)) {}

    std::uint32_t number() const { return number_; }
    ByteSpan span() const { return {*bytes_, number_}; }
    std::uint8_t kind() const { return (*bytes_)[0]; }
    bool is(PageKind wanted) const { return kind() == static_cast<std::uint8_t>(wanted); }

private:
    friend class PageFile;
    std::uint32_t number_ = 0;
    std::shared_ptr<const Bytes> bytes_;
};

class PageFile {
public:
    // Errors: 3343 no Jet database, and those of openPageCipher.
    explicit PageFile(std::unique_ptr<ByteSource> source, TextView password = {});

    const FileHeader& header() const { return header_; }
    const JetFormat& format() const { return *header_.format; }
    const ByteSource& source() const { return *source_; }
    std::uint64_t size() const { return source_->size(); }
    std::uint32_t pageCount() const { return pageCount_; } // a short page at the end does not count
    bool exists(std::uint32_t page) const { return page >= 1 && page < pageCount_; }

    // Error 3049 when the file has no such page (page 0 is not handed out), or, in the second form, when the page
    // is of another kind.
    Page page(std::uint32_t number) const;
    Page page(std::uint32_t number, PageKind kind) const;

private:
    Page load(std::uint32_t number) const;

    std::unique_ptr<ByteSource> source_;
    FileHeader header_;
    std::unique_ptr<PageCipher> cipher_; // none for plain pages
    std::uint32_t pageCount_ = 0;
    mutable std::vector<Page> cache_; // page n stands in slot n modulo the size
};

} // namespace relvane::jet
