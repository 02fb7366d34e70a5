// Where a line of source (SQL, VBA) that is too long for its column had best be broken.
#pragma once

#include <vector>

#include <QStringView>

namespace relvane::reports {

class SourceBreaks {
public:
    explicit SourceBreaks(QStringView line);

    // The end of the piece that begins at `from`, of which `fitting` characters (at least one) have room. A good
    // place is taken although it leaves some of the line empty; a better one may lie further back. A single blank at
    // the end may hang over.
    qsizetype after(qsizetype from, qsizetype fitting) const;

private:
    QStringView line_;
    std::vector<unsigned char> quality_; // of a break in front of the character
};

} // namespace relvane::reports
