// The command `inspect`: the whole object model of a database as JSON.
#include <functional>
#include <iostream>

#include "command.h"
#include "inspect.h"
#include "link_options.h"
#include "password_option.h"
#include "system/linux_files.h"
#include "system/program_folder.h"

namespace relvane::cli {

int runInspect(const Arguments& arguments) {
    // An inspection works in no program folder and keeps nothing; it only reads which mappings the user keeps.
    const auto named = arguments.value("--program-folder");
    LinuxFiles files(withKeptMappings(
        givenMappings(arguments),
        whichProgramFolder(named ? std::optional<std::filesystem::path>(*named) : std::nullopt)));
    writeInspection(std::cout, arguments.positional()[0],
                    {.password = givenPassword(arguments).value_or(Text()),
                     .resolveLink = std::bind_front(&Files::resolveLink, &files)});
    return exitDone;
}

} // namespace relvane::cli
