#include "qt/qt_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include "formview/picture_image.h"

namespace relvane::qt {

void QtClipboard::Clear() {
    QGuiApplication::clipboard()->clear();
}

void QtClipboard::SetData(const Picture& picture) {
    QGuiApplication::clipboard()->setImage(formview::imageOf(picture));
}

Picture QtClipboard::GetData() {
    return formview::pictureOf(QGuiApplication::clipboard()->image());
}

} // namespace relvane::qt
