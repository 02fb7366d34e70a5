// The command `inspect`: the whole object model of a database as JSON.
#include <iostream>

#include "command.h"
#include "inspect.h"

namespace relvane::cli {

int runInspect(const Arguments& arguments) {
    writeInspection(std::cout, arguments.positional()[0]);
    return exitDone;
}

} // namespace relvane::cli
