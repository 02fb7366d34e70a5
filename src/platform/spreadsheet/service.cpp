#include "spreadsheet/service.h"

#include <dlfcn.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "spreadsheet/module_entry.h"

namespace relvane::spreadsheet {
namespace {

[[noreturn]] void fail(TextView reason) {
    throw RunTimeError(cannotCreateObject,
                       u"表計算ソフト (LibreOffice Calc) を使用出来ません。 (" + Text(reason) + u")");
}

// The module stays loaded until the program ends: its objects may live as long.
ModuleEntry* entryOf(const std::filesystem::path& module) {
    void* loaded = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* entry = loaded == nullptr ? nullptr : ::dlsym(loaded, moduleEntryName);
    if (entry == nullptr) {
        fail(textOfNativePath(::dlerror()));
    }
    return reinterpret_cast<ModuleEntry*>(entry);
}

} // namespace

std::filesystem::path installedModule() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path() / "lib" / "relvane" /
           "spreadsheet.so";
}

std::shared_ptr<Application> newSpreadsheet(const ServiceOptions& options,
                                            const std::filesystem::path& module) {
    if (!std::filesystem::exists(module)) {
        fail(u"この環境にはインストールされていません。");
    }
    return std::shared_ptr<Application>(entryOf(module)(options));
}

} // namespace relvane::spreadsheet
