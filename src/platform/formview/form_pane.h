// A form in use: its sections with the record in hand, as a window or the frame of a subform holds them.
#pragma once

#include <functional>

#include <QPainter>
#include <QSize>

#include "formview/control_painter.h"

namespace relvane::formview {

enum class FormShape { Single = 0, Continuous = 1, Datasheet = 2 }; // by the numbers of DefaultView
FormShape shapeOf(const access::Design& design);

// Access 97 opens a form within a form within a form; a chain of more, a circle as well, ends there.
constexpr int deepestSubform = 2;

constexpr int mostSubforms = 200;               // in one picture
constexpr std::int64_t mostValues = 50'000'000; // computed for one picture: a few seconds

// A form and the records that it stands on.
class FormPane {
public:
    // `links` are what a main form wants of the records of its subform.
    FormPane(FormTarget& target, const access::Design& design, int depth = 0, Links links = {});

    // What its window makes room for: the whole form where it sizes itself, else what was last seen of it.
    QSize naturalSize() const;
    void draw(QPainter& painter, QRect client) const;

    // Of a control or a field, with the first record.
    Value firstValue(TextView name) const;

private:
    struct Sections {
        const access::DesignObject *header = nullptr, *detail = nullptr, *footer = nullptr;
        int headerHeight = 0, detailHeight = 0, footerHeight = 0;

        int height() const { return headerHeight + detailHeight + footerHeight; }
    };

    void readRecords(Links links);
    bool canAdd() const;
    std::size_t shownRows() const; // with the new record
    int selectors() const;
    void drawSheets(QPainter& painter, QRect body) const;
    void drawSection(QPainter& painter, const access::DesignObject& section, QRect place,
                     std::size_t row) const;
    void drawGround(QPainter& painter, const access::DesignObject& section, QRect place) const;
    QRect drawBars(QPainter& painter, QRect client) const; // leaves the body
    RecordInHand record(std::size_t row) const;
    Value subformValue(const FieldName& name, std::size_t row) const;

    FormTarget& target_;
    const access::Design& design_;
    const access::DesignObject& root_;
    int depth_;
    FormShape shape_;
    Sections sections_;
    bool isBound_;
    std::optional<Records> records_;
    std::optional<Records> all_; // where something totals them; with the fields of totals alone
};

// The name of the form that a subform control holds.
Text formOf(const access::DesignObject& subform);
// That form, in the box inside of its edge.
void drawSubformInside(Scene& scene, const access::DesignObject& control, QRect box);

} // namespace relvane::formview
