#include "platform/codepage.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include <iconv.h>

namespace relvane {
namespace {

// A code of a page and the character that Windows gives it where iconv gives none or another one.
struct Exception {
    std::uint8_t byte;
    char16_t character;
};

struct Leads {
    unsigned first, last;
};

struct PageDescription {
    int number;
    const char* iconvName;
    char16_t defaultCharacter; // for what has no meaning
    std::vector<Exception> exceptions;
    std::vector<Leads> leads = {}; // bytes that begin a pair
};

// clang-format off
const PageDescription descriptions[] = {
    {1252, "CP1252", u'?', {}},
    {932, "CP932", u'・',
     {{0x80, 0x80}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}},
     {{0x81, 0x9F}, {0xE0, 0xFC}}},
    {936, "CP936", u'?', {{0x80, 0x20AC}, {0xFF, 0xF8F5}}, {{0x81, 0xFE}}},
    {949, "CP949", u'?', {{0x80, 0x80}, {0xFF, 0xF8F7}}, {{0x81, 0xFE}}},
    {950, "CP950", u'?', {{0x80, 0x80}, {0xFF, 0xF8F8}}, {{0x81, 0xFE}}},
    {1361, "JOHAB", u'?', {}, {{0x84, 0xD3}, {0xD8, 0xDE}, {0xE0, 0xF9}}},
    {874, "CP874", u'?',
     {{0xDB, 0xF8C1}, {0xDC, 0xF8C2}, {0xDD, 0xF8C3}, {0xDE, 0xF8C4},
      {0xFC, 0xF8C5}, {0xFD, 0xF8C6}, {0xFE, 0xF8C7}, {0xFF, 0xF8C8}}},
    {1250, "CP1250", u'?', {}},
    {1251, "CP1251", u'?', {}},
    {1253, "CP1253", u'?', {{0xAA, 0xF8F9}, {0xD2, 0xF8FA}, {0xFF, 0xF8FB}}},
    {1254, "CP1254", u'?', {}},
    {1255, "CP1255", u'?',
     {{0xD9, 0xF88D}, {0xDA, 0xF88E}, {0xDB, 0xF88F}, {0xDC, 0xF890}, {0xDD, 0xF891}, {0xDE, 0xF892},
      {0xDF, 0xF893}, {0xFB, 0xF894}, {0xFC, 0xF895}, {0xFF, 0xF896}}},
    {1256, "CP1256", u'?', {}},
    {1257, "CP1257", u'?', {{0xA1, 0xF8FC}, {0xA5, 0xF8FD}}},
    {1258, "CP1258", u'?', {}},
    {437, "CP437", u'?', {}},
    {737, "CP737", u'?', {}},
    {775, "CP775", u'?', {}},
    {850, "CP850", u'?', {}},
    {852, "CP852", u'?', {}},
    {855, "CP855", u'?', {}},
    {857, "CP857", u'?', {}},
    {860, "CP860", u'?', {}},
    {861, "CP861", u'?', {}},
    {862, "CP862", u'?', {}},
    {863, "CP863", u'?', {}},
    {864, "CP864", u'?', {}},
    {865, "CP865", u'?', {}},
    {866, "CP866", u'?', {}},
    {869, "CP869", u'?', {}},
    {10000, "MACINTOSH", u'?', {}},
};
// clang-format on

const PageDescription* describe(int codePage) {
    const auto found = std::ranges::find(descriptions, codePage, &PageDescription::number);
    return found == std::end(descriptions) ? nullptr : &*found;
}

// One direction of iconv, used for one character at a time while a page's tables are filled.
class Converter {
public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter() {
        if (isOpen()) {
            iconv_close(handle_);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    // The bytes that `input` becomes; empty when it has no meaning or is only the beginning of something.
    std::string operator()(std::string input) {
        if (!isOpen()) {
            return {};
        }
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        char output[16];
        char* in = input.data();
        char* out = output;
        std::size_t inLeft = input.size();
        std::size_t outLeft = sizeof output;
        if (iconv(handle_, &in, &inLeft, &out, &outLeft) != 0 || inLeft != 0) {
            return {};
        }
        // Pages with combining marks hold a letter back until it is asked for.
        iconv(handle_, nullptr, nullptr, &out, &outLeft);
        return {output, out};
    }

private:
    iconv_t handle_;
};

constexpr char16_t none = 0xFFFF; // not a character, so no page maps to it

// Characters that look like one another. Where a page has no code for the first, that of the second is taken.
struct LookAlike {
    char16_t character, likeIt;
};
constexpr LookAlike lookAlikes[] = {
    {u'\u301C', u'\uFF5E'}, // wave dash: the two tables of JIS characters differ in it and in the next six
    {u'\u2212', u'\uFF0D'}, // minus
    {u'\u2016', u'\u2225'}, // double bar
    {u'\u2014', u'\u2015'}, // long dash
    {u'\u00A2', u'\uFFE0'}, // cent
    {u'\u00A3', u'\uFFE1'}, // pound
    {u'\u00AC', u'\uFFE2'}, // not
    {u'\u00A5', u'\\'},     // yen: the backslash of Japanese faces
    {u'\u203E', u'~'},      // overline, of old ones
    {u'\u00A6', u'|'},      // broken bar
    {u'\u00AD', u'-'},      // soft hyphen
    {u'\u2011', u'-'},      // hyphen that does not break
    {u'\u00B7', u'\u30FB'}, // middle dot
    {u'\u00B5', u'\u03BC'}, // micro
    {u'\u00A0', u' '},      // the blank that does not break
};

bool canTrail(std::uint8_t byte) {
    return byte >= 0x31 && byte != 0x7F && byte != 0xFF;
}

class Page {
public:
    explicit Page(const PageDescription& description)
        : description_(description), defaultCharacter_(description.defaultCharacter) {
        Converter toUtf16("UTF-16LE", description.iconvName);
        fillSingle(toUtf16, description);
    }

    Text decode(std::span<const std::uint8_t> bytes) const {
        Text text(bytes.size(), u'\0');
        std::size_t length = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const std::uint8_t byte = bytes[i];
            char16_t character = single_[byte];
            if (character == none) { // the first byte of a pair
                if (i + 1 < bytes.size() && canTrail(bytes[i + 1])) {
                    character = (*pairs_[byte])[bytes[++i]];
                }
                character = character == none ? defaultCharacter_ : character;
            }
            text[length++] = character;
        }
        text.resize(length);
        return text;
    }

    // By UTF-16 unit: 0 for a unit without a code; the code of U+0000 is 0 as well. Filled at the first use, which
    // takes longer than all the rest and which a program that reads alone never needs.
    const std::vector<std::uint16_t>& codes() const {
        std::call_once(codesFilled_, [this] { fillCodes(); });
        return codes_;
    }

private:
    using Trails = std::array<char16_t, 256>;

    static char16_t unitOf(const std::string& utf16) {
        return utf16.size() == 2 ? static_cast<char16_t>(static_cast<std::uint8_t>(utf16[0]) |
                                                         static_cast<std::uint8_t>(utf16[1]) << 8)
                                 : none;
    }

    void fillSingle(Converter& toUtf16, const PageDescription& description) {
        single_.fill(none);
        for (unsigned byte = 0; byte < 256; ++byte) {
            single_[byte] = unitOf(toUtf16({static_cast<char>(byte)}));
        }
        for (const Exception& exception : description.exceptions) {
            single_[exception.byte] = exception.character;
        }
        for (unsigned byte = 0; byte < 256; ++byte) {
            const bool isLead = std::ranges::any_of(description.leads, [&](const Leads& leads) {
                return byte >= leads.first && byte <= leads.last;
            });
            if (isLead) {
                fillPairs(toUtf16, byte);
            } else if (single_[byte] == none) {
                // Windows lets a byte without a character pass as the control character of its number.
                single_[byte] = byte < 0xA0 ? static_cast<char16_t>(byte) : defaultCharacter_;
            }
        }
    }

    void fillPairs(Converter& toUtf16, unsigned lead) {
        single_[lead] = none;
        pairs_[lead] = std::make_unique<Trails>();
        for (unsigned trail = 0; trail < 256; ++trail) {
            (*pairs_[lead])[trail] =
                canTrail(static_cast<std::uint8_t>(trail))
                    ? unitOf(toUtf16({static_cast<char>(lead), static_cast<char>(trail)}))
                    : none;
        }
    }

    void fillCodes() const {
        Converter fromUtf16(description_.iconvName, "UTF-16LE");
        codes_.resize(0x10000);
        for (unsigned unit = 1; unit < 0x10000; ++unit) {
            const std::string code =
                fromUtf16({static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)});
            if (code.size() == 1 || code.size() == 2) {
                const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>(code[i]); };
                codes_[unit] =
                    static_cast<std::uint16_t>(code.size() == 1 ? byteAt(0) : byteAt(0) << 8 | byteAt(1));
            }
        }
        // What only Windows decodes must also find its way back.
        for (unsigned byte = 0; byte < 256; ++byte) {
            const char16_t unit = single_[byte];
            if (unit != none && unit != u'?' && codes_[unit] == 0) {
                codes_[unit] = static_cast<std::uint16_t>(byte);
            }
        }
        for (const LookAlike& pair : lookAlikes) {
            if (codes_[pair.character] == 0) {
                codes_[pair.character] = codes_[pair.likeIt];
            }
        }
    }

    const PageDescription& description_;
    char16_t defaultCharacter_;
    Trails single_;                                  // `none` for a byte that begins a pair
    std::array<std::unique_ptr<Trails>, 256> pairs_; // by lead byte
    mutable std::once_flag codesFilled_;
    mutable std::vector<std::uint16_t> codes_;
};

// Filled at the first use: a page of pairs costs a few milliseconds, and most runs need one or two pages.
const Page& pageOf(int codePage) {
    static std::mutex mutex;
    static std::array<std::unique_ptr<const Page>, std::size(descriptions)> pages;
    static std::array<std::atomic<const Page*>, std::size(descriptions)> filled; // what needs no lock
    const PageDescription* description = describe(codePage);
    if (description == nullptr) {
        description = describe(latinCodePage);
    }
    const auto place = static_cast<std::size_t>(description - descriptions);
    if (const Page* page = filled[place].load(std::memory_order_acquire)) {
        return *page;
    }
    const std::lock_guard lock(mutex);
    if (!pages[place]) {
        pages[place] = std::make_unique<const Page>(*description);
        filled[place].store(pages[place].get(), std::memory_order_release);
    }
    return *pages[place];
}

} // namespace

bool isKnownCodePage(int codePage) {
    return describe(codePage) != nullptr;
}

Text decode(std::span<const std::uint8_t> bytes, int codePage) {
    return pageOf(codePage).decode(bytes);
}

Text decode(std::string_view bytes, int codePage) {
    return decode(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), codePage);
}

std::string encode(TextView text, int codePage) {
    const std::vector<std::uint16_t>& codes = pageOf(codePage).codes();
    std::string bytes;
    bytes.reserve(text.size());
    for (const char16_t unit : text) {
        const std::uint16_t code = codes[unit];
        if (code > 0xFF) {
            bytes += static_cast<char>(code >> 8);
        }
        bytes += code == 0 && unit != 0 ? '?' : static_cast<char>(code & 0xFF);
    }
    return bytes;
}

bool canEncode(TextView text, int codePage) {
    const std::vector<std::uint16_t>& codes = pageOf(codePage).codes();
    return std::ranges::all_of(text, [&](char16_t unit) { return unit == 0 || codes[unit] != 0; });
}

} // namespace relvane
