#include "formview/form_pane.h"

#include <algorithm>

#include "formview/colours.h"
#include "formview/datasheet.h"
#include "formview/stored_picture.h"
#include "formview/window_parts.h"

namespace relvane::formview {
namespace {

using access::DesignObject;
using access::DesignType;

constexpr int detailIndex = 0, headerIndex = 1, footerIndex = 2; // Section(n)
constexpr std::size_t mostShownRows = 200;                       // more do not fit into any picture

enum ScrollBars { horizontal = 1, vertical = 2 };

const DesignObject* shownSection(const access::Design& design, int index) {
    constexpr int onPaper = 1;
    const DesignObject* section = design.section(index);
    const bool isShown =
        section != nullptr && flag(*section, u"Visible", true) && number(*section, u"DisplayWhen") != onPaper;
    return isShown ? section : nullptr;
}

int heightOf(const DesignObject* section) {
    return section == nullptr ? 0 : std::max(0, pixelsOfTwips(number(*section, u"Height")));
}

// A form of several pages shows the first: up to the break.
int firstPageHeight(const DesignObject& detail, int height) {
    for (const DesignObject* control : detail.children()) {
        const int top = pixelsOfTwips(number(*control, u"Top"));
        if (control->type() == DesignType::PageBreak && top > 0) {
            height = std::min(height, top);
        }
    }
    return height;
}

// The names of all fields that the controls, the order and the links of a form may want.
std::vector<Text> fieldsOf(const access::Design& design) {
    std::vector<Text> fields;
    const auto add = [&](TextView text) {
        fields.emplace_back(text);
        for (const jet::Token& token : jet::sqlTokens(text)) {
            if (token.isName()) {
                fields.emplace_back(token.text);
            }
        }
    };
    for (const DesignObject* control : design.controls()) {
        add(text(*control, u"ControlSource"));
        for (const Text& name : listItems(text(*control, u"LinkMasterFields"))) {
            add(name);
        }
    }
    return fields;
}

// What is totalled by a control; nothing where none does.
std::optional<std::vector<Text>> totalledFields(const access::Design& design) {
    std::optional<std::vector<Text>> fields;
    for (const DesignObject* control : design.controls()) {
        const Text source = text(*control, u"ControlSource");
        const auto expression =
            source.starts_with(u'=') ? parseExpression(TextView(source).substr(1)) : std::nullopt;
        if (expression && expression->hasTotal()) {
            fields = fields.value_or(std::vector<Text>());
            for (const FieldName& name : expression->fields()) {
                fields->push_back(name.field);
            }
        }
    }
    return fields;
}

// The form in a subform control, with the records that belong to the main one; nothing where there is no more room.
std::optional<FormPane> openSubform(FormTarget& target, const DesignObject& control,
                                    const RecordInHand& record, int depth) {
    const Text name = formOf(control);
    if (name.empty() || depth >= deepestSubform || --target.subformsLeft < 0) {
        return std::nullopt;
    }
    std::shared_ptr<const access::Design> design;
    skipErrors([&] { design = target.design(name); });
    if (design == nullptr) {
        return std::nullopt;
    }
    Links links;
    const auto children = listItems(text(control, u"LinkChildFields"));
    const auto masters = listItems(text(control, u"LinkMasterFields"));
    for (std::size_t i = 0; i < std::min(children.size(), masters.size()); ++i) {
        if (!children[i].empty() && !masters[i].empty()) {
            const auto child = parseExpression(children[i]);
            links.emplace_back(child && child->isField() ? *child->field : FieldName{{}, children[i]},
                               valueOfName(control, record, masters[i]));
        }
    }
    return FormPane(target, *design, depth + 1, std::move(links)); // the target keeps the design
}

} // namespace

FormShape shapeOf(const access::Design& design) {
    const int view = number(design.root(), u"DefaultView", 1);
    return view == 0 ? FormShape::Single : view == 2 ? FormShape::Datasheet : FormShape::Continuous;
}

FormPane::FormPane(FormTarget& target, const access::Design& design, int depth, Links links)
    : target_(target),
      design_(design),
      root_(design.root()),
      depth_(depth),
      shape_(shapeOf(design)),
      isBound_(!text(design.root(), u"RecordSource").empty()) {
    sections_.header = shownSection(design, headerIndex);
    sections_.detail = shownSection(design, detailIndex);
    sections_.footer = shownSection(design, footerIndex);
    sections_.headerHeight = heightOf(sections_.header);
    sections_.detailHeight = heightOf(sections_.detail);
    sections_.footerHeight = heightOf(sections_.footer);
    if (!isBound_ && shape_ == FormShape::Continuous) {
        shape_ = FormShape::Single; // one record that has no fields
    }
    if (shape_ == FormShape::Single && sections_.detail != nullptr) {
        sections_.detailHeight = firstPageHeight(*sections_.detail, sections_.detailHeight);
    }
    readRecords(std::move(links));
}

// The stored filter waits until a person applies it; the order does not.
void FormPane::readRecords(Links links) {
    if (!isBound_) {
        return;
    }
    const bool isSingle = shape_ == FormShape::Single;
    const Text source = text(root_, u"RecordSource");
    Wanted wanted{
        .rows = isSingle ? 1 : mostShownRows, .fields = fieldsOf(design_), .links = std::move(links)};
    if (flag(root_, u"OrderByOn")) {
        wanted.order = parseOrder(text(root_, u"OrderBy")).value_or(std::vector<OrderKey>());
    }
    records_ = target_.records().records(source, wanted);
    if (const auto fields = totalledFields(design_)) {
        all_ =
            target_.records().records(source, {.rows = mostRows, .fields = *fields, .links = wanted.links});
    }
    if (records_ && flag(root_, u"DataEntry")) {
        for (auto* emptied : {&records_, &all_}) {
            if (*emptied) {
                (*emptied)->rows.clear();
                (*emptied)->total = 0;
            }
        }
    }
}

bool FormPane::canAdd() const {
    constexpr int snapshot = 2;
    return records_ && records_->isUpdatable && flag(root_, u"AllowAdditions", true) &&
           number(root_, u"RecordsetType") != snapshot;
}

std::size_t FormPane::shownRows() const {
    if (!records_) {
        return 1;
    }
    const bool endIsShown = records_->rows.size() == records_->total;
    return records_->rows.size() + (canAdd() && endIsShown ? 1 : 0);
}

RecordInHand FormPane::record(std::size_t row) const {
    return {records_ ? &*records_ : nullptr,
            row,
            isBound_,
            all_ ? &*all_ : nullptr,
            [this, row](const FieldName& name) { return subformValue(name, row); },
            0,
            &target_.valuesLeft};
}

Value FormPane::subformValue(const FieldName& name, std::size_t row) const {
    const DesignObject* control = design_.findControl(name.table);
    if (control == nullptr || control->type() != DesignType::Subform) {
        return Null{};
    }
    const auto pane = openSubform(target_, *control, record(row), depth_);
    return pane ? pane->firstValue(name.field) : Value(Null{});
}

Value FormPane::firstValue(TextView name) const {
    const DesignObject* control = design_.findControl(name);
    return control != nullptr ? controlValue(*control, record(0))
           : records_         ? records_->value(0, {{}, Text(name)})
                              : Value(Null{});
}

int FormPane::selectors() const {
    return flag(root_, u"RecordSelectors", true) ? selectorWidth : 0;
}

QSize FormPane::naturalSize() const {
    const int bar = flag(root_, u"NavigationButtons", true) ? navigationHeight : 0;
    const int width = pixelsOfTwips(number(root_, u"Width")) + selectors();
    const QSize seen(pixelsOfTwips(number(root_, u"Right") - number(root_, u"Left")),
                     pixelsOfTwips(number(root_, u"Bottom") - number(root_, u"Top")));
    constexpr int smallest = 40;
    const bool wasSeen = seen.width() > smallest && seen.height() > smallest;
    const int bars = number(root_, u"ScrollBars", 3);
    if (shape_ == FormShape::Single) {
        const bool sizesItself = flag(root_, u"AutoResize", true) || !wasSeen;
        return sizesItself ? QSize(width, sections_.height() + bar) : seen;
    }
    constexpr int usualRows = 10;
    if (shape_ == FormShape::Datasheet) {
        const QSize sheet = datasheetSize(design_, std::min<std::size_t>(shownRows(), 2 * usualRows));
        return wasSeen ? seen
                       : sheet + QSize(selectors() + ((bars & vertical) != 0 ? scrollBarWidth : 0), bar + 1);
    }
    const int rows = static_cast<int>(std::min<std::size_t>(shownRows(), usualRows));
    const int fitting = sections_.headerHeight + sections_.footerHeight + rows * sections_.detailHeight + bar;
    return {width + ((bars & vertical) != 0 ? scrollBarWidth : 0), wasSeen ? seen.height() : fitting};
}

QRect FormPane::drawBars(QPainter& painter, QRect client) const {
    const int bars = number(root_, u"ScrollBars", 3);
    const int width = pixelsOfTwips(number(root_, u"Width")) + selectors();
    const int rows = static_cast<int>(shownRows());
    const int height = shape_ == FormShape::Single ? sections_.height()
                       : shape_ == FormShape::Continuous
                           ? sections_.headerHeight + sections_.footerHeight + rows * sections_.detailHeight
                           : datasheetSize(design_, static_cast<std::size_t>(rows)).height();
    const int wide = shape_ == FormShape::Datasheet ? datasheetSize(design_, 0).width() + selectors() : width;
    const bool hasNavigation = flag(root_, u"NavigationButtons", true);
    QRect body = client;
    int bottom = hasNavigation ? navigationHeight : 0;
    const bool scrollsDown = (bars & vertical) != 0 && height > client.height() - bottom;
    const int right = scrollsDown ? scrollBarWidth : 0;
    const bool scrollsAside = (bars & horizontal) != 0 && wide > client.width() - right;
    bottom = std::max(bottom, scrollsAside ? scrollBarWidth : 0);
    body.adjust(0, 0, -right, -bottom);
    if (scrollsDown) {
        drawVerticalScrollBar(painter, {body.right() + 1, body.top(), right, body.height()},
                              std::min(0.95, static_cast<double>(body.height()) / std::max(1, height)));
    }
    const QRect below(client.left(), body.bottom() + 1, client.width(), bottom);
    QRect rest = below;
    if (hasNavigation) {
        const std::size_t total = records_ ? records_->total : 1;
        rest = drawNavigationBar(painter, below, 1, std::max<std::size_t>(total, 1), canAdd());
    }
    if (scrollsAside) {
        rest.setRight(rest.right() - right);
        painter.fillRect(QRect(rest.right() + 1, rest.top(), right, rest.height()),
                         colourOf(ScreenPart::ButtonFace));
        if (rest.width() > 2 * scrollBarWidth) {
            drawHorizontalScrollBar(painter, rest,
                                    std::min(0.95, static_cast<double>(body.width()) / std::max(1, wide)));
        }
    }
    return body;
}

void FormPane::draw(QPainter& painter, QRect client) const {
    painter.save();
    painter.setClipRect(client, Qt::IntersectClip);
    const QRect body = drawBars(painter, client);
    painter.setClipRect(body, Qt::IntersectClip);
    if (shape_ == FormShape::Datasheet) {
        drawDatasheet(painter, body, design_, target_, record(0), shownRows());
    } else {
        drawSheets(painter, body);
    }
    painter.restore();
}

void FormPane::drawGround(QPainter& painter, const DesignObject& section, QRect place) const {
    painter.fillRect(place, colourOf(number(section, u"BackColor", 0xFFFFFF)));
    switch (static_cast<Effect>(number(section, u"SpecialEffect"))) {
    case Effect::Raised:
        drawThinRaised(painter, place);
        break;
    case Effect::Sunken:
        drawFrame(painter, place, colourOf(ScreenPart::ButtonShadow), colourOf(ScreenPart::ButtonHighlight));
        break;
    default:
        break;
    }
}

void FormPane::drawSection(QPainter& painter, const DesignObject& section, QRect place,
                           std::size_t row) const {
    painter.save();
    painter.setClipRect(place, Qt::IntersectClip);
    Scene scene{.painter = painter, .target = target_, .record = record(row), .depth = depth_};
    for (const DesignObject* control : section.children()) {
        drawControl(scene, place.topLeft(), *control);
    }
    painter.restore();
}

// Header, as many records as fit, footer at the lower end. First what lies behind all controls: the sections' colours,
// and the picture of the form above these.
void FormPane::drawSheets(QPainter& painter, QRect body) const {
    const int left = body.left() + selectors(), width = body.right() + 1 - left;
    const int footerTop =
        std::max(body.top() + sections_.headerHeight, body.bottom() + 1 - sections_.footerHeight);
    const QRect header(left, body.top(), width, sections_.headerHeight);
    const QRect detail(left, header.top() + header.height(), width,
                       footerTop - header.top() - header.height());
    const QRect footer(left, footerTop, width, sections_.footerHeight);
    painter.fillRect(body, colourOf(ScreenPart::ButtonFace));
    if (sections_.detail != nullptr) {
        drawGround(painter, *sections_.detail, detail);
    }
    if (sections_.header != nullptr) {
        drawGround(painter, *sections_.header, header);
    }
    if (sections_.footer != nullptr) {
        drawGround(painter, *sections_.footer, footer);
    }
    const auto alignment =
        static_cast<PictureAlignment>(std::clamp(number(root_, u"PictureAlignment", 2), 0, 5));
    const StoredPicture picture = StoredPicture::of(root_);
    const int formWidth = pixelsOfTwips(number(root_, u"Width"));
    const QRect window = QRect(left, body.top(), width, body.height());
    const QRect ground = alignment == PictureAlignment::FormCentre
                             ? QRect(window.topLeft(), QSize(formWidth, window.height()))
                             : window;
    if (flag(root_, u"PictureTiling")) {
        picture.drawTiled(painter, window, alignment, qText(text(root_, u"Picture")));
    } else {
        picture.draw(painter, ground, static_cast<SizeMode>(number(root_, u"PictureSizeMode")), alignment,
                     qText(text(root_, u"Picture")));
    }
    const bool hasLines = flag(root_, u"DividingLines", true);
    const auto divide = [&](int y) {
        if (hasLines) {
            painter.fillRect(left, y, width, 1, colourOf(ScreenPart::ButtonShadow));
        }
    };
    const bool isSingle = shape_ == FormShape::Single;
    const std::size_t rows = isSingle ? std::min<std::size_t>(shownRows(), 1) : shownRows();
    painter.save();
    painter.setClipRect(QRect(body.left(), detail.top(), body.width(), detail.height()), Qt::IntersectClip);
    int top = detail.top();
    for (std::size_t row = 0; sections_.detail != nullptr && row < rows && top <= detail.bottom(); ++row) {
        const QRect place(left, top, width, isSingle ? detail.height() : std::max(1, sections_.detailHeight));
        if (const auto colour = alternateColour(*sections_.detail, u"AlternateBackColor", row)) {
            painter.fillRect(place, *colour);
        }
        drawSection(painter, *sections_.detail, place, row);
        if (selectors() > 0) {
            const SelectorSign sign = row == 0              ? SelectorSign::Current
                                      : record(row).isNew() ? SelectorSign::New
                                                            : SelectorSign::None;
            drawRecordSelector(painter, {body.left(), top, selectorWidth, place.height()}, sign);
        }
        top += place.height();
        if (!isSingle) {
            divide(top - 1);
        }
    }
    painter.restore();
    if (sections_.header != nullptr && sections_.headerHeight > 0) {
        drawSection(painter, *sections_.header, header, 0);
        divide(header.bottom());
    }
    if (sections_.footer != nullptr && sections_.footerHeight > 0) {
        drawSection(painter, *sections_.footer, footer, 0);
        divide(footer.top());
    }
}

Text formOf(const DesignObject& subform) {
    constexpr TextView prefix = u"Form.";
    Text name = text(subform, u"SourceObject");
    if (equalsIgnoringCase(TextView(name).substr(0, prefix.size()), prefix)) {
        name.erase(0, prefix.size());
    }
    return name;
}

void drawSubformInside(Scene& scene, const DesignObject& control, QRect box) {
    scene.painter.fillRect(box, Qt::white);
    if (const auto pane = openSubform(scene.target, control, scene.record, scene.depth)) {
        pane->draw(scene.painter, box);
    }
}

} // namespace relvane::formview
