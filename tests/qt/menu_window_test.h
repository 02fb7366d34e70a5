// What the tests of the windows share that an entry of the menu opens above the main window.
#pragma once

#include "program_test.h"

namespace relvane::qt {

class MenuWindowTest : public ProgramTest {
    Q_OBJECT

    const char* entry_;

protected:
    explicit MenuWindowTest(const char* entry) : entry_(entry) {}

    virtual QWidget& opened() const = 0;

    // Of the window that the entry opens.
    template <class Type>
    Type* inside(const char* name) {
        return opened().findChild<Type*>(QLatin1String(name));
    }
    void press(const char* name) { QTest::mouseClick(inside<QPushButton>(name), Qt::LeftButton); }
    // Where the mark of a box or an option stands.
    void mark(const char* name) {
        QTest::mouseClick(inside<QAbstractButton>(name), Qt::LeftButton, {}, QPoint(8, 8));
    }
    void open() {
        get<QAction>(entry_)->trigger();
        QVERIFY(QTest::qWaitForWindowActive(&opened()));
    }

private slots:
    void theMenuNeedsATarget() {
        get<QAction>(entry_)->trigger();
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"データベースを選択して下さい。"});
        QVERIFY(!opened().isVisible());
    }

    void everyTextIsWholeAndTheWindowFitsASmallScreen() {
        QVERIFY(program_->select());
        open();
        QVERIFY(!opened().isModal());
        for (const QAbstractButton* button : opened().findChildren<QAbstractButton*>()) {
            const int text = button->fontMetrics().horizontalAdvance(button->text());
            QVERIFY2(button->width() >= text + 8, qPrintable(button->objectName()));
        }
        QVERIFY(opened().width() <= 1024 - widthOfDecorations);
        QVERIFY(opened().height() <= 768 - 48);
    }
};

} // namespace relvane::qt
