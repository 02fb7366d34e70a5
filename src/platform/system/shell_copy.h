// The shell's copy of a file, which asks a person before it replaces one.
#pragma once

#include <functional>

#include "platform/dialogs.h"

namespace relvane {

using FileCopy = std::function<void(const Text& from, const Text& to)>;

// `copy` with the question before it: yes, unless the person says no, and then nothing happens. `dialogs` lives longer.
FileCopy shellCopy(Dialogs& dialogs, FileCopy copy);

} // namespace relvane
