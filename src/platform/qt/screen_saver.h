// The screen saver of the desktop, through the service that all desktops offer on the session bus.
#pragma once

#include <QString>
#include <cstdint>
#include <utility>

namespace relvane::qt {

// Keeps the screen saver off between setActive(false) and setActive(true), and no longer than this object lives.
class ScreenSaver {
public:
    // Without a name: the session bus. Tests name a connection of their own.
    explicit ScreenSaver(QString connectionName = {}) : connection_(std::move(connectionName)) {}
    ~ScreenSaver();
    ScreenSaver(const ScreenSaver&) = delete;
    ScreenSaver& operator=(const ScreenSaver&) = delete;

    // False when there is no such service; nothing else happens then.
    bool setActive(bool active);

private:
    QString connection_;
    std::uint32_t cookie_ = 0; // what the service gave for the request in force
    bool inhibited_ = false;
};

// Starts the desktop's settings at the screen saver; false when no known program of that kind is installed.
bool openScreenSaverSettings();

} // namespace relvane::qt
