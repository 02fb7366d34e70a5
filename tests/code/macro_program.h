// The program on fakes, with macros whose conversions a test writes down, driven through their panel.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "support/code_program.h"

namespace relvane::test {

using Lines = std::vector<Text>;

inline constexpr int shortMacroList = 1, detailedMacroList = 2;

// The function that a macro or a member of its group becomes. Its body begins in the eighth line.
inline Lines functionOf(const Text& name, const Lines& body) {
    const Text rule = u"'" + Text(60, u'-');
    Lines lines = {
        rule, u"' " + name, u"'", rule, u"Function " + name + u"()", u"On Error GoTo " + name + u"_Err", {}};
    lines.insert(lines.end(), body.begin(), body.end());
    for (const Text& line : Lines{{},
                                  {},
                                  name + u"_Exit:",
                                  u"    Exit Function",
                                  {},
                                  name + u"_Err:",
                                  u"    MsgBox Error$",
                                  u"    Resume " + name + u"_Exit",
                                  {},
                                  u"End Function"}) {
        lines.push_back(line);
    }
    return lines;
}

inline std::shared_ptr<access::Module> moduleOfLines(const Lines& lines) {
    Text text;
    for (const Text& line : lines) {
        text += line + u"\r\n";
    }
    return access::openModule(access::ModuleText(access::ModuleKind::Standard, text));
}

// Functions by name, behind three lines of declarations: the body of the first one begins in line 11.
inline std::shared_ptr<access::Module> conversionOf(const std::vector<std::pair<Text, Lines>>& functions) {
    Lines lines = {u"Option Compare Database", u"Option Explicit", {}};
    for (const auto& [name, body] : functions) {
        const Lines function = functionOf(name, body);
        lines.insert(lines.end(), function.begin(), function.end());
        lines.insert(lines.end(), {{}, {}});
    }
    return moduleOfLines(lines);
}

struct MacroProgram : CodeProgram {
    // A macro of that name without groups.
    void addMacroOf(const Text& name, const Lines& body) { addMacro(name, conversionOf({{name, body}})); }

    bool run(int option = detailedMacroList) {
        selectOnce();
        form().optMacro.choose(option - 1);
        return press(form().cmdMacro);
    }
    // The list's own entry for the name, and the choice of that entry alone.
    void chooseMacro(const Text& name) {
        selectOnce();
        const auto& names = form().cboMacro.List();
        form().cboMacro.choose(static_cast<int>(std::ranges::find(names, name) - names.begin()));
        form().optMcSelect.choose(1);
    }
    void chooseAllMacros() {
        selectOnce();
        form().optMcSelect.choose(0);
    }

    // The fields of each row, joined with "|".
    Lines rowsOf(const Text& table, std::initializer_list<TextView> fields) {
        Lines rows;
        for (const FakeRow& row : store.rows(table)) {
            Text joined;
            for (const TextView field : fields) {
                joined += u"|" + toText(valueOf(row, field));
            }
            rows.push_back(joined.substr(1));
        }
        return rows;
    }
    // Number of the line, number of the action, comment and condition.
    Lines actions() { return rowsOf(u"T_RvMacro", {u"LineNo", u"ActionNo", u"Tekiyou", u"AcWhere"}); }
    // Number and text.
    Lines arguments() { return rowsOf(u"T_RvMacro2", {u"HikiNo", u"Hikisu"}); }
};

} // namespace relvane::test
