// The manual: an HTML file with its links, in a window of its own with pages back and forward, search and sizes.
#pragma once

#include <QMainWindow>

class QAction;
class QLabel;
class QLineEdit;
class QTextBrowser;
class QToolBar;

namespace relvane::qt {

class HelpWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    // False when the file cannot be read; the window then shows what it showed before.
    bool showFile(const QString& path);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    enum class Direction { Next, Previous };

    QAction* action(const char* name, const char* icon, const QString& text, const QKeySequence& key);
    void makeToolBar();
    void makeSearchBar();
    void find(Direction direction);
    void findTyped();
    void endSearch();
    int hits() const;
    void setSize(qreal points);

    QTextBrowser* browser_;
    QLineEdit* searchBox_ = nullptr;
    QLabel* found_ = nullptr;
    qreal ordinarySize_;
};

// The manual at `path`, which names a help file of another system: the file itself when it is HTML, else the
// HTML file of that name beside it ("Relvane.html" for "Relvane.hlp"). Empty when there is neither.
QString manualAt(const QString& path);

} // namespace relvane::qt
