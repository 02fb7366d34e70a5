#include "sqlite/sort_keys.h"

#include <cstdint>
#include <vector>

#include <unicode/ucol.h>

#include "platform/runtime_error.h"

namespace relvane::sqlite {
namespace {

// Secondary strength: ｱ, ア and あ are one letter, カ and ガ are two.
UCollator* newCollator() {
    UErrorCode status = U_ZERO_ERROR;
    UCollator* collator = ucol_open("ja", &status);
    if (U_FAILURE(status)) {
        throw RunTimeError(ErrorNumber::FileAccess, u"ICU: ja");
    }
    ucol_setStrength(collator, UCOL_SECONDARY);
    return collator;
}

const char16_t* unitsOf(sqlite3_value* text, std::size_t& count) {
    const void* units = sqlite3_value_text16(text);
    count = static_cast<std::size_t>(sqlite3_value_bytes16(text)) / sizeof(char16_t);
    return static_cast<const char16_t*>(units);
}

void kana(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) != SQLITE_TEXT) {
        sqlite3_result_value(context, arguments[0]);
        return;
    }
    const auto* collator = static_cast<const UCollator*>(sqlite3_user_data(context));
    std::size_t count = 0;
    const char16_t* units = unitsOf(arguments[0], count);
    std::vector<std::uint8_t> key(count * 4 + 16);
    const auto keyOf = [&] {
        return ucol_getSortKey(collator, units, static_cast<int32_t>(count), key.data(),
                               static_cast<int32_t>(key.size()));
    };
    auto size = static_cast<std::size_t>(keyOf());
    if (size > key.size()) {
        key.resize(size);
        size = static_cast<std::size_t>(keyOf());
    }
    sqlite3_result_blob64(context, key.data(), size, SQLITE_TRANSIENT);
}

void codeUnits(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) != SQLITE_TEXT) {
        sqlite3_result_value(context, arguments[0]);
        return;
    }
    std::size_t count = 0;
    const char16_t* units = unitsOf(arguments[0], count);
    std::vector<std::uint8_t> key; // big-endian, so that bytes compare as units do
    key.reserve(count * 2 + 1);
    for (std::size_t i = 0; i < count; ++i) {
        key.push_back(static_cast<std::uint8_t>(units[i] >> 8));
        key.push_back(static_cast<std::uint8_t>(units[i] & 0xff));
    }
    sqlite3_result_blob64(context, key.data(), key.size(), SQLITE_TRANSIENT);
}

} // namespace

void addSortFunctions(sqlite3* connection) {
    constexpr int flags = SQLITE_UTF16 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(connection, "rv_kana", 1, flags, newCollator(), kana, nullptr, nullptr,
                               [](void* collator) { ucol_close(static_cast<UCollator*>(collator)); });
    sqlite3_create_function_v2(connection, "rv_code_units", 1, flags, nullptr, codeUnits, nullptr, nullptr,
                               nullptr);
}

} // namespace relvane::sqlite
