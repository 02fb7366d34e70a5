// Parts of paths and of "key=value" lines. Both separators, "\" and "/", count.
#pragma once

#include "platform/text.h"

namespace relvane {

// Behind the last separator; a path without one is its own name.
Text GetFileNamePart(TextView path);

// Up to and including the last separator; empty for a path without one.
Text GetFolderPart(TextView path);

// The text behind the first "=" of a line, at most 255 characters, trimmed; empty without "=".
Text GetValuePart(TextView line);

// The folder with a separator at its end: the one that the path already uses, a backslash when it uses none.
Text withSeparator(TextView folder);

} // namespace relvane
