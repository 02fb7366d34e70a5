// What the tests of the whole program share: each of them begins with one that was just started.
#pragma once

#include "program_window.h"

namespace relvane::qt {

class ProgramTest : public QObject {
    Q_OBJECT

protected:
    std::unique_ptr<Program> program_;

    // Ends the program that runs and starts another, with the settings file of an earlier run.
    void start(const std::filesystem::path& settings = {}) {
        end();
        program_ = std::make_unique<Program>(settings);
    }
    void end() {
        program_.reset();
        std::filesystem::current_path(home_); // start-up changes it
    }

    // Of the main window.
    template <class Type>
    Type* get(const char* name) {
        return program_->get<Type>(name);
    }

protected slots:
    void init() {
        start();
        QVERIFY(program_->window->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(program_->window.get()));
    }
    void cleanup() { end(); }

private:
    std::filesystem::path home_ = std::filesystem::current_path();
};

} // namespace relvane::qt
