// A database of the desktop that is dropped onto the window.
#pragma once

#include <QObject>
#include <QString>

#include "platform/controls.h"
#include "qt/event_queue.h"

class QMimeData;
class QRubberBand;

namespace relvane::qt {

// The path of the database that is dragged: exactly one file of this computer whose name ends as one of Access does.
// Empty for anything else, such as two files, a folder, a link of the web, or a file that is gone.
QString draggedDatabase(const QMimeData& data);

// Makes every place of the window, its entry fields included, take such a file and give it to the form's FileDropped.
// A frame around the contents shows that the file would be taken. A disabled window takes nothing.
class FileDrop : public QObject {
    Q_OBJECT

public:
    // Call when the window has all its children. Lives as long as the window.
    FileDrop(QWidget& window, Form& form, EventQueue& events);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void fire(const QString& path);

    QWidget& window_;
    Form& form_;
    EventQueue& events_;
    QRubberBand* frame_;
};

} // namespace relvane::qt
