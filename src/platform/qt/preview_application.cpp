#include "qt/preview_application.h"

#include <QTemporaryDir>

#include "platform/runtime_error.h"
#include "qt/preview_window.h"
#include "qt/qt_text.h"

namespace relvane::qt {

// Removed with its last owner: the application that opened it, or the window that still shows it.
struct PreviewApplication::Copy {
    QTemporaryDir folder; // private to the user
    std::shared_ptr<RowStore> store;
};

PreviewApplication::PreviewApplication(PreviewServices services) : services_(std::move(services)) {}

PreviewApplication::~PreviewApplication() {
    closeWindow();
}

PreviewWindow* PreviewApplication::window() const {
    return window_;
}

// At once: the program may be ending, with no message loop to come.
void PreviewApplication::closeWindow() {
    QObject::disconnect(closed_);
    delete window_.data();
}

void PreviewApplication::OpenCurrentDatabase(const Text& path, bool) {
    auto copy = std::make_shared<Copy>();
    if (!copy->folder.isValid()) {
        throw RunTimeError(ErrorNumber::FileAccess, fromQString(copy->folder.errorString()));
    }
    const Text copyPath = fromQtPath(copy->folder.filePath(QStringLiteral("preview.mdb")));
    services_.openWorkStore(path)->copyTo(copyPath);
    copy->store = services_.openWorkStore(copyPath);
    copy_ = std::move(copy);
}

void PreviewApplication::CloseCurrentDatabase() {
    if (copy_ == nullptr) {
        throw RunTimeError(ErrorNumber::NoCurrentDatabase);
    }
    closeWindow();
    copy_ = nullptr;
}

void PreviewApplication::OpenReport(const Text& name, access::View view) {
    if (copy_ == nullptr) {
        throw RunTimeError(ErrorNumber::NoCurrentDatabase);
    }
    if (view == access::acViewNormal && services_.printers().isEmpty()) {
        throw RunTimeError(ErrorNumber::NoPrinter);
    }
    // The store that the document reads keeps its folder.
    const std::shared_ptr<RowStore> store(copy_, copy_->store.get());
    reports::ReportDocument document = reports::open(store, name, services_.now());
    if (view == access::acViewNormal) {
        print(document, {});
        return;
    }
    closeWindow();
    window_ = new PreviewWindow(std::move(document));
    window_->setAttribute(Qt::WA_DeleteOnClose);
    window_->printers = services_.printers;
    // A person who closes the window closes this instance of the program.
    closed_ = QObject::connect(window_, &QObject::destroyed, [this] { copy_ = nullptr; });
}

void PreviewApplication::Maximize() {
    if (window_ != nullptr) {
        window_->setWindowState(window_->windowState() | Qt::WindowMaximized);
    }
}

void PreviewApplication::setVisible(bool visible) {
    if (window_ != nullptr) {
        window_->setVisible(visible);
        if (visible) {
            window_->raise();
            window_->activateWindow();
        }
    }
}

} // namespace relvane::qt
