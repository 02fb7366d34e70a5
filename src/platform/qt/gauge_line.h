// The bar of a gauge: fills its parent from the left as far as its control's X2 says.
#pragma once

#include <QWidget>

namespace relvane::qt {

class GaugeLine : public QWidget {
    Q_OBJECT

public:
    static constexpr int scale = 2400; // X2 at 100 percent

    explicit GaugeLine(QWidget* parent = nullptr);
    void setX2(int x2);
    int x2() const { return x2_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int x2_ = 0;
};

} // namespace relvane::qt
