#include "system/linux_system.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <limits>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace relvane {
namespace {

std::vector<std::string> wordsOf(const std::string& command) {
    std::vector<std::string> words;
    for (std::size_t begin = 0; begin < command.size();) {
        const std::size_t end = std::min(command.find(' ', begin), command.size());
        if (end != begin) {
            words.push_back(command.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    return words;
}

} // namespace

DateTime LinuxSystem::now() {
    const std::time_t moment = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&moment, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

std::int32_t LinuxSystem::setScreenSaverActive(bool) {
    return 1;
}

void LinuxSystem::openScreenSaverSettings() {
    throw RunTimeError(ErrorNumber::InvalidProcedureCall);
}

void LinuxSystem::openHelp(const Text& path) {
    std::cerr << nativePath(path) << '\n';
}

DiskSpace LinuxSystem::GetDiskFreeSpaceEx(const Text& folder) {
    std::error_code failed;
    const std::filesystem::space_info space = std::filesystem::space(nativePath(folder), failed);
    if (failed) {
        throw RunTimeError(ErrorNumber::PathNotFound, folder);
    }
    constexpr std::uintmax_t largest = std::numeric_limits<std::int64_t>::max();
    return {static_cast<std::int64_t>(std::min(space.capacity, largest)),
            static_cast<std::int64_t>(std::min(space.available, largest))};
}

Text LinuxSystem::commandProcessor() {
    const char* const path = std::getenv("COMSPEC");
    return path == nullptr ? Text() : textOfNativePath(path);
}

void LinuxSystem::Shell(const Text& command) {
    std::vector<std::string> words = wordsOf(nativePath(command));
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    pid_t started = 0;
    if (words.empty() ||
        ::posix_spawnp(&started, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) {
        throw RunTimeError(ErrorNumber::FileNotFound, command);
    }
    std::thread([started] { ::waitpid(started, nullptr, 0); }).detach(); // its end is nobody's business
}

void LinuxSystem::openAddress(const Text& address) {
    std::cerr << toUtf8(address) << '\n';
}

} // namespace relvane
