#include "jet/page_cipher.h"

#include "jet/office_cipher.h"

namespace relvane::jet {
namespace {

// Jet's own encoding, which hides the pages from a look at the file and needs no password.
class EncodedPages : public PageCipher {
public:
    explicit EncodedPages(std::uint32_t fileKey) : fileKey_(fileKey) {}
    void decode(std::uint32_t page, std::span<std::uint8_t> bytes) const override {
        applyRc4(pageKeyBytes(fileKey_, page), bytes);
    }

private:
    std::uint32_t fileKey_;
};

} // namespace

std::unique_ptr<PageCipher> openPageCipher(const FileHeader& header, TextView password) {
    if (header.encryptedByAce) {
        return openOfficeCipher(header, password);
    }
    return header.pageKey == 0 ? nullptr : std::make_unique<EncodedPages>(header.pageKey);
}

} // namespace relvane::jet
