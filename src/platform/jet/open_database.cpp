#include "jet/open_database.h"

#include <filesystem>

#include <unistd.h>

#include "jet/dao_database.h"
#include "platform/native_path.h"

namespace relvane::jet {
namespace {

namespace fs = std::filesystem;

// Whether a person could write there. The mode is asked too: the superuser may write anywhere.
bool isWritable(const fs::path& path) {
    std::error_code error;
    const fs::perms mode = fs::status(path, error).permissions();
    constexpr fs::perms anyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    return !error && (mode & anyWrite) != fs::perms::none && access(path.c_str(), W_OK) == 0;
}

} // namespace

std::shared_ptr<dao::Database> openDatabase(const Text& path, OpenOptions options) {
    if (path.empty() || path.find(u'\0') != Text::npos) {
        throw RunTimeError(ErrorNumber::DatabasePathInvalid, path);
    }
    std::error_code error;
    const fs::path file = fs::absolute(nativePath(path), error).lexically_normal();
    if (error) {
        throw RunTimeError(ErrorNumber::DatabasePathInvalid, path);
    }
    auto jetFile = openJetFile(file.native(), options.password);
    const fs::path folder = file.parent_path();
    return std::make_shared<Database>(
        std::move(jetFile), textOfNativePath(file.native()), isWritable(file) && isWritable(folder),
        [resolver = std::move(options.resolveLink), folder = textOfNativePath(folder.native())](
            const Link& link) { return resolveLink(link, resolver, folder); });
}

std::shared_ptr<dao::Database> openDatabase(std::unique_ptr<ByteSource> source, const Text& name,
                                            OpenOptions options) {
    return std::make_shared<Database>(std::make_shared<JetFile>(std::move(source), options.password), name,
                                      false, [](const Link& link) { return resolveLink(link, {}, {}); });
}

std::shared_ptr<const JetFile> fileOf(const dao::Database& database) {
    const auto* opened = dynamic_cast<const Database*>(&database);
    return opened == nullptr ? nullptr : opened->file();
}

} // namespace relvane::jet
