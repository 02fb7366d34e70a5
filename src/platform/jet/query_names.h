// Names of tables, fields and parameters as the statements of saved queries spell them: in brackets where the
// bare name would not be read as one word.
#pragma once

#include "platform/text.h"

namespace relvane::jet {

// A character that may stand in a name without brackets: a letter of any script, a digit or "_".
bool isNameCharacter(char16_t character);

// Where a name stands. Behind or before a dot or "!" a reserved word needs no brackets.
enum class NamePlace { Alone, PartOfPath };

// The name as a statement prints it. A name that already stands in brackets stays as it is.
Text printedName(TextView name, NamePlace place = NamePlace::Alone);

// The name of a parameter. Its parts are stored joined by "!" and without brackets; one that already holds a
// bracket is printed as it is.
Text printedParameter(TextView name);

// The name that a printed one stands for.
Text withoutBrackets(TextView name);

// A form of a name that is equal for names that differ in case alone.
Text nameKey(TextView name);

} // namespace relvane::jet
