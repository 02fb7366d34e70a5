#include "reports/wrapping.h"

#include <algorithm>

#include <QTextLayout>

#include "reports/source_breaks.h"

namespace relvane::reports {
namespace {

constexpr char16_t controlSign = u'□';

bool isControl(QChar c) {
    return c.unicode() < 0x20 || c.unicode() == 0x7F || (c.unicode() >= 0x80 && c.unicode() < 0xA0);
}

// Columns of the fixed-width face: half-width characters take one, the others two.
int columnsOf(QChar c) {
    return c.unicode() < 0x80 || (c.unicode() >= 0xFF61 && c.unicode() <= 0xFF9F) ? 1 : 2;
}

QString withoutControls(const QString& line, Wrap how) {
    if (std::none_of(line.begin(), line.end(), isControl)) {
        return line;
    }
    QString shown;
    int column = 0;
    for (const QChar c : line) {
        if (c == u'\t') {
            const int blanks = how == Wrap::Source ? style::tabWidth - column % style::tabWidth : 1;
            shown += QString(blanks, u' ');
            column += blanks;
        } else {
            shown += isControl(c) ? QChar(controlSign) : c;
            column += columnsOf(c);
        }
    }
    return shown;
}

QStringList linesOf(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    while (text.endsWith(u'\n')) {
        text.chop(1);
    }
    return text.split(u'\n');
}

// How many code units from `from` on fit; at least one character.
qsizetype fitting(Fonts& fonts, int font, QStringView text, double width) {
    double sum = 0;
    qsizetype count = 0;
    while (count < text.size()) {
        qsizetype next = count + 1;
        // A surrogate pair and a mark that combines with its base are never torn apart.
        while (next < text.size() && (text[next].isLowSurrogate() || text[next].isMark())) {
            ++next;
        }
        sum += fonts.width(font, text.mid(count, next - count));
        if (sum > width && count > 0) {
            break;
        }
        count = next;
    }
    return count;
}

void wrapAtCharacters(Fonts& fonts, int font, const QString& line, double width,
                      std::vector<TextLine>& lines) {
    for (qsizetype done = 0; done < line.size();) {
        const qsizetype count = fitting(fonts, font, QStringView(line).mid(done), width);
        lines.push_back({line.mid(done, count), 0, done > 0, done + count < line.size()});
        done += count;
    }
}

// What follows a wrap of a source line stands a little deeper than the line itself.
void wrapSource(Fonts& fonts, int font, const QString& line, double width, std::vector<TextLine>& lines) {
    const auto first = std::find_if(line.begin(), line.end(), [](QChar c) { return c != u' '; });
    const double indent =
        std::min((static_cast<double>(first - line.begin()) + 2) * fonts.width(font, u' '), width / 2);
    const SourceBreaks breaks(line);
    for (qsizetype done = 0; done < line.size();) {
        const double inset = done > 0 ? indent : 0;
        const QStringView rest = QStringView(line).mid(done);
        const qsizetype count = fitting(fonts, font, rest, width - inset);
        const qsizetype end = count < rest.size() ? breaks.after(done, count) : line.size();
        lines.push_back({line.mid(done, end - done), inset, done > 0, end < line.size()});
        done = end;
    }
}

void wrapAtWords(Fonts& fonts, int font, const QString& line, double width, std::vector<TextLine>& lines) {
    QTextLayout layout(line, fonts.font(font));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(Qt::LeftToRight);
    layout.setTextOption(option);
    layout.beginLayout();
    bool continues = false;
    for (QTextLine part = layout.createLine(); part.isValid(); part = layout.createLine()) {
        part.setLineWidth(width);
        const qsizetype end = part.textStart() + part.textLength();
        lines.push_back({line.mid(part.textStart(), part.textLength()), 0, continues, end < line.size()});
        continues = true;
    }
    layout.endLayout();
}

} // namespace

std::vector<TextLine> wrap(Fonts& fonts, int font, QString text, double width, Wrap how) {
    std::vector<TextLine> lines;
    for (const QString& raw : linesOf(std::move(text))) {
        const QString line = withoutControls(raw, how);
        if (line.isEmpty() || fonts.width(font, line) <= width) {
            lines.push_back({line});
        } else if (how == Wrap::Words) {
            wrapAtWords(fonts, font, line, width, lines);
        } else if (how == Wrap::Characters) {
            wrapAtCharacters(fonts, font, line, width, lines);
        } else {
            wrapSource(fonts, font, line, width, lines);
        }
    }
    return lines;
}

QString elide(Fonts& fonts, int font, QString text, double width) {
    text = withoutControls(text.simplified() == text ? text : linesOf(text).join(u' '), Wrap::Words);
    if (fonts.width(font, text) <= width) {
        return text;
    }
    const double room = width - fonts.width(font, QChar(style::cutSign));
    return text.left(room > 0 ? fitting(fonts, font, text, room) : 0) + QChar(style::cutSign);
}

} // namespace relvane::reports
