// The end of the program, thrown by the code that decides it and caught by the desk's dispatcher alone, so that every
// object on the way is released.
#pragma once

namespace relvane {

struct ProgramEnd {};

} // namespace relvane
