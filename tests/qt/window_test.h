// What the window tests share: the application as the program dresses it, and answers to modal boxes.
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "qt/appearance.h"
#include "qt/japanese_texts.h"

namespace relvane::qt {

// What a message box said before it was answered.
struct SeenBox {
    bool seen = false;
    QString title, text;
    QStringList buttons;
};

// Answers the modal box that the next action opens, by the button of that name. Begin it before the action; a box that
// does not come leaves `seen` false instead of hanging the test.
inline void answerNextBox(SeenBox& box, QMessageBox::StandardButton button) {
    QTimer::singleShot(0, qApp, [&box, button] {
        auto* const shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (shown == nullptr) {
            return;
        }
        box = {true, shown->windowTitle(), shown->text(), {}};
        for (const QAbstractButton* each : shown->buttons()) {
            box.buttons << each->text();
        }
        QTest::mouseClick(shown->button(button), Qt::LeftButton);
    });
}

} // namespace relvane::qt

// The main function of a window test.
#define RELVANE_WINDOW_TEST(TestClass)                                                                       \
    int main(int argc, char** argv) {                                                                        \
        QApplication application(argc, argv);                                                                \
        relvane::qt::setAppearance(application);                                                             \
        relvane::qt::JapaneseTexts texts;                                                                    \
        QApplication::installTranslator(&texts);                                                             \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
