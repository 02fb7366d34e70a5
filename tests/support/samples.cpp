#include "support/samples.h"

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <unistd.h>

namespace relvane::test {

namespace fs = std::filesystem;

fs::path sourceFolder() {
    return RELVANE_SOURCE_FOLDER;
}
fs::path buildFolder() {
    return RELVANE_BUILD_FOLDER;
}

fs::path ownSample(const std::string& name) {
    const fs::path path = buildFolder() / "samples" / name;
    if (!fs::exists(path)) {
        throw std::runtime_error("the build did not make the sample " + path.string());
    }
    return path;
}

std::optional<fs::path> realSamples() {
    const char* named = std::getenv("RELVANE_SAMPLES");
    const fs::path folder =
        named != nullptr ? fs::path(named) : sourceFolder().parent_path() / "shared" / "samples";
    if (fs::is_directory(folder)) {
        return folder;
    }
    static bool said = false;
    if (!said) {
        said = true;
        std::cout << "No folder of real Access files (" << folder.string()
                  << "): this test uses the project's own samples alone.\n";
    }
    return std::nullopt;
}

std::optional<fs::path> realSample(const std::string& name) {
    const auto folder = realSamples();
    return folder ? std::optional(*folder / name) : std::nullopt;
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "relvane-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

} // namespace relvane::test
