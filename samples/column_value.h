// A value in the bytes that a column of some type stores.
#pragma once

#include <optional>

#include "sample_builder/database_spec.h"
#include "sample_builder/text_coding.h"

namespace relvane::samples {

// The number behind a value of a Single, Double, Date or Currency column: any number, or a date.
double numberOf(const Value& value);
Currency currencyOf(const Value& value);

// Bytes of a value in the fixed form of numbers, dates and GUIDs; the text or the bytes of the other types (a text
// column also takes bytes, which are stored as they stand). Boolean has none. Not for Null.
// std::invalid_argument when value and type do not go together.
Bytes storedBytes(const Value& value, const ColumnSpec& column, TextCoding coding);

// The size of a Text or Binary column as it is told: characters, or bytes in a code page. Without one in the model it is
// the longest that the format has.
std::size_t toldSize(const ColumnSpec& column, TextCoding coding);

// Bytes that a type takes in the row: 0 for Boolean, the head's for long values, those of the size for Text and Binary.
std::size_t storedSize(const ColumnSpec& column, TextCoding coding);

bool isLongValue(ColumnType type);
bool hasFixedSize(ColumnType type); // numbers, dates, GUID, Boolean

} // namespace relvane::samples
