// The manual: an HTML file with its links and pictures, in a window of its own.
#pragma once

#include <QMainWindow>

class QTextBrowser;

namespace relvane::qt {

class HelpWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    // False when the file cannot be read; the window then shows what it showed before.
    bool showFile(const QString& path);

private:
    QTextBrowser* browser_;
};

// The manual at `path`, which names a help file of another system: the file itself when it is HTML, else the
// HTML file of that name beside it ("Relvane.html" for "Relvane.hlp"). Empty when there is neither.
QString manualAt(const QString& path);

} // namespace relvane::qt
