// What controls show of the record in hand.
#pragma once

#include "formview/design_values.h"
#include "formview/form_target.h"

namespace relvane::formview {

// The record that a form stands on. Row `records->rows.size()` is the new record.
struct RecordInHand {
    const Records* records = nullptr; // none: the form has no record source, or one that cannot be read
    std::size_t row = 0;
    bool isBound = false;                               // the form has a record source
    const Records* all = nullptr;                       // what totals are made of
    std::function<Value(const FieldName&)> ofSubform{}; // the value of a control in a subform
    int steps = 0;                                      // by controls that name controls
    std::int64_t* valuesLeft = nullptr; // how many values may still be computed; as many as it takes

    bool isNew() const { return records != nullptr && row >= records->rows.size(); }
};

// Null for what is not bound, not known, or cannot be computed. An unbound control has its default value, and so has a
// bound one of the new record, where it depends on nothing.
Value controlValue(const access::DesignObject& control, const RecordInHand& record);

// Of a field or control by its name, or of an expression, as a subform's link to its main form has it.
Value valueOfName(const access::DesignObject& beside, const RecordInHand& record, const Text& name);

// Whether the control names a field that the form does not have: it shows "#Name?".
bool namesMissingField(const access::DesignObject& control, const RecordInHand& record);

// What a text box shows, and whether general alignment puts it to the right.
struct ShownText {
    QString text;
    bool isNumber = false;
};
ShownText shownText(const access::DesignObject& control, const RecordInHand& record);

// The rows of a combo or list box.
struct ListRows {
    std::vector<std::vector<Value>> rows;
    std::vector<int> widths; // of the columns in twips; -1: what is left of the box, divided equally
    std::size_t boundColumn = 0;
    bool hasHeads = false; // the first row is the heading

    std::optional<std::size_t> firstShown() const; // the first column that is not hidden
};
ListRows listRows(const access::DesignObject& control, FormTarget& target);

// What a combo box shows for its value: the first column that is not hidden, of the row whose bound column has it.
ShownText shownChoice(const access::DesignObject& control, const RecordInHand& record, FormTarget& target);

// "a;b;\"c;d\"" as the texts between the signs.
std::vector<Text> listItems(TextView list);

} // namespace relvane::formview
