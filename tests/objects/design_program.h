// The program on fakes, driven through its panels of forms, reports and control counts.
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

// Object types as their numbers.
enum TypeNumber {
    labelType = 100,
    rectangleType = 101,
    commandButtonType = 104,
    checkBoxType = 106,
    textBoxType = 109,
    comboBoxType = 111,
    pageBreakType = 118,
    customControlType = 119,
    toggleButtonType = 122,
};

struct DesignProgram : FakeProgram {
    // A form or report of the target, which answers what the lists ask of it.
    FakeForm& addForm(const Text& name) {
        target->addDocument(u"Forms", name);
        FakeForm& form = targetApps.forms.add(name);
        for (const TextView property : {u"RecordSource", u"Filter", u"OrderBy", u"Caption", u"MenuBar"}) {
            form.set(property, Text());
        }
        for (const TextView property : {u"DefaultView", u"RecordsetType", u"RecordLocks"}) {
            form.set(property, number(0));
        }
        for (const TextView property :
             {u"AllowEdits", u"AllowDeletions", u"AllowAdditions", u"DataEntry", u"PopUp", u"Modal"}) {
            form.set(property, false);
        }
        return form;
    }
    FakeReport& addReport(const Text& name) {
        target->addDocument(u"Reports", name);
        FakeReport& report = targetApps.reports.add(name);
        for (const TextView property : {u"RecordSource", u"Filter", u"OrderBy", u"Caption", u"MenuBar"}) {
            report.set(property, Text());
        }
        report.set(u"RecordLocks", number(0));
        return report;
    }
    static FakeLevel& addLevel(FakeReport& report, const Text& source) {
        FakeLevel& level = report.addLevel();
        level.set(u"ControlSource", source);
        for (const TextView property : {u"SortOrder", u"GroupOn", u"GroupInterval", u"KeepTogether"}) {
            level.set(property, number(0));
        }
        level.set(u"GroupHeader", false).set(u"GroupFooter", false);
        return level;
    }
    template <class Design>
    static FakeControl& addLabel(Design& design, const Text& name) {
        FakeControl& label = design.add(name, labelType);
        label.set(u"Caption", u"標題の" + name);
        return label;
    }

    void selectOnce() {
        if (context().AnalysisMode == 0) {
            select();
        }
    }
    // Press the buttons with the option chosen: 1 the short list, 2 the full one; 1 forms, 2 reports, 3 both.
    bool runForms(int option) {
        selectOnce();
        form().optForm.choose(option - 1);
        return press(form().cmdForm);
    }
    bool runReports(int option) {
        selectOnce();
        form().optReport.choose(option - 1);
        return press(form().cmdReport);
    }
    bool runCounts(int option) {
        selectOnce();
        form().optControl.choose(option - 1);
        return press(form().cmdControl);
    }
    // The list's own entry for the name, and the choice of that entry alone.
    void choose(ComboBox& list, OptionGroup& scope, const Text& name) {
        selectOnce();
        const auto& names = list.List();
        list.choose(static_cast<int>(std::ranges::find(names, name) - names.begin()));
        scope.choose(1);
    }
    void chooseForm(const Text& name) { choose(form().cboForm, form().optFSelect, name); }
    void chooseReport(const Text& name) { choose(form().cboReport, form().optRSelect, name); }

    long reportsShown(const Text& name) {
        return std::count(reportApps.calls.begin(), reportApps.calls.end(), u"OpenReport " + name + u" 2");
    }
    std::vector<Text> column(const Text& table, TextView field) {
        std::vector<Text> values;
        for (const FakeRow& row : store.rows(table)) {
            values.push_back(toText(valueOf(row, field)));
        }
        return values;
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
