#include "inspect_modules.h"

#include "access/module_procedures.h"

namespace relvane {
namespace {

using namespace access;

class SourceWriter {
public:
    explicit SourceWriter(JsonWriter& json) : json_(json) {}

    void write(const ModuleText& text) {
        const ModuleProcedures procedures(text);
        json_.beginObject();
        number("type", static_cast<std::size_t>(text.kind()));
        number("countOfLines", text.lineCount());
        number("countOfDeclarationLines", procedures.declarationLines());
        json_.key("procedures");
        json_.beginArray();
        for (const ModuleProcedure& procedure : procedures.all()) {
            writeProcedure(procedure);
        }
        json_.endArray();
        json_.key("lines");
        writeLines(json_, text);
        json_.endObject();
    }

private:
    void writeProcedure(const ModuleProcedure& procedure) {
        json_.beginObject();
        json_.key("name");
        json_.text(procedure.name);
        number("kind", static_cast<std::size_t>(procedure.kind));
        number("startLine", procedure.start);
        number("bodyLine", procedure.body);
        number("countLines", procedure.count);
        json_.endObject();
    }
    void number(const char* name, std::size_t value) {
        json_.key(name);
        json_.number(static_cast<std::int64_t>(value));
    }

    JsonWriter& json_;
};

} // namespace

TextView ownerWord(ModuleOwner owner) {
    static constexpr TextView words[] = {u"form", u"report", u"module"};
    return words[static_cast<std::size_t>(owner)];
}

void writeModule(JsonWriter& json, const ModuleSource& source, const ModuleDocument& document) {
    SourceWriter(json).write(source.text(document));
}

void writeLines(JsonWriter& json, const ModuleText& text) {
    json.beginArray();
    for (std::size_t line = 1; line <= text.lineCount(); ++line) {
        json.text(text.line(line));
    }
    json.endArray();
}

} // namespace relvane
