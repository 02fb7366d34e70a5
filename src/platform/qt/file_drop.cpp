#include "qt/file_drop.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QRubberBand>
#include <QTimer>
#include <QUrl>

#include "core/file_name_parts.h"
#include "qt/qt_text.h"

namespace relvane::qt {

QString draggedDatabase(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.constFirst().isLocalFile()) {
        return {};
    }
    const QString path = urls.constFirst().toLocalFile();
    const bool fits = isDatabaseFile(fromQtPath(path)) && QFileInfo(path).isFile();
    return fits ? path : QString();
}

FileDrop::FileDrop(QWidget& window, Form& form, EventQueue& events)
    : QObject(&window),
      window_(window),
      form_(form),
      events_(events),
      frame_(new QRubberBand(QRubberBand::Rectangle, &window)) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->acceptDrops()) {
            widget->installEventFilter(this);
        }
    }
}

bool FileDrop::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    case QEvent::DragLeave:
        frame_->hide();
        return false;
    default:
        return false;
    }
    auto* const drop = static_cast<QDropEvent*>(event);
    const QString path = draggedDatabase(*drop->mimeData());
    if (object != &window_) {
        // An entry field takes dropped text, and a file brings its path as text: the file is the window's.
        drop->setAccepted(false);
        return !path.isEmpty();
    }
    const bool takes = !path.isEmpty() && form_.Enabled && form_.FileDropped;
    drop->setDropAction(takes ? Qt::CopyAction : Qt::IgnoreAction);
    drop->setAccepted(takes);
    frame_->setGeometry(window_.rect());
    frame_->setVisible(takes && event->type() != QEvent::Drop);
    if (takes && event->type() == QEvent::Drop) {
        fire(path);
    }
    return true;
}

// Behind the drop itself: the program from which the file comes waits until that is over, and a selection may ask.
void FileDrop::fire(const QString& path) {
    QTimer::singleShot(0, this, [this, path] {
        window_.activateWindow();
        events_.fire([this, path] {
            if (form_.Enabled && form_.FileDropped) {
                form_.FileDropped(fromQtPath(path));
            }
        });
    });
}

} // namespace relvane::qt
