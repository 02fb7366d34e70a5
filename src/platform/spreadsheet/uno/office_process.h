// A running LibreOffice that this program has started.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>

namespace relvane::spreadsheet {

struct OfficeStart {
    std::string pipe;               // the name under which it accepts connections
    std::filesystem::path settings; // its own folder of settings
    bool windows = false;
};

class OfficeProcess {
public:
    // Starts it and does not wait. Without windows it ends with this program, however that ends.
    explicit OfficeProcess(OfficeStart start);
    // Ends it, unless it was released.
    ~OfficeProcess();
    OfficeProcess(const OfficeProcess&) = delete;
    OfficeProcess& operator=(const OfficeProcess&) = delete;

    // Whether it runs. On its first start with new settings it ends and wants to be started once more; this does so.
    bool lives();
    void waitForEnd(); // a while; then it is ended
    void kill();
    void release() { released_ = true; } // it goes on without this program

private:
    std::optional<int> endOf(); // the exit code, nothing while it runs
    void start();

    OfficeStart start_;
    pid_t id_ = 0; // 0: none
    int restarts_ = 0;
    bool released_ = false;
};

} // namespace relvane::spreadsheet
