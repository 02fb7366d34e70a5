// A file in the making, that remembers why a write failed.
#pragma once

#include <string>

#include <QIODevice>

#include "platform/text.h"

namespace relvane::reports {

// Made beside the file it is for and removed again, unless it was renamed to it. Opening throws; a write that
// fails lets all later ones fail, and `check` throws: 76, 70, 61 or 57. Small writes are gathered; `check` and
// `renameTo` write out what is waiting.
class OutputFile : public QIODevice {
public:
    OutputFile(const relvane::Text& path, TextView suffix);
    ~OutputFile() override;

    const std::string& nativeName() const { return name_; }
    bool isSequential() const override { return false; }
    void check();
    void fail(int systemError) { error_ = systemError; } // a failure that somebody else met
    void renameTo(const relvane::Text& path);

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override;

private:
    void flush();

    relvane::Text path_;
    std::string name_;
    int descriptor_ = -1;
    int error_ = 0;
    std::string waiting_;
};

} // namespace relvane::reports
