// The command `press`: any panel by hand, for scripts.
#include <filesystem>
#include <iostream>
#include <unistd.h>

#include "command.h"
#include "password_option.h"
#include "platform/native_path.h"
#include "press_steps.h"
#include "session.h"
#include "working_folder.h"

namespace relvane::cli {
namespace {

// A script's file names are the caller's: made absolute before the program changes its folder.
Text absolutePath(const std::string& path) {
    return textOfNativePath(std::filesystem::absolute(path).string());
}

} // namespace

int runPress(const Arguments& arguments) {
    const std::filesystem::path target =
        std::filesystem::absolute(arguments.positional()[0]).lexically_normal();
    const bool quiet = arguments.has("--quiet");
    const auto given = givenMappings(arguments);
    const auto password = givenPassword(arguments);

    std::vector<Step> steps;
    std::deque<Text> files;
    std::deque<int> answers;
    for (std::size_t i = 1; i < arguments.positional().size(); ++i) {
        const Step step = parseStep(arguments.positional()[i]);
        if (step.hasValue && step.window.empty() && step.control == "file") {
            files.push_back(absolutePath(step.value));
        } else if (step.hasValue && step.window.empty() && step.control == "answer") {
            answers.push_back(parseAnswer(step.value));
        } else {
            steps.push_back(step);
        }
    }

    const WorkingFolder folder(arguments, WorkingFolder::Kind::UsersOwn);
    Session session(folder.path(), {}, quiet, !quiet && ::isatty(STDERR_FILENO) != 0, nullptr,
                    folder.linkMappings(given));
    session.dialogs.password = password;
    if (!session.select(target)) {
        return exitErrorReported;
    }
    session.dialogs.files = std::move(files);
    session.dialogs.boxAnswers = std::move(answers);
    for (const Step& step : steps) {
        if (session.desk.ended()) {
            std::cerr << "relvane-cli: the program has ended before " << step.control << '\n';
            return exitErrorReported;
        }
        carryOut(session.desk, step);
        letTimePass(session.desk);
    }
    if (!session.dialogs.files.empty() || !session.dialogs.boxAnswers.empty()) {
        throw UsageError("an answer was not asked for");
    }
    return session.hasFailed() ? exitErrorReported : exitDone;
}

} // namespace relvane::cli
