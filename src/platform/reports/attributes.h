// The block of attributes under a bar: labels and values in two columns, long values over the whole width.
#pragma once

#include <vector>

#include "reports/cells.h"
#include "reports/row_text.h"

namespace relvane::reports {

class Attributes {
public:
    Attributes(const ReportDefinition& definition, Cells& cells, double width)
        : definition_(definition), cells_(cells), width_(width) {}

    Block block(const AttributeBlock& attributes, const Row& row);

private:
    struct Shown { // an attribute of a row
        QString label, text;
        Wrap wrap;
        bool block; // the label above the text
    };
    void addTextBlock(Block& target, const Shown& shown);
    void addPair(Block& target, const std::vector<Shown>& pair, double labelWidth);

    const ReportDefinition& definition_;
    Cells& cells_;
    double width_;
};

} // namespace relvane::reports
