// One window program for each program folder: a later start asks the first one to show its window.
#pragma once

#include <QString>
#include <functional>
#include <memory>

class QLocalServer;

namespace relvane::qt {

class SingleInstance {
public:
    // `programFolder` names the meeting place; other users have places of their own.
    explicit SingleInstance(const QString& programFolder);
    ~SingleInstance();

    // The first program: calls `asked` whenever a later one has knocked. Call it once the program folder is known to
    // be this program's own, since it takes over the place of a program that died.
    void listen(std::function<void()> asked);

    // A later program: knocks. False when nobody answers.
    bool askFirstToShow();

    const QString& name() const { return name_; } // of the local socket

private:
    QString name_;
    std::unique_ptr<QLocalServer> server_;
};

} // namespace relvane::qt
