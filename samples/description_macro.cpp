#include "sample_builder/description_macro.h"

#include <algorithm>

#include "access/macro_actions.h"
#include "sample_builder/description_value.h"

namespace relvane::samples {

namespace {

using access::ArgumentKind;

struct Column {
    TextView name;
    Text MacroRowSpec::*text;
};

constexpr Column columns[] = {{u"name", &MacroRowSpec::name},
                              {u"condition", &MacroRowSpec::condition},
                              {u"comment", &MacroRowSpec::comment}};

Text takeArgument(ArgumentKind kind, DescriptionLine& line) {
    if (line.takeIf(u"-")) {
        return {};
    }
    const Text text = line.takeText("an argument");
    const bool isWord = kind == ArgumentKind::YesNo && (text == u"yes" || text == u"no");
    return isWord ? text == u"yes" ? u"-1" : u"0" : text;
}

// The action's name and its arguments, to the end of the line.
void takeAction(MacroRowSpec& row, DescriptionLine& line) {
    const Text name = line.takeText("an action");
    const auto actions = access::macroActions();
    const auto action = std::ranges::find(actions, TextView(name), &access::MacroAction::name);
    if (action == actions.end()) {
        line.fail("no action: " + toUtf8(name));
    }
    row.action = action->number;
    for (const access::MacroArgument& argument : action->arguments) {
        if (!line.atEnd()) {
            row.arguments.push_back(takeArgument(argument.kind, line));
        }
    }
}

// False when it is no part of a row.
bool readPart(MacroRowSpec& row, TextView keyword, DescriptionLine& line) {
    const auto* column = std::ranges::find(columns, keyword, &Column::name);
    if (column != std::end(columns)) {
        row.*column->text = line.takeText("a text");
    } else if (keyword == u"below") {
        row.emptyRowsBefore = static_cast<std::uint16_t>(takeNumber(line, "a number of empty rows"));
    } else if (keyword == u"action") {
        takeAction(row, line);
        line.finish();
    } else {
        return false;
    }
    return true;
}

} // namespace

bool readMacroLine(MacroSpec& macro, TextView keyword, DescriptionLine& line) {
    if (keyword == u"no-version") {
        macro.hasVersion = false;
        return true;
    }
    if (keyword == u"lost") {
        macro.lostBytes = static_cast<std::size_t>(takeNumber(line, "a number of bytes"));
        return true;
    }
    MacroRowSpec row;
    if (!readPart(row, keyword, line)) {
        return false;
    }
    while (!line.atEnd()) {
        const Text part = line.takeText("a part of the row");
        if (!readPart(row, part, line)) {
            line.fail("no part of a macro's row: " + toUtf8(part));
        }
    }
    macro.rows.push_back(std::move(row));
    return true;
}

} // namespace relvane::samples
