// Texts as bytes that sort the way the rows of a report do.
#pragma once

#include <sqlite3.h>

namespace relvane::sqlite {

// Adds two SQL functions to a connection. Given a text they answer a blob to sort by, any other value unchanged:
//   rv_kana(text)        Japanese order without regard to width, hiragana or katakana, and Latin case; texts that are
//                        alike in letters and voiced marks in the order of their forms
//   rv_code_units(text)  the order of UTF-16 code units
void addSortFunctions(sqlite3* connection);

} // namespace relvane::sqlite
