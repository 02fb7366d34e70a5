// The program on fakes with the window of the developer support, and forms and reports that answer what its analyses of
// references ask of them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "support/fakes_desk.h"
#include "support/frm_sien.h"

namespace relvane::test {

// Object types as their numbers.
enum ControlNumber {
    labelNumber = 100,
    rectangleNumber = 101,
    lineNumber = 102,
    imageNumber = 103,
    commandButtonNumber = 104,
    optionButtonNumber = 105,
    checkBoxNumber = 106,
    optionGroupNumber = 107,
    boundObjectFrameNumber = 108,
    textBoxNumber = 109,
    listBoxNumber = 110,
    comboBoxNumber = 111,
    subformNumber = 112,
    objectFrameNumber = 114,
    unknownNumber = 117,
    pageBreakNumber = 118,
    customControlNumber = 119,
    toggleButtonNumber = 122,
    tabNumber = 123,
    pageNumber = 124,
};

struct ReferenceProgram : FakeProgram {
    FakeForm& addForm(const Text& name, const Text& recordSource = {}) {
        target->addDocument(u"Forms", name);
        FakeForm& form = targetApps.forms.add(name);
        form.set(u"RecordSource", recordSource);
        return form;
    }
    FakeReport& addReport(const Text& name, const Text& recordSource = {}) {
        target->addDocument(u"Reports", name);
        FakeReport& report = targetApps.reports.add(name);
        report.set(u"RecordSource", recordSource);
        return report;
    }
    // A combo or list box; as in real files, it answers for its SourceObject.
    template <class Design>
    static FakeControl& addList(Design& design, const Text& name, int type, const Text& rowSource,
                                const Text& rowSourceType = u"Table/Query") {
        FakeControl& list = design.add(name, type);
        list.set(u"SourceObject", rowSource).set(u"RowSource", rowSource);
        list.set(u"RowSourceType", rowSourceType).set(u"ControlSource", Text());
        return list;
    }
    // A control that holds data.
    template <class Design>
    static FakeControl& addBound(Design& design, const Text& name, int type, const Text& controlSource = {},
                                 const Text& defaultValue = {}) {
        FakeControl& control = design.add(name, type);
        control.set(u"ControlSource", controlSource).set(u"DefaultValue", defaultValue);
        return control;
    }
    FakeQueryDef& addQuery(const Text& name, const Text& sql, int type = 0) {
        FakeQueryDef& query = target->addQuery(name, type);
        query.sql = sql;
        return query;
    }

    // A procedure of a module, as the preparation lists it.
    void addProcedure(const Text& name, const Text& module = u"M") {
        procedures_.push_back(name);
        modules_.push_back(module);
    }

    // The window, on the target as it is when it is asked for first.
    FrmSien& sien() {
        if (!sien_) {
            select();
            dialogs.boxes.clear();
            sien_ = std::make_unique<FrmSien>(context());
            sien_->state.UserProcNames = procedures_;
            sien_->state.UserProcModules = modules_;
            sien_->state.UserProcCount = static_cast<std::int16_t>(procedures_.size());
        }
        return *sien_;
    }
    static void choose(ComboBox& list, const Text& name) {
        list.Clear();
        list.AddItem(name);
        list.ListIndex = 0;
    }
    // Runs a command of the window as a press of its button does. Whether the program goes on.
    bool run(void (*command)(FrmSien& sien)) {
        FrmSien& window = sien();
        return desk->dispatch([&] { command(window); });
    }

    // Some fields of each row, in order, with "|" between them; Null is an empty text.
    std::vector<Text> rowsOf(const Text& table, std::initializer_list<TextView> fields) {
        std::vector<Text> rows;
        for (const FakeRow& row : store.rows(table)) {
            Text joined;
            for (const TextView field : fields) {
                joined += (field == *fields.begin() ? u"" : u"|") + toText(valueOf(row, field));
            }
            rows.push_back(std::move(joined));
        }
        return rows;
    }
    long reportsShown(const Text& name) {
        return std::count(reportApps.calls.begin(), reportApps.calls.end(), u"OpenReport " + name + u" 2");
    }
    // What is shown at once from here on: the message line and the percentage.
    std::vector<Text>& watch() {
        sien().txtMesege.onRefresh = [this] { shown_.push_back(sien().txtMesege.Caption); };
        sien().lblPer.onRefresh = [this] { shown_.push_back(sien().lblPer.Caption); };
        return shown_;
    }

private:
    std::unique_ptr<FrmSien> sien_;
    std::vector<Text> procedures_, modules_;
    std::vector<Text> shown_;
};

} // namespace relvane::test
