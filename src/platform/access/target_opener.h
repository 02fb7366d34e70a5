// How programs open the target, for DAO and in Access: with the password that the person is asked for once a selection.
#pragma once

#include <functional>
#include <memory>

#include "jet/open_database.h"
#include "platform/dialogs.h"

namespace relvane::access {

// Opens a target; the errors of jet::openDatabase.
using OpenTarget = std::function<std::shared_ptr<dao::Database>(const Text& path)>;

// The password stays in memory as long as what newSelection gave last does, and is overwritten then. It is asked for
// again after a wrong one; cancelling is error 3031.
class TargetOpener {
public:
    // `resolveLink` finds the files of linked tables.
    explicit TargetOpener(Dialogs& dialogs, jet::LinkResolver resolveLink = {});

    std::shared_ptr<dao::Database> open(const Text& path) const;

    // For the application of a new selection, which keeps it.
    OpenTarget newSelection();

private:
    class Selection;

    Dialogs& dialogs_;
    jet::LinkResolver resolveLink_;
    std::weak_ptr<Selection> selection_;
};

} // namespace relvane::access
