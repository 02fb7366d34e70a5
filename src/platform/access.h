// Access as the analyses drive it: an application with one current database. One realisation reads the target's
// own designs from the file (the access library), others show the reports of the work database (a preview
// window, PDF files).
#pragma once

#include <memory>

#include "platform/text.h"

namespace relvane::access {

enum View { acViewNormal = 0, acViewDesign = 1, acViewPreview = 2 };

class Application;

// The commands of an application.
class DoCmd {
public:
    virtual ~DoCmd() = default;

    // acViewPreview shows the report, acViewNormal sends it to the printer (2202 without one).
    virtual void OpenReport(const Text& name, View view) = 0;
    virtual void Maximize() = 0;
};

// An instance. Releasing the last owner closes what it shows.
class Application {
public:
    virtual ~Application() = default;

    // 7866 for a file older than Access 97, and the numbers of opening a database (3024, 3031, 3343 ...).
    virtual void OpenCurrentDatabase(const Text& path, bool exclusive) = 0;
    virtual void CloseCurrentDatabase() = 0; // 2467 when there is none
    virtual access::DoCmd& DoCmd() = 0;
    virtual void setVisible(bool visible) = 0;
};

} // namespace relvane::access
