// The file system of the machine, behind platform/files.h.
#pragma once

#include "platform/files.h"
#include "system/link_paths.h"

namespace relvane {

class LinuxFiles final : public Files {
public:
    explicit LinuxFiles(std::vector<LinkMapping> links = {}) : links_(std::move(links)) {}

    bool exists(const Text& path) override;
    std::int64_t FileLen(const Text& path) override;
    DateTime FileDateTime(const Text& path) override;
    bool isReadOnly(const Text& path) override;
    bool isSameFile(const Text& path, const Text& other) override;
    std::vector<Text> Dir(const Text& pattern) override;
    Text resolveLink(const Text& path, const Text& folder) override;
    Bytes read(const Text& path) override;
    // Through a temporary file beside it that takes its name when complete: a full disk leaves the old content.
    void write(const Text& path, const Bytes& content) override;
    std::unique_ptr<OutputFile> openOutput(const Text& path) override;
    Text currentFolder() override;
    void changeFolder(const Text& path) override;

private:
    std::vector<LinkMapping> links_;
};

} // namespace relvane
