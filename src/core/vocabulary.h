// Words for the raw values that the analyses read from the target. Every function takes a text (numbers as their
// decimal digits) and compares exactly; an unknown input gives "?", or "System" for the type of a query.
#pragma once

#include "platform/text.h"

namespace relvane {

inline constexpr TextView unknownWord = u"?";
inline constexpr TextView systemQueryWord = u"System";

Text GetQueryTypeName(TextView type);         // QueryDef.Type
Text GetControlTypeName(TextView type);       // ControlType of a control; an English word
Text GetControlTypeLabel(TextView word);      // the Japanese word for that English word
Text GetFieldTypeName(TextView type);         // Field.Type
Text GetEventLabel(TextView property);        // name of an event property
Text GetLineStyleName(TextView style);        // BorderStyle
Text GetImeModeName(TextView mode);           // IMEMode
Text GetRowSourceTypeName(TextView property); // the property's text
Text GetOleTypeName(TextView type);           // PictureType
Text GetSizeModeName(TextView mode);          // SizeMode
Text GetYesNoName(TextView boolean);          // the text of a Boolean

} // namespace relvane
