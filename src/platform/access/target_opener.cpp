#include "access/target_opener.h"

#include <string.h>

#include "platform/runtime_error.h"

namespace relvane::access {

// One target and its password.
class TargetOpener::Selection {
public:
    Selection(Dialogs& dialogs, jet::LinkResolver resolveLink)
        : dialogs_(dialogs), resolveLink_(std::move(resolveLink)) {}
    ~Selection() { forget(); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

    std::shared_ptr<dao::Database> open(const Text& path) {
        if (path != path_) {
            forget();
            path_ = path;
        }
        for (;;) {
            try {
                return jet::openDatabase(path, {.password = password_, .resolveLink = resolveLink_});
            } catch (const RunTimeError& error) {
                forget();
                if (!error.is(ErrorNumber::WrongPassword) || !ask()) {
                    throw;
                }
            }
        }
    }

private:
    bool ask() {
        auto typed = dialogs_.askPassword(path_);
        if (typed) {
            password_.swap(*typed);
        }
        return typed.has_value();
    }
    void forget() {
        explicit_bzero(password_.data(), password_.size() * sizeof(char16_t));
        password_.clear();
    }

    Dialogs& dialogs_;
    jet::LinkResolver resolveLink_;
    Text path_, password_;
};

TargetOpener::TargetOpener(Dialogs& dialogs, jet::LinkResolver resolveLink)
    : dialogs_(dialogs), resolveLink_(std::move(resolveLink)) {}

std::shared_ptr<dao::Database> TargetOpener::open(const Text& path) const {
    const auto selection = selection_.lock();
    return selection ? selection->open(path) : Selection(dialogs_, resolveLink_).open(path);
}

OpenTarget TargetOpener::newSelection() {
    auto selection = std::make_shared<Selection>(dialogs_, resolveLink_);
    selection_ = selection;
    return [selection = std::move(selection)](const Text& path) { return selection->open(path); };
}

} // namespace relvane::access
