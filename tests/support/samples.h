// Where tests find database files: the project's own samples, made by the build, and a folder of files from real
// copies of Access that is not part of the project.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace relvane::test {

// A file of the project's own samples in the build folder. It always exists.
std::filesystem::path ownSample(const std::string& name);

// The folder of real Access files: RELVANE_SAMPLES, or ../shared/samples beside the project. When it is missing,
// says so once on standard output and gives nothing: the test then passes on the project's own samples.
std::optional<std::filesystem::path> realSamples();

// The file `name` ("access97/nwind.mdb") of that folder, nothing when the folder is missing.
std::optional<std::filesystem::path> realSample(const std::string& name);

// The folder of the project's sources, and that of the build.
std::filesystem::path sourceFolder();
std::filesystem::path buildFolder();

// A new empty folder for one test, removed with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

} // namespace relvane::test
