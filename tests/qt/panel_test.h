// What the tests of the panel share: its controls as tables, and what a person does with them by mouse and keys.
#pragma once

#include <QComboBox>
#include <QScrollArea>

#include "program_test.h"

namespace relvane::qt {

// The panels with options. The list of comments has none.
struct PanelRow {
    const char *options, *action, *preview;
    int count, standard;
    std::int16_t AnalysisContext::*option;
    const char* hint;
};
enum PanelPlace {
    Objects,
    Tables,
    Queries,
    Forms,
    Reports,
    Procedures,
    Modules,
    Steps,
    Macros,
    Counts,
    Files
};
inline const PanelRow panelRows[] = {
    {"optObject", "cmdObject", "cmdOPre", 7, 6, &AnalysisContext::OptObject,
     "オブジェクトの情報を印刷します。"},
    {"optTable", "cmdTable", "cmdTPre", 3, 1, &AnalysisContext::OptTable, "テーブルの情報を印刷します。"},
    {"optQuery", "cmdQuery", "cmdQPre", 3, 2, &AnalysisContext::OptQuery, "クエリーの情報を印刷します。"},
    {"optForm", "cmdForm", "cmdFPre", 2, 0, &AnalysisContext::OptForm, "フォームの情報を印刷します。"},
    {"optReport", "cmdReport", "cmdRPre", 2, 0, &AnalysisContext::OptReport, "レポートの情報を印刷します。"},
    {"optProc", "cmdProc", "cmdPPre", 2, 1, &AnalysisContext::OptProc, "プロシージャの一覧を印刷します。"},
    {"optModule", "cmdModule", "cmdMPre", 4, 2, &AnalysisContext::OptModule,
     "モジュールリストを印刷します。"},
    {"optModStep", "cmdModStep", "cmdMsPre", 4, 3, &AnalysisContext::OptModStep,
     "モジュールのステップ数を印刷します。"},
    {"optMacro", "cmdMacro", "cmdMCPre", 2, 1, &AnalysisContext::OptMacro, "マクロの一覧を印刷します。"},
    {"optControl", "cmdControl", "cmdCPre", 3, 0, &AnalysisContext::OptControl,
     "コントロール数を印刷します。"},
    {"optFile", "cmdFile", "cmdFlPre", 3, 0, &AnalysisContext::OptFile, "ファイル一覧を印刷します。"},
};

inline QByteArray element(const char* array, int index) {
    return QByteArray(array) + '_' + QByteArray::number(index);
}

// What is painted, under the wait cursor, while the window takes no input.
class RunWatch : public QObject {
public:
    RunWatch(QWidget& window, QList<QWidget*> painted) : window_(window) {
        for (QWidget* widget : painted) {
            widget->installEventFilter(this);
        }
    }
    std::map<QString, int> paints;
    bool takesInput = false;

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const QCursor* const cursor = QApplication::overrideCursor();
        if (event->type() == QEvent::Paint && cursor != nullptr && cursor->shape() == Qt::WaitCursor) {
            ++paints[object->objectName()];
            for (const QWidget* button : window_.findChildren<QPushButton*>()) {
                takesInput = takesInput || button->isEnabled();
            }
        }
        return false;
    }

private:
    QWidget& window_;
};

class PanelTest : public ProgramTest {
protected:
    FrmRelvane& form() { return program_->desk->frmRelvane; }
    AnalysisContext& context() { return program_->desk->context; }

    // Scrolls to the widget, as a person would, and clicks where its mark or caption stands.
    QWidget* reach(const char* name) {
        QWidget* const widget = get<QWidget>(name);
        get<QScrollArea>("panelArea")->ensureWidgetVisible(widget);
        return widget;
    }
    void click(const char* name) {
        QWidget* const widget = reach(name);
        const QPoint place = widget->inherits("QPushButton") ? widget->rect().center() : QPoint(8, 8);
        QTest::mouseClick(widget, Qt::LeftButton, {}, place);
    }
    // By keys, as a person would.
    void pick(QComboBox* list, const char* entry) {
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 1; i < list->count() && list->currentText() != QString::fromUtf8(entry); ++i) {
            QTest::keyClick(list, Qt::Key_Down);
        }
        QCOMPARE(list->currentText(), QString::fromUtf8(entry));
    }
    bool runs(const char* action, const char* preview) {
        click(action);
        return QTest::qWaitFor([&] { return get<QPushButton>(preview)->isEnabled(); });
    }
    bool runs(const PanelRow& panel) { return runs(panel.action, panel.preview); }
    // Whether pressing the button analyses, which moves the gauge, or shows the report alone.
    bool analyses(const char* button) {
        const RunWatch watch(*program_->window, {get<QWidget>("linGuage")});
        click(button);
        return QTest::qWaitFor([this] { return program_->window->isEnabled(); }) && !watch.paints.empty();
    }
    QString nameOfReport() { return toQString(program_->preview()->document().name()); }
    bool shows(const char* text) {
        return !program_->preview()->document().search(fromQString(QString::fromUtf8(text))).empty();
    }
};

} // namespace relvane::qt
