// Access as the reports need it: opens a work database and shows one of its reports in a window, or prints it.
//
// The report is drawn from a copy of the work database that is made when it is opened and deleted with the window,
// so the next analysis may rewrite the tables while the preview stays on the screen.
#pragma once

#include <QPointer>
#include <functional>
#include <memory>

#include "platform/access.h"
#include "platform/recordset.h"
#include "platform/value.h"
#include "qt/printing.h"

namespace relvane::qt {

class PreviewWindow;

struct PreviewServices {
    std::function<std::shared_ptr<RowStore>(const Text& path)> openWorkStore;
    std::function<DateTime()> now;
    std::function<QStringList()> printers = printerNames;
};

class PreviewApplication final : public access::Application, private access::DoCmd {
public:
    explicit PreviewApplication(PreviewServices services);
    ~PreviewApplication() override; // closes the window

    void OpenCurrentDatabase(const Text& path, bool exclusive) override; // 3024 when it is missing, 57
    void CloseCurrentDatabase() override;
    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool visible) override;

    PreviewWindow* window() const; // nullptr while no report is shown

private:
    struct Copy;

    void OpenReport(const Text& name, access::View view) override;
    void Maximize() override;
    void closeWindow();

    PreviewServices services_;
    std::shared_ptr<Copy> copy_;
    QPointer<PreviewWindow> window_;
    QMetaObject::Connection closed_;
};

} // namespace relvane::qt
