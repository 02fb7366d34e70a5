#include "reports/report_document.h"

#include <algorithm>
#include <deque>
#include <map>

#include <QPainter>

#include "platform/runtime_error.h"
#include "reports/composer.h"
#include "reports/page_frame.h"
#include "reports/placed_sheet.h"

namespace relvane::reports {
namespace {

constexpr int reportNotFound = 2103;

// A jump to a page composes some pages before it too and keeps them: a person who turns pages back would
// otherwise let the store sort all rows anew for each page.
constexpr int pagesBefore = 7;
constexpr std::size_t pagesKept = 16;

// The first row of a table, only the named fields; nothing when the table is empty or the store has no such table.
std::optional<Row> firstRow(const std::shared_ptr<RowStore>& store, const Text& table,
                            const FieldNames& fields) {
    try {
        Rows rows(store, table, {}, fields);
        const Row* row = rows.at(0);
        return row != nullptr ? std::optional(*row) : std::nullopt;
    } catch (const RunTimeError& error) {
        if (error.is(ErrorNumber::TableNotFound)) {
            return std::nullopt;
        }
        throw;
    }
}

Text firstText(const std::shared_ptr<RowStore>& store, const Text& table, const Text& field) {
    const auto row = firstRow(store, table, {field});
    return row && !std::holds_alternative<Null>(row->front()) ? toText(row->front()) : Text();
}

Text titleOf(const ReportDefinition& definition, Rows& rows) {
    const Row* first = rows.at(0);
    const Row none(definition.fields.size());
    return fromQString(textOf(definition.title, first != nullptr ? *first : none, definition));
}

Text upperCased(const QString& text) {
    return upperCase(fromQString(text));
}

} // namespace

// All that a document knows, and the one composer that makes its pages.
class ReportDocument::Layout {
public:
    Layout(std::shared_ptr<RowStore> store, ReportDefinition givenDefinition, const DateTime& givenTime)
        : definition(std::move(givenDefinition)),
          now(givenTime),
          rows(store, definition.source, definition.sort, definition.fields),
          title(titleOf(definition, rows)),
          author(firstText(store, u"T_RvHyousi", u"Auther")),
          frame(definition, fonts, toQString(title), toQString(firstText(store, u"T_RvTitle", u"FileName")),
                now),
          bands(definition, fonts, columnWidth()) {
        if (author.empty()) {
            author = style::productLine;
        }
        if (definition.placed.empty()) {
            std::vector<std::optional<Row>> heads;
            for (const HeadBlock& head : definition.heads) {
                heads.push_back(firstRow(store, head.source, head.fields));
            }
            const Body body{frame.left(), frame.bodyTop(), frame.bodyBottom(), columnWidth(),
                            definition.columns};
            composer = std::make_unique<Composer>(definition, bands, rows, std::move(heads), body);
            Page page;
            do {
                starts.push_back(composer->position());
                page = Page();
                composer->compose(page, &outline, static_cast<int>(starts.size()) - 1);
            } while (!composer->atEnd());
            composedUpTo = static_cast<int>(starts.size());
            pages = composedUpTo;
        } else {
            while (rows.at(pages) != nullptr) {
                ++pages;
            }
            pages = std::max(pages, 1);
        }
    }

    double columnWidth() const {
        return (frame.width() - (definition.columns - 1) * style::columnGap) / definition.columns;
    }

    const Page& page(int number) {
        if (number < 0 || number >= pages) {
            throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
        }
        const auto known =
            std::find_if(kept.begin(), kept.end(), [&](const auto& one) { return one.first == number; });
        if (known != kept.end()) {
            return known->second;
        }
        if (!definition.placed.empty()) {
            return keep(number, placedPage(number));
        }
        if (number != composedUpTo) {
            composedUpTo = std::max(0, number - pagesBefore);
            composer->seek(starts[static_cast<std::size_t>(composedUpTo)]);
        }
        while (composedUpTo <= number) {
            Page page;
            composer->compose(page, nullptr, composedUpTo);
            ++composedUpTo;
            frame.add(page, composedUpTo, pages);
            keep(composedUpTo - 1, std::move(page));
        }
        return kept.back().second;
    }

    Page placedPage(int number) {
        Page page;
        if (const Row* row = rows.at(number)) {
            addPlaced(page, definition, fonts, *row);
        } else {
            page.items.push_back(textItem(fonts, fonts.number(style::table), 0, style::bindingMargin,
                                          style::bindingMargin, toQString(definition.nothing)));
        }
        return page;
    }

    const Page& keep(int number, Page page) {
        if (kept.size() == pagesKept) {
            kept.pop_front();
        }
        kept.emplace_back(number, std::move(page));
        return kept.back().second;
    }

    void search(TextView wanted, int number, std::vector<Hit>& hits);

    ReportDefinition definition;
    DateTime now;
    Fonts fonts;
    Rows rows;
    Text title, author;
    PageFrame frame;
    Bands bands;
    std::unique_ptr<Composer> composer;
    std::vector<Position> starts; // of the pages of a list
    std::vector<OutlineEntry> outline;
    int pages = 0;
    int composedUpTo = 0; // the page that the composer would fill next
    std::deque<std::pair<int, Page>> kept;
};

// Finds the text in each cell of a page, the lines of the cell put together.
void ReportDocument::Layout::search(TextView wanted, int number, std::vector<Hit>& hits) {
    const Page& found = page(number);
    std::vector<std::vector<const Item*>> cells;
    std::map<int, std::size_t> cellAt;
    for (const Item& item : found.items) {
        if (item.kind != Item::Kind::Text) {
            continue;
        }
        const auto known = item.cell != 0 ? cellAt.find(item.cell) : cellAt.end();
        if (known != cellAt.end()) {
            cells[known->second].push_back(&item);
        } else {
            if (item.cell != 0) {
                cellAt[item.cell] = cells.size();
            }
            cells.push_back({&item});
        }
    }
    for (const auto& lines : cells) {
        Text whole;
        for (const Item* line : lines) {
            whole += upperCased(line->text);
        }
        for (std::size_t at = whole.find(wanted); at != Text::npos;
             at = whole.find(wanted, at + wanted.size())) {
            Hit hit{number, {}};
            std::size_t lineStart = 0;
            for (const Item* line : lines) {
                const auto length = static_cast<std::size_t>(line->text.size());
                const std::size_t from = std::max(at, lineStart);
                const std::size_t to = std::min(at + wanted.size(), lineStart + length);
                if (from < to) {
                    const auto before = static_cast<qsizetype>(from - lineStart);
                    const auto count = static_cast<qsizetype>(to - from);
                    const QStringView text(line->text);
                    QRectF box = line->box;
                    box.setLeft(box.left() + fonts.width(line->font, text.left(before)));
                    box.setWidth(fonts.width(line->font, text.mid(before, count)));
                    hit.rectangles.push_back(box);
                }
                lineStart += length;
            }
            hits.push_back(std::move(hit));
        }
    }
}

ReportDocument::ReportDocument(std::shared_ptr<RowStore> store, ReportDefinition definition,
                               const DateTime& now)
    : layout_(std::make_unique<Layout>(std::move(store), std::move(definition), now)) {}
ReportDocument::ReportDocument(ReportDocument&&) noexcept = default;
ReportDocument& ReportDocument::operator=(ReportDocument&&) noexcept = default;
ReportDocument::~ReportDocument() = default;

const Text& ReportDocument::name() const {
    return layout_->definition.name;
}
const Text& ReportDocument::title() const {
    return layout_->title;
}
const Text& ReportDocument::author() const {
    return layout_->author;
}
const DateTime& ReportDocument::printedAt() const {
    return layout_->now;
}
int ReportDocument::pageCount() const {
    return layout_->pages;
}
QSizeF ReportDocument::pageSize(int) const {
    return {sheetWidth(layout_->definition), sheetHeight(layout_->definition)};
}
const std::vector<OutlineEntry>& ReportDocument::outline() const {
    return layout_->outline;
}

void ReportDocument::paint(QPainter& painter, int page) const {
    draw(painter, layout_->page(page).items, layout_->fonts);
}

std::vector<Hit> ReportDocument::search(TextView text) const {
    return search(text, 0, pageCount());
}

std::vector<Hit> ReportDocument::search(TextView text, int firstPage, int pages) const {
    std::vector<Hit> hits;
    const Text wanted = upperCase(text);
    if (!wanted.empty()) {
        const int end = firstPage + std::min(pages, pageCount() - firstPage);
        for (int page = std::max(firstPage, 0); page < end; ++page) {
            layout_->search(wanted, page, hits);
        }
    }
    return hits;
}

ReportDocument open(std::shared_ptr<RowStore> store, const Text& reportName, const DateTime& now,
                    const Text& subject) {
    const auto rows = store->OpenRecordset(u"RvReports");
    for (; !rows->EOF_(); rows->MoveNext()) {
        const Text name = toText(rows->Field(u"Name"));
        if (equalsIgnoringCase(name, reportName)) {
            ReportDefinition definition = parseDefinition(name, toText(rows->Field(u"Definition")));
            rows->Close();
            if (!subject.empty()) {
                definition.nothing = subject + u"：" + definition.nothing;
            }
            return {std::move(store), std::move(definition), now};
        }
    }
    throw RunTimeError(reportNotFound, u"レポート '" + reportName + u"' は存在しません。");
}

} // namespace relvane::reports
