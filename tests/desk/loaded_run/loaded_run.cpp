// Starts the program with an analysis file, as its command line gives one, presses every preview button that is open,
// and prints the reports that were shown.
#include <iostream>

#include "core/panels.h"
#include "desk/real_program.h"

int main(int argc, char** argv) {
    using namespace relvane;
    if (argc != 2) {
        return 2;
    }
    test::RealProgram program;
    program.desk->start(u"\"" + textOfNativePath(argv[1]) + u"\"");
    for (const auto preview : previewButtons()) {
        program.press(program.form().*preview);
    }
    for (const Text& call : program.reportApps.calls) {
        if (call.starts_with(u"OpenReport ")) {
            std::cout << toUtf8(call) << '\n';
        }
    }
    return program.desk->ended() || !program.dialogs.boxes.empty() ? 1 : 0;
}
