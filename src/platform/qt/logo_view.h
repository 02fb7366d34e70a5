// The program's logo: a database, and beside it the page on which its documentation is written. Each picture has one
// line more on the page.
#pragma once

#include <QWidget>

namespace relvane::qt {

class LogoView : public QWidget {
    Q_OBJECT

public:
    static constexpr int lines = 6; // behind them the page is full

    explicit LogoView(QWidget* parent = nullptr);
    void setPicture(int picture); // number of lines that are written; more than there are: all
    int picture() const { return picture_; }
    QSize sizeHint() const override { return {96, 96}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int picture_ = 0;
};

} // namespace relvane::qt
