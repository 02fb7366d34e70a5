// The program on fakes, its batch driven as a person drives it.
#pragma once

#include "support/code_program.h"

namespace relvane::test {

struct BatchProgram : CodeProgram {
    FrmBatch& batch() { return desk->frmBatch; }

    // Selects the target when there is none, and opens the window by its menu.
    bool open() {
        selectOnce();
        return press(form().m6);
    }
    bool run() { return press(batch().cmdExec); } // whether the program goes on

    // A pattern with these lines, read by the button.
    void read(TextView lines) {
        files.put(patternPath, lines);
        dialogs.files.push_back(patternPath);
        press(batch().cmdRead);
    }
    Text save(const Text& chosen = patternPath) {
        dialogs.files.push_back(chosen);
        press(batch().cmdSave);
        return files.exists(patternPath) ? files.text(patternPath) : Text();
    }

    std::vector<CheckBox*> boxes() {
        FrmBatch& b = batch();
        return {&b.chkObj,  &b.chkTbl, &b.chkQery,    &b.chkForm,    &b.chkRep,  &b.chkMac,
                &b.chkProc, &b.chkMod, &b.chkModStep, &b.chkControl, &b.chkFile, &b.chkComent};
    }
    std::vector<OptionGroup*> groups() {
        FrmBatch& b = batch();
        return {&b.optTbl,  &b.optQery, &b.optForm,    &b.optRep,     &b.optMac,
                &b.optProc, &b.optMod,  &b.optModStep, &b.optControl, &b.optFile};
    }

    // Forms and reports that answer what the lists ask of them.
    void addForm(const Text& name, std::shared_ptr<access::Module> source = nullptr) {
        target->addDocument(u"Forms", name);
        FakeForm& added = targetApps.forms.add(name);
        added.module = std::move(source);
        answer(added);
    }
    void addReport(const Text& name) {
        target->addDocument(u"Reports", name);
        answer(targetApps.reports.add(name));
    }

    // One object of each kind.
    void addOneOfEach() {
        addField(target->addTable(u"T1").fields, u"F", 4, 4);
        target->addQuery(u"Q1", 0);
        const auto source = [] { return moduleOf({u"Sub A()", u"' remark", u"End Sub"}); };
        addForm(u"F1", source());
        addReport(u"R1");
        addModule(u"M1", source());
        addMacro(u"X1", moduleOf({u"Function X1()", u"Beep", u"End Function"}));
    }

    inline static const Text patternPath = u"C:\\Work\\mine.apt";

private:
    template <class Design>
    static void answer(Design& design) {
        for (const TextView property : {u"RecordSource", u"Filter", u"OrderBy", u"Caption", u"MenuBar"}) {
            design.set(property, Text());
        }
        for (const TextView property :
             {u"DefaultView", u"RecordsetType", u"RecordLocks", u"AllowEdits", u"AllowDeletions",
              u"AllowAdditions", u"DataEntry", u"PopUp", u"Modal"}) {
            design.set(property, std::int64_t{0});
        }
    }
};

} // namespace relvane::test
