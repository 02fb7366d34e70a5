// The manual: an HTML file with its links, in a window of its own with pages back and forward, search and sizes.
#pragma once

#include <QMainWindow>

class QTextBrowser;

namespace relvane::qt {

class SearchBar;

class HelpWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    // False when the file cannot be read; the window then shows what it showed before.
    bool showFile(const QString& path);

private:
    enum class Direction { Next, Previous };

    void makeToolBar();
    void find(Direction direction);
    void findTyped();
    int hits() const;
    void setSize(qreal points);

    QTextBrowser* browser_;
    SearchBar* search_ = nullptr;
    qreal ordinarySize_;
};

// The manual at `path`, which names a help file of another system: the file itself when it is HTML, else the
// HTML file of that name beside it ("Relvane.html" for "Relvane.hlp"). Empty when there is neither.
QString manualAt(const QString& path);

} // namespace relvane::qt
