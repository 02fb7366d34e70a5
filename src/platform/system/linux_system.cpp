#include "system/linux_system.h"

#include <ctime>
#include <iostream>

#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace relvane {

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

} // namespace relvane
