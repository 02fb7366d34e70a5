// The bar of a window in which a text can be looked for: the entry field, what came of it, and the way from hit to hit.
// The window does the looking.
#pragma once

#include <QToolBar>

class QLabel;
class QLineEdit;
class QMainWindow;

namespace relvane::qt {

class SearchBar : public QToolBar {
    Q_OBJECT

public:
    // Takes its place at the right of the window's bars, and brings the keys Ctrl+F, F3 and Shift+F3. Page up and page
    // down go to `view` while a person types.
    SearchBar(QMainWindow& window, QWidget& view);

    QString text() const;
    void tell(const QString& result); // how many hits there are; empty without a search

signals:
    void typed(); // the text is another one
    void next();
    void previous();
    void left(); // Escape: the text is empty again, and the view has the focus

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void leave();

    QWidget& view_;
    QLineEdit* box_;
    QLabel* found_;
};

} // namespace relvane::qt
