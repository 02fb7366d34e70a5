#include "qt/appearance.h"

#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QToolTip>

static void initialiseIcons() {
    Q_INIT_RESOURCE(icons); // must stand outside of any namespace
}

namespace relvane::qt {
namespace {

constexpr auto proportional = "Ume P Gothic";
constexpr auto fixedPitch = "Ume Gothic";

// Faces that Windows programs name, in both spellings, and ours that has the same widths.
constexpr struct {
    const char16_t* named;
    const char* ours;
} substitutions[] = {
    {u"MS Gothic", fixedPitch},         {u"ＭＳ ゴシック", fixedPitch},  {u"MS PGothic", proportional},
    {u"ＭＳ Ｐゴシック", proportional}, {u"MS UI Gothic", proportional}, {u"System", proportional},
    {u"MS Mincho", "Ume Mincho"},       {u"ＭＳ 明朝", "Ume Mincho"},    {u"MS PMincho", "Ume P Mincho"},
    {u"ＭＳ Ｐ明朝", "Ume P Mincho"},
};

// Where the Ume fonts are missing, the next best of the Japanese faces.
constexpr const char* secondChoices[] = {"VL PGothic", "IPAPGothic", "Noto Sans CJK JP"};

const QColor sheet(0xFC, 0xFC, 0xFB), frameEdge(0xC8, 0xCA, 0xCE);

// Fusion, with frames as white sheets under a title of their own colour, and without pictures on the buttons of boxes.
class PanelStyle : public QProxyStyle {
public:
    PanelStyle() : QProxyStyle(QStringLiteral("Fusion")) {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
    // Fusion makes every button 80 wide; one with the property "narrow" is as wide as its caption wants.
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type != CT_PushButton || widget == nullptr || !widget->property("narrow").toBool()) {
            return size;
        }
        const int margins = pixelMetric(PM_ButtonMargin, option, widget);
        return {contents.width() + margins, size.height()};
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element != PE_FrameGroupBox) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        constexpr double half = 0.5, radius = 3;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(frameEdge);
        painter->setBrush(sheet);
        painter->drawRoundedRect(QRectF(option->rect).adjusted(half, half, -half, -half), radius, radius);
        painter->restore();
    }
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        const auto* const frame = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        if (control != CC_GroupBox || frame == nullptr) {
            QProxyStyle::drawComplexControl(control, option, painter, widget);
            return;
        }
        QStyleOptionGroupBox untitled = *frame;
        untitled.subControls &= ~SC_GroupBoxLabel;
        QProxyStyle::drawComplexControl(control, &untitled, painter, widget);
        const bool usable = (frame->state & State_Enabled) != 0;
        drawItemText(painter, proxy()->subControlRect(CC_GroupBox, frame, SC_GroupBoxLabel, widget),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, frame->palette, usable,
                     frame->text, usable ? QPalette::Link : QPalette::WindowText);
    }
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        constexpr QPoint intoSheet(10, 4);
        const QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
        return control == CC_GroupBox && part == SC_GroupBoxLabel ? rect.translated(intoSheet) : rect;
    }
};

QPalette panelColours() {
    QPalette colours;
    const QColor ground(0xF0, 0xF0, 0xEE), text(0x1C, 0x1E, 0x21), pale(0x8E, 0x92, 0x98);
    const QColor accent(0x1F, 0x5F, 0xA8);
    colours.setColor(QPalette::Window, ground);
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::AlternateBase, QColor(0xF6, 0xF7, 0xF9));
    colours.setColor(QPalette::Button, QColor(0xF4, 0xF4, 0xF2));
    colours.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFD, 0xE8));
    colours.setColor(QPalette::Highlight, accent);
    colours.setColor(QPalette::HighlightedText, Qt::white);
    colours.setColor(QPalette::Link, accent);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        colours.setColor(role, text);
        colours.setColor(QPalette::Disabled, role, pale);
    }
    colours.setColor(QPalette::Disabled, QPalette::Base, QColor(0xF4, 0xF4, 0xF3));
    return colours;
}

} // namespace

void registerFontSubstitutions() {
    for (const auto& face : substitutions) {
        QFont::insertSubstitution(QString::fromUtf16(face.named), QLatin1String(face.ours));
    }
    for (const char* ours : {proportional, fixedPitch}) {
        for (const char* second : secondChoices) {
            QFont::insertSubstitution(QLatin1String(ours), QLatin1String(second));
        }
    }
}

QFont windowFont() {
    return QFont(QLatin1String(proportional), 9);
}

QFont fixedFont() {
    return QFont(QLatin1String(fixedPitch), 9);
}

void setAppearance(QApplication& application) {
    initialiseIcons();
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan)); // dates and sizes in file dialogs
    registerFontSubstitutions();
    application.setStyle(new PanelStyle);
    application.setPalette(panelColours());
    application.setFont(windowFont());
    QToolTip::setFont(windowFont());
    QToolTip::setPalette(panelColours());
    application.setWindowIcon(QIcon(QStringLiteral(":/icons/relvane.svg")));
}

} // namespace relvane::qt
