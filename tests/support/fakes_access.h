// An Access application that writes down what it is told, and fails where a test wants it to.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/access.h"
#include "platform/runtime_error.h"

namespace relvane::test {

// Shared by all applications of one kind: "New", "Open PATH", "Close", "OpenReport NAME 2", "Maximize", "Visible 1",
// "Release", in order.
struct ApplicationLog {
    std::vector<Text> calls;
    std::map<Text, int> failing; // first word of a call -> error number it ends with, each time
    int alive = 0;

    void call(const Text& what) {
        calls.push_back(what);
        if (const auto found = failing.find(what.substr(0, what.find(u' '))); found != failing.end()) {
            throw RunTimeError(found->second, u"説明");
        }
    }
};

class FakeApplication : public access::Application, public access::DoCmd {
public:
    explicit FakeApplication(ApplicationLog& log) : log_(log) {
        log_.call(u"New");
        ++log_.alive;
    }
    ~FakeApplication() override {
        log_.calls.push_back(u"Release");
        --log_.alive;
    }
    void OpenCurrentDatabase(const Text& path, bool exclusive) override {
        log_.call(u"Open " + path + (exclusive ? u" exclusive" : u""));
    }
    void CloseCurrentDatabase() override { log_.call(u"Close"); }
    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool visible) override { log_.call(visible ? u"Visible 1" : u"Visible 0"); }

    void OpenReport(const Text& name, access::View view) override {
        log_.call(u"OpenReport " + name + u" " + toText(static_cast<long long>(view)));
    }
    void Maximize() override { log_.call(u"Maximize"); }

private:
    ApplicationLog& log_;
};

} // namespace relvane::test
