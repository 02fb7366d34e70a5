// The panel's frames in rows of equal height and columns of equal width. Hidden frames take no room.
#pragma once

#include <QWidget>

class QGroupBox;

namespace relvane::qt {

// Its layout is a QGridLayout; the Designer file gives the frames in reading order, and where they stand follows from
// how many are visible and how wide the window is. What remains of the last row belongs to the last frame.
class FrameGrid : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    // The width that the window has for the panel: no more columns than fit into it, but one at least.
    void setRoom(int width);
    int columns() const { return columns_; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QList<QGroupBox*> shownFrames() const;
    int widest(const QList<QGroupBox*>& frames) const;
    void arrange();

    int room_ = QWIDGETSIZE_MAX, columns_ = 0;
};

} // namespace relvane::qt
