// The program on fakes, driven through its panel of tables.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "support/fakes_desk.h"

namespace relvane::test {

inline Value number(std::int64_t value) {
    return value;
}
inline Value text(const Text& value) {
    return value;
}

constexpr std::int32_t systemObject = -0x7fffffff - 1; // the sign bit alone

struct TableProgram : testing::Test, FakeProgram {
    void selectOnce() {
        if (context().AnalysisMode == 0) {
            select();
        }
    }
    // Presses the button with the option chosen: 1 indexes, 2 tables, 3 tables with key marks and descriptions.
    bool run(int option) {
        selectOnce();
        form().optTable.choose(option - 1);
        return press(form().cmdTable);
    }
    const std::vector<FakeRow>& tables(int option = 3) {
        run(option);
        return store.rows(u"T_RvTblInfo");
    }
    const std::vector<FakeRow>& fields(int option = 3) {
        run(option);
        return store.rows(u"T_RvTblItem");
    }
    const std::vector<FakeRow>& indexes() {
        run(1);
        return store.rows(u"T_RvIndex");
    }
    // The list's own entry for the name, and the choice of that entry alone.
    void choose(const Text& name) {
        selectOnce();
        const auto& names = form().cboTable.List();
        form().cboTable.choose(static_cast<int>(std::ranges::find(names, name) - names.begin()));
        form().optTSelect.choose(1);
    }
    void includeLinks() {
        selectOnce();
        form().chkLink.tick(false);
    }
    // A table with a number and a text, the number being its key.
    FakeTableDef& addTableWithKey(const Text& name, const Text& connect = {}) {
        FakeTableDef& table = target->addTable(name, connect);
        addField(table.fields, u"番号", 4, 4).attributes = 17;
        addField(table.fields, u"名前", 10, 40);
        table.addIndex(u"PrimaryKey", {u"番号"}).primary = true;
        return table;
    }
    long reportsShown(const Text& name) {
        return std::count(reportApps.calls.begin(), reportApps.calls.end(), u"OpenReport " + name + u" 2");
    }
    std::vector<Text> namesOf(const std::vector<FakeRow>& rows, TextView field = u"TableName") {
        std::vector<Text> names;
        for (const FakeRow& row : rows) {
            names.push_back(toText(valueOf(row, field)));
        }
        return names;
    }
    // What is shown at once from here on: the message line and the percentage.
    std::vector<Text>& watch() {
        form().txtMesege.onRefresh = [this] { shown_.push_back(form().txtMesege.Caption); };
        form().lblPer.onRefresh = [this] { shown_.push_back(form().lblPer.Caption); };
        return shown_;
    }

private:
    std::vector<Text> shown_;
};

} // namespace relvane::test
