#include "formview/form_view.h"

#include <algorithm>

#include "formview/colours.h"
#include "formview/designer.h"
#include "formview/form_pane.h"
#include "formview/form_target.h"
#include "formview/picture_image.h"
#include "formview/window_parts.h"

namespace relvane::formview {
namespace {

constexpr int smallestSide = 16;

QSize saneSize(QSize size) {
    return {std::clamp(size.width(), smallestSide, longestSide),
            std::clamp(size.height(), smallestSide, longestSide)};
}

WindowFrame frameOf(const access::DesignObject& root, const Text& form, bool isDesigner) {
    WindowFrame frame;
    const Text caption = text(root, u"Caption");
    frame.title =
        caption.empty() || isDesigner ? qText(form) + QStringLiteral(" : フォーム") : qText(caption);
    if (isDesigner) {
        return frame;
    }
    frame.edge = static_cast<WindowFrame::Edge>(std::clamp(number(root, u"BorderStyle", 2), 0, 3));
    const bool isDialog = frame.edge == WindowFrame::Edge::Dialog;
    frame.controlBox = flag(root, u"ControlBox", true);
    frame.minButton = !isDialog && flag(root, u"MinButton", true);
    frame.maxButton = !isDialog && flag(root, u"MaxButton", true);
    frame.closeButton = flag(root, u"CloseButton", true);
    return frame;
}

} // namespace

FormView::FormView(dao::Database& target) : target_(std::make_unique<FormTarget>(target)) {}

FormView::~FormView() = default;

void FormView::requireOpens(const Text& form) {
    constexpr int formNotOpen = 2450;
    const auto design = target_->design(form);
    for (const Text& named : target_->records().formsNamedBy(text(design->root(), u"RecordSource"))) {
        if (!equalsIgnoringCase(named, form)) {
            throw RunTimeError(formNotOpen, u"フォームが見つかりません。 (" + named + u")");
        }
    }
}

Picture FormView::draw(const Text& form, const FormViewOptions& options) {
    const auto design = target_->design(form);
    std::optional<FormPane> pane;
    if (!options.design) {
        requireOpens(form);
        pane.emplace(*target_, *design);
    }
    target_->subformsLeft = mostSubforms;
    target_->valuesLeft = mostValues;
    const WindowFrame frame = frameOf(design->root(), form, options.design);
    const QMargins margins = options.wholeWindow ? frame.margins() : QMargins();
    const QSize client = saneSize(pane ? pane->naturalSize() : designerSize(*design));
    const QSize size = saneSize(client.grownBy(margins));
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    if (options.wholeWindow) {
        drawWindowFrame(painter, QRect(QPoint(), size), frame);
    }
    const QRect place = QRect(QPoint(), size).marginsRemoved(margins);
    if (pane) {
        pane->draw(painter, place);
    } else {
        drawDesigner(painter, place, *design, *target_);
    }
    painter.end();
    return pictureOf(image);
}

} // namespace relvane::formview
