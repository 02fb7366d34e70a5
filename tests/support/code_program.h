// The program on fakes, with sources that a test writes down: the lines are read as those of a real module.
#pragma once

#include <initializer_list>

#include "access/module_model.h"
#include "support/fakes_desk.h"

namespace relvane::test {

// A module of these lines.
inline std::shared_ptr<access::Module> moduleOf(std::initializer_list<TextView> lines,
                                                access::ModuleKind kind = access::ModuleKind::Standard) {
    Text text;
    for (const TextView line : lines) {
        text += Text(line) + u"\r\n";
    }
    return access::openModule(access::ModuleText(kind, text));
}

struct CodeProgram : FakeProgram {
    void addForm(const Text& name, std::shared_ptr<access::Module> source = nullptr) {
        target->addDocument(u"Forms", name);
        targetApps.forms.add(name).module = std::move(source);
    }
    void addReport(const Text& name, std::shared_ptr<access::Module> source = nullptr) {
        target->addDocument(u"Reports", name);
        targetApps.reports.add(name).module = std::move(source);
    }
    void addModule(const Text& name, std::shared_ptr<access::Module> source) {
        target->addDocument(u"Modules", name);
        targetApps.modules[name] = std::move(source);
    }
    // A macro, and the module that its conversion makes.
    void addMacro(const Text& name, std::shared_ptr<access::Module> conversion) {
        target->addDocument(u"Scripts", name);
        targetApps.conversions[name] = std::move(conversion);
    }

    void selectOnce() {
        if (context().AnalysisMode == 0) {
            select();
        }
    }
    long reportsShown(const Text& name) {
        return std::count(reportApps.calls.begin(), reportApps.calls.end(), u"OpenReport " + name + u" 2");
    }
    // One field of all rows, in order; Null is an empty text.
    std::vector<Text> column(const Text& table, TextView field) {
        std::vector<Text> values;
        for (const FakeRow& row : store.rows(table)) {
            values.push_back(toText(valueOf(row, field)));
        }
        return values;
    }
    // Some fields of each row, in order, with " | " between them.
    std::vector<Text> rowsOf(const Text& table, std::initializer_list<TextView> fields) {
        std::vector<Text> rows;
        for (const FakeRow& row : store.rows(table)) {
            Text joined;
            for (const TextView field : fields) {
                joined += (field == *fields.begin() ? u"" : u" | ") + toText(valueOf(row, field));
            }
            rows.push_back(std::move(joined));
        }
        return rows;
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
