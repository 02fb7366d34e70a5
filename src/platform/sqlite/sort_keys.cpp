#include "sqlite/sort_keys.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include <unicode/ucol.h>
#include <unicode/unorm2.h>

#include "platform/runtime_error.h"
#include "platform/text.h"

namespace relvane::sqlite {
namespace {

// The keys of Japanese order. Rows that belong together name the same objects and procedures, so the keys of some texts
// are kept.
class KanaKeys {
public:
    using Key = std::vector<std::uint8_t>;

    // Letters count first, so あ, ア and ｱ are one and a long vowel is the vowel before it; then voiced marks; then, in
    // texts that are alike in these, what writing has besides: ー before ッ before ツ, hiragana before katakana.
    KanaKeys() {
        UErrorCode status = U_ZERO_ERROR;
        collator_.reset(ucol_open("ja", &status));
        oneWidth_ = unorm2_getNFKCInstance(&status);
        if (U_FAILURE(status)) {
            throw RunTimeError(ErrorNumber::FileAccess, u"ICU: ja");
        }
        ucol_setStrength(collator_.get(), UCOL_QUATERNARY);
    }

    const Key& of(TextView text) {
        Known& known = known_[std::hash<TextView>()(text) % known_.size()];
        if (known.key.empty() || known.text != text) {
            known.text = text;
            make(known.key, text);
        }
        return known.key;
    }

private:
    struct Known {
        Text text;
        Key key;
    };
    struct Close {
        void operator()(UCollator* collator) const { ucol_close(collator); }
    };

    void make(Key& key, TextView text) const {
        const Text whole = inOneWidth(text);
        key.resize(whole.size() * 4 + 16);
        const auto write = [&] {
            return static_cast<std::size_t>(ucol_getSortKey(collator_.get(), whole.data(),
                                                            static_cast<int32_t>(whole.size()), key.data(),
                                                            static_cast<int32_t>(key.size())));
        };
        const std::size_t needed = write();
        const bool fits = needed <= key.size();
        key.resize(needed);
        if (!fits) {
            write();
        }
    }

    // The collator knows the long vowel behind full-width letters alone.
    Text inOneWidth(TextView text) const {
        Text whole(text.size() + 16, u'\0');
        const auto write = [&] {
            UErrorCode status = U_ZERO_ERROR;
            return static_cast<std::size_t>(unorm2_normalize(oneWidth_, text.data(),
                                                             static_cast<int32_t>(text.size()), whole.data(),
                                                             static_cast<int32_t>(whole.size()), &status));
        };
        const std::size_t needed = write();
        const bool fits = needed <= whole.size();
        whole.resize(needed);
        if (!fits) {
            write();
        }
        return whole;
    }

    std::unique_ptr<UCollator, Close> collator_;
    const UNormalizer2* oneWidth_ = nullptr;
    std::array<Known, 64> known_;
};

TextView viewOf(sqlite3_value* text) {
    const void* units = sqlite3_value_text16(text);
    const auto count = static_cast<std::size_t>(sqlite3_value_bytes16(text)) / sizeof(char16_t);
    return {static_cast<const char16_t*>(units), count};
}

void kana(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) != SQLITE_TEXT) {
        sqlite3_result_value(context, arguments[0]);
        return;
    }
    const KanaKeys::Key& key = static_cast<KanaKeys*>(sqlite3_user_data(context))->of(viewOf(arguments[0]));
    sqlite3_result_blob64(context, key.data(), key.size(), SQLITE_TRANSIENT);
}

void codeUnits(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) != SQLITE_TEXT) {
        sqlite3_result_value(context, arguments[0]);
        return;
    }
    const TextView text = viewOf(arguments[0]);
    std::vector<std::uint8_t> key; // big-endian, so that bytes compare as units do
    key.reserve(text.size() * 2 + 1);
    for (const char16_t unit : text) {
        key.push_back(static_cast<std::uint8_t>(unit >> 8));
        key.push_back(static_cast<std::uint8_t>(unit & 0xff));
    }
    sqlite3_result_blob64(context, key.data(), key.size(), SQLITE_TRANSIENT);
}

} // namespace

void addSortFunctions(sqlite3* connection) {
    constexpr int flags = SQLITE_UTF16 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(connection, "rv_kana", 1, flags, new KanaKeys, kana, nullptr, nullptr,
                               [](void* keys) { delete static_cast<KanaKeys*>(keys); });
    sqlite3_create_function_v2(connection, "rv_code_units", 1, flags, nullptr, codeUnits, nullptr, nullptr,
                               nullptr);
}

} // namespace relvane::sqlite
