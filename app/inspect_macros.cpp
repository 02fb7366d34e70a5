#include "inspect_macros.h"

#include "access/macro_conversion.h"
#include "access/module_text.h"
#include "inspect_modules.h"

namespace relvane {
namespace {

using namespace access;

class SheetWriter {
public:
    explicit SheetWriter(JsonWriter& json) : json_(json) {}

    void write(const MacroSheet& sheet, std::size_t bytes) {
        json_.beginObject();
        number("bytes", static_cast<std::int64_t>(bytes));
        boolean("showNames", sheet.showsNames());
        boolean("showConditions", sheet.showsConditions());
        json_.key("version");
        if (sheet.version) {
            json_.beginArray();
            json_.number(std::int64_t{sheet.version->first});
            json_.number(std::int64_t{sheet.version->second});
            json_.endArray();
        } else {
            json_.null();
        }
        json_.key("rows");
        json_.beginArray();
        for (const MacroRow& row : sheet.rows) {
            json_.beginObject();
            writeRow(row);
            json_.endObject();
        }
        json_.endArray();
        json_.endObject();
    }

private:
    void writeRow(const MacroRow& row) {
        number("row", row.number);
        text("name", row.name);
        text("condition", row.condition);
        text("comment", row.comment);
        const MacroAction* action = row.action();
        text("action", action == nullptr ? TextView() : action->name);
        number("actionNo", row.actionNumber);
        json_.key("args");
        json_.beginObject();
        const auto facts = action == nullptr ? std::span<const MacroArgument>() : action->arguments;
        for (std::size_t i = 0; i < row.arguments.size(); ++i) {
            if (i < facts.size()) {
                text(toUtf8(facts[i].name), row.arguments[i]);
            } else if (!row.arguments[i].empty()) {
                text(std::to_string(i + 1), row.arguments[i]);
            }
        }
        json_.endObject();
        if (!row.reserved.empty()) {
            text("reserved", row.reserved);
        }
    }

    void text(std::string_view name, TextView value) {
        json_.key(name);
        if (value.empty()) {
            json_.null();
        } else {
            json_.text(value);
        }
    }
    void number(const char* name, std::int64_t value) {
        json_.key(name);
        json_.number(value);
    }
    void boolean(const char* name, bool value) {
        json_.key(name);
        json_.boolean(value);
    }

    JsonWriter& json_;
};

} // namespace

void writeMacro(JsonWriter& json, const MacroSource& source, const MacroDocument& macro) {
    const Bytes stream = source.stream(macro);
    writeMacroSheet(json, source.sheet(macro), stream.size());
}

void writeMacroSheet(JsonWriter& json, const MacroSheet& sheet, std::size_t bytes) {
    SheetWriter(json).write(sheet, bytes);
}

void writeConvertedMacro(JsonWriter& json, const MacroSource& source, const MacroDocument& macro) {
    writeLines(json, ModuleText(ModuleKind::Standard, convertMacro(macro.name, source.sheet(macro))));
}

} // namespace relvane
