// Text of bytes in a Windows code page, and back. This is the only place where the program knows an encoding
// other than UTF-8 and UTF-16: Access 97 files, settings files and CSV files pass through here.
//
// The mapping is that of Windows, not that of the standard of similar name: code page 932 includes the NEC and
// IBM rows and the user-defined area (F040 to F9FC is U+E000 onward), and bytes to which a page gives no
// character become the character Windows gives them (81 in page 1252 is U+0081).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace relvane {

constexpr int japaneseCodePage = 932;
constexpr int latinCodePage = 1252;

// Whether `codePage` is one that the functions below know. Any other is taken for 1252.
bool isKnownCodePage(int codePage);

// A lead byte without a trail byte that could follow it becomes the page's default character ("・" in page 932,
// "?" in the others), and so does a pair without a meaning.
Text decode(std::span<const std::uint8_t> bytes, int codePage);
Text decode(std::string_view bytes, int codePage);

// Each UTF-16 unit to which the page gives no code becomes that of its look-alike, such as the minus (U+2212) the
// full-width hyphen (U+FF0D) of page 932 and the blank that does not break a plain one, and "?" where there is none.
std::string encode(TextView text, int codePage);

// Whether every unit of the text has a code in the page, that of its look-alike at least.
bool canEncode(TextView text, int codePage);

} // namespace relvane
