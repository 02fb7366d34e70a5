// Text as the whole program knows it: UTF-16, so that lengths and positions are those of the language being
// analysed. Bytes in another encoding are turned into Text at the edges only (codepage.h, and UTF-8 here).
#pragma once

#include <string>
#include <string_view>

namespace relvane {

using Text = std::u16string;
using TextView = std::u16string_view;

// UTF-8 bytes of a text; an unpaired surrogate becomes U+FFFD.
std::string toUtf8(TextView text);

// Text of UTF-8 bytes; each malformed byte becomes U+FFFD.
Text fromUtf8(std::string_view bytes);

// One character turned into its one-character capital (full-width Latin, Greek and Cyrillic included);
// a character whose capital would be longer than one character, or that has none, stays as it is.
char16_t upperCase(char16_t character);
Text upperCase(TextView text);

// Equality without regard to case: the way names are looked up in databases and in settings files.
bool equalsIgnoringCase(TextView left, TextView right);

// Decimal digits of an integer.
Text toText(long long number);

} // namespace relvane
