// Parts of paths and of "key=value" lines. Both separators, "\" and "/", count.
#pragma once

#include <span>

#include "platform/text.h"

namespace relvane {

// Behind the last separator; a path without one is its own name.
Text GetFileNamePart(TextView path);

// Up to and including the last separator; empty for a path without one.
Text GetFolderPart(TextView path);

// The text behind the first "=" of a line, at most 255 characters, trimmed; empty without "=".
Text GetValuePart(TextView line);

// A name from a saving dialog with `extension` (".adb", in small letters) in the place of the same one in any case.
// What ends in its three letters without a dot loses four characters all the same; three characters alone are error 5.
Text withExtension(TextView path, TextView extension);

// The extensions of the files that hold an Access application, dot included, in small letters: those of 97 to 2003, of
// 2007 and later, compiled ones and libraries.
std::span<const TextView> databaseExtensions();

// Whether a path ends in one of them, in any case.
bool isDatabaseFile(TextView path);

// The path of a target without that ending, for the names of what is made from it: ".mdb" goes, and so does ".accdb".
// A path that ends otherwise loses four characters all the same.
Text withoutDatabaseExtension(TextView path);

// The folder with a separator at its end: the one that the path already uses, a backslash when it uses none.
Text withSeparator(TextView folder);

} // namespace relvane
