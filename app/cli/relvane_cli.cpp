// relvane-cli: the program without windows. Chooses the command, prints the help, turns failures into exit codes.
#include <QGuiApplication>
#include <algorithm>
#include <iostream>

#include "command.h"
#include "link_options.h"
#include "password_option.h"
#include "platform/runtime_error.h"
#include "press_steps.h"

namespace relvane::cli {

const Option commonOptions[4] = {
    {"--program-folder", "DIR", "work in this folder (work database, settings)"},
    {"--quiet", "", "write nothing but errors"},
    {"--help", "", "this text"},
    {"--version", "", "the program's version"},
};

namespace {

constexpr Option documentOptions[] = {
    {"--out", "DIR", "where the folder is made (default: out)"},
    {"--title", "TEXT", "the line that all reports print as the name of the file"},
    {"--compare", "FILE.adb", "with the changes since that analysis file"},
    {"--pattern", "P.apt", "only the analyses of that pattern, as the batch runs them"},
    {"--formats", "LIST", "pdf, csv, text, xls with commas between (default: pdf,csv,text)"},
    {"--images", "", "with a picture of every form, in the folder images"},
    {"--without-links", "", "leave linked tables out of the lists of tables and indexes"},
    mapOption,
    passwordOption,
};
constexpr Option saveOptions[] = {
    {"--without-links", "", "leave linked tables out of the analyses of tables and indexes"},
    mapOption,
    passwordOption};
constexpr Option imageOptions[] = {{"--design", "", "as the designer shows the form"},
                                   {"--window", "", "with frame and title bar"},
                                   mapOption,
                                   passwordOption};
constexpr Option compareOptions[] = {{"--out", "DIR", "where the report is made (default: out)"},
                                     passwordOption};
constexpr Option targetOptions[] = {mapOption, passwordOption};
constexpr Option reportOptions[] = {{"--pdf", "FILE", "the file to write"}};

constexpr Command commands[] = {
    {"document", "TARGET [--out DIR] [--pattern P.apt] [--formats LIST] ...",
     "makes the whole folder of paper of a database", documentOptions, 1, 1, runDocument},
    {"save", "TARGET FILE.adb", "analyses all of a database and keeps that as an analysis file", saveOptions,
     2, 2, runSave},
    {"compare", "TARGET FILE.adb [--out DIR]", "reports what has changed since an analysis file was saved",
     compareOptions, 2, 2, runCompare},
    {"image", "TARGET FORM FILE", "draws a form into a .png or .bmp file", imageOptions, 3, 3, runImage},
    {"press", "TARGET STEP...",
     "presses the panel by hand: NAME=VALUE chooses, NAME presses, file=PATH and answer=BUTTON answer",
     targetOptions, 1, -1, runPress},
    {"inspect", "TARGET", "prints all that the reader sees in a database as JSON", targetOptions, 1, 1,
     runInspect},
    {"report", "NAME --pdf FILE", "writes one report of the work database", reportOptions, 1, 1, runReport},
};

void printOptions(std::span<const Option> options) {
    for (const Option& option : options) {
        std::string left(option.name);
        if (!option.valueName.empty()) {
            left += " " + std::string(option.valueName);
        }
        left.resize(std::max<std::size_t>(left.size() + 1, 24), ' ');
        std::cout << "    " << left << option.help << '\n';
    }
}

void printHelp() {
    std::cout << "relvane-cli: documents Microsoft Access databases without Access\n\n";
    for (const Command& command : commands) {
        std::cout << "  relvane-cli " << command.name << " " << command.arguments << "\n      "
                  << command.summary << '\n';
        printOptions(command.options);
    }
    std::cout << "\n  options of all commands\n";
    printOptions(commonOptions);
    std::cout << "\n  Mappings of links are kept in Relvane.map in the program folder, one PREFIX=DIR a "
                 "line; --map of\n"
                 "  press, and of document with --program-folder, writes them there.\n";
    std::cout << "\n  exit: 0 done, 1 an error was reported, 2 wrong usage\n";
}

int run(const std::vector<std::string>& words) {
    const auto isWord = [&](std::string_view wanted) {
        return std::ranges::find(words, wanted) != words.end();
    };
    if (words.empty()) {
        throw UsageError("no command given");
    }
    if (isWord("--help")) {
        printHelp();
        return exitDone;
    }
    if (isWord("--version")) {
        std::cout << "relvane " RELVANE_VERSION "\n";
        return exitDone;
    }
    const auto command = std::ranges::find(commands, words.front(), &Command::name);
    if (command == std::end(commands)) {
        throw UsageError("there is no command " + words.front());
    }
    std::vector<Option> options(command->options.begin(), command->options.end());
    options.insert(options.end(), std::begin(commonOptions), std::end(commonOptions));
    const std::vector<std::string> behindCommand(words.begin() + 1, words.end());
    const Arguments arguments(behindCommand, options);
    const int count = static_cast<int>(arguments.positional().size());
    if (count < command->fewestArguments || (command->mostArguments >= 0 && count > command->mostArguments)) {
        throw UsageError("usage: relvane-cli " + std::string(command->name) + " " +
                         std::string(command->arguments));
    }
    return command->run(arguments);
}

} // namespace
} // namespace relvane::cli

int main(int argc, char** argv) {
    using namespace relvane;
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // What the toolkit has to say about a machine without a desktop is no message for the person who calls.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            std::cerr << message.toStdString() << '\n';
        }
    });
    const QGuiApplication application(argc, argv);
    try {
        return cli::run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const cli::UsageError& error) {
        std::cerr << "relvane-cli: " << error.what() << "\nrelvane-cli --help tells more\n";
        return cli::exitWrongUsage;
    } catch (const RunTimeError& error) {
        std::cerr << "relvane-cli: ｴﾗｰNo:" << error.number() << " " << toUtf8(error.description()) << '\n';
        return cli::exitErrorReported;
    } catch (const std::exception& error) {
        std::cerr << "relvane-cli: " << error.what() << '\n';
        return cli::exitErrorReported;
    }
}
