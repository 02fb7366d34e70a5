// The menu commands that RunCommand runs, by the numbers of AcCommand.
#pragma once

#include <cstdint>

#include "platform/text.h"

namespace relvane::access {

// "acCmdSaveRecord" for 97; empty for a number that is not known to be a command of Access 97.
TextView commandName(std::uint16_t number);

} // namespace relvane::access
