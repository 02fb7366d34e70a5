// Rows as the analyses write them, in a work database as it is installed: the reports read it through its views.
#pragma once

#include <array>
#include <initializer_list>
#include <memory>
#include <utility>

#include "platform/recordset.h"
#include "platform/value.h"
#include "support/samples.h"

namespace relvane::test {

// A row: fields and their values. What is not named stays unwritten.
using Cells = std::vector<std::pair<const char16_t*, Value>>;

// A copy of the installed work database, gone with the object.
class AnalysedStore {
public:
    AnalysedStore();

    void add(TextView table, const Cells& cells);

    // A table with so many fields. Option 2 writes neither key marks nor descriptions of fields, option 3 does.
    void addTable(const Text& name, int fields, int option = 3);
    // A linked table with one field.
    void addLink(const Text& name, const Text& kind, const Text& connect, std::int64_t attributes,
                 int option = 3);
    // Each index by its fields; the first is the primary key. Numbered through all indexes of the table.
    void addIndexes(const Text& table, const std::vector<std::vector<Text>>& indexes);
    // Option 1 writes name, type and SQL alone; option 2 no SQL.
    void addQuery(const Text& name, const Text& type, const Value& sql, int fields, int option = 3);
    // A form or report, with its attributes; its controls are those added behind it. Option 1 is the simple list.
    void addForm(const Text& name, const Text& recordSource, int option = 2);
    void addReport(const Text& name, const Text& recordSource, int option = 2);
    void addGroupLevel(const Text& source, std::int64_t order, bool header, std::int64_t unit,
                       std::int64_t interval, std::int64_t together);
    // A property: group, label, value.
    using Property = std::array<Text, 3>;
    void addControl(const Text& name, const Text& type, const Text& place,
                    const std::vector<Property>& properties);
    // Controls of all types in turn, with the rows that each of them usually has.
    void addControls(int count);
    void addCensus(const Text& kind, const Text& name, const std::vector<std::int64_t>& counts);
    void addFile(const Text& name, double kilobytes, const Text& folder, bool readOnly);

    // Closes the cursors that write, and gives the store.
    std::shared_ptr<RowStore> rows();

private:
    TemporaryFolder folder_;
    std::shared_ptr<RowStore> store_;
    std::vector<std::pair<Text, std::unique_ptr<Recordset>>> writers_;
    std::int64_t tables_ = 0, indexed_ = 0, queries_ = 0, files_ = 0, forms_ = 0, reports_ = 0, controls_ = 0,
                 levels_ = 0, counted_ = 0;
    bool onReport_ = false; // the controls
};

// Names of 150 characters: full-width, half-width, Latin without a blank.
std::vector<Text> longestNames();

// A statement of so many units whose lines are longer than a page is wide; each of its values occurs once.
Text endlessSql(std::size_t units);

} // namespace relvane::test
