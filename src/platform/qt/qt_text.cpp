#include "qt/qt_text.h"

#include <QFile>

#include "platform/native_path.h"

namespace relvane::qt {

QString toQString(TextView text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

Text fromQString(const QString& text) {
    return Text(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
}

QString toQtPath(const Text& path) {
    return QFile::decodeName(QByteArray::fromStdString(nativePath(path)));
}

Text fromQtPath(const QString& path) {
    return textOfNativePath(QFile::encodeName(path).toStdString());
}

QString withLineBreaks(TextView text) {
    QString lines = toQString(text);
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return lines;
}

QString asCaption(TextView text) {
    return withLineBreaks(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QString asToolTip(const QString& text) {
    if (text.isEmpty()) {
        return {};
    }
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

} // namespace relvane::qt
