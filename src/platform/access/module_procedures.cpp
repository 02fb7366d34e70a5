#include "access/module_procedures.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

bool isBlank(char16_t character) {
    return character == u' ' || character == u'\t';
}

bool endsWord(char16_t character) {
    return isBlank(character) || TextView(u"'\":()=,.;+-*/\\&<>^!#%$@[]{}").find(character) != TextView::npos;
}

TextView skipBlanks(TextView text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

// The word at the beginning, in capitals; the rest remains in `text`.
Text takeWord(TextView& text) {
    text = skipBlanks(text);
    const auto end = static_cast<std::size_t>(std::ranges::find_if(text, endsWord) - text.begin());
    Text word = upperCase(text.substr(0, end));
    text.remove_prefix(end);
    return word;
}

bool isComment(TextView statement) {
    statement = skipBlanks(statement);
    return statement.starts_with(u'\'') || takeWord(statement) == u"REM";
}

bool isBlankLine(TextView line) {
    return skipBlanks(line).empty();
}

// One statement: physical lines that go on with each other, joined.
struct LogicalLine {
    Text text;
    std::size_t first = 0, last = 0;

    bool isRemark() const { return isBlankLine(text) || isComment(text); }
    bool isDirective() const { return skipBlanks(text).starts_with(u'#'); }
};

std::vector<LogicalLine> logicalLines(const ModuleText& module) {
    std::vector<LogicalLine> lines;
    bool continued = false;
    for (std::size_t number = 1; number <= module.lineCount(); ++number) {
        TextView line = module.line(number);
        if (!continued) {
            lines.push_back({{}, number, number});
        }
        continued = goesOn(line);
        if (continued) {
            line = line.substr(0, line.rfind(u'_'));
        }
        lines.back().text += line;
        lines.back().last = number;
    }
    return lines;
}

// The statements of a line: cut at colons outside texts and brackets, without the comment behind.
std::vector<TextView> statements(TextView line) {
    std::vector<TextView> found;
    bool quoted = false, bracketed = false;
    std::size_t start = 0;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char16_t character = line[at];
        if (character == u'"') {
            quoted = !quoted;
        } else if (!quoted && (character == u'[' || character == u']')) {
            bracketed = character == u'[';
        } else if (!quoted && !bracketed && character == u'\'') {
            line = line.substr(0, at);
        } else if (!quoted && !bracketed && character == u':' && !line.substr(at).starts_with(u":=")) {
            found.push_back(line.substr(start, at - start));
            start = at + 1;
        }
        if (at == start && isComment(line.substr(at))) {
            line = line.substr(0, at); // Rem behind a colon
        }
    }
    found.push_back(line.substr(start));
    return found;
}

std::optional<ProcedureKind> propertyKind(TextView word) {
    if (word == u"LET") {
        return ProcedureKind::PropertyLet;
    }
    if (word == u"SET") {
        return ProcedureKind::PropertySet;
    }
    if (word == u"GET") {
        return ProcedureKind::PropertyGet;
    }
    return std::nullopt;
}

// Name and kind when the statement is the header of a procedure.
std::optional<ModuleProcedure> header(TextView statement) {
    Text word = takeWord(statement);
    if (word == u"PUBLIC" || word == u"PRIVATE" || word == u"FRIEND") {
        word = takeWord(statement);
    }
    if (word == u"STATIC") {
        word = takeWord(statement);
    }
    std::optional<ProcedureKind> kind;
    if (word == u"SUB" || word == u"FUNCTION") {
        kind = ProcedureKind::Procedure;
    } else if (word == u"PROPERTY") {
        kind = propertyKind(takeWord(statement));
    }
    if (!kind) {
        return std::nullopt;
    }
    statement = skipBlanks(statement);
    const TextView all = statement;
    const std::size_t length = takeWord(statement).size();
    if (length == 0) {
        return std::nullopt;
    }
    return ModuleProcedure{Text(all.substr(0, length)), *kind, 0, 0, 0};
}

bool isEnd(TextView statement) {
    if (takeWord(statement) != u"END") {
        return false;
    }
    const Text word = takeWord(statement);
    return word == u"SUB" || word == u"FUNCTION" || word == u"PROPERTY";
}

// The gap lies between the last line of code and a header. From its first blank line on it belongs to the procedure;
// without a blank line all of it does.
std::size_t startLine(const ModuleText& module, std::size_t gap, std::size_t body) {
    for (std::size_t line = gap; line < body; ++line) {
        if (isBlankLine(module.line(line))) {
            return line;
        }
    }
    return gap;
}

} // namespace

// A procedure goes from header to end: a further header in between, in another branch of #If, begins nothing.
ModuleProcedures::ModuleProcedures(const ModuleText& module) : lines_(module.lineCount()) {
    bool inside = false;
    std::size_t gap = 1; // the first line behind the last one with code
    for (const LogicalLine& line : logicalLines(module)) {
        if (!inside && (line.isRemark() || (line.isDirective() && !procedures_.empty()))) {
            continue;
        }
        bool canBegin = !inside; // at the beginning of the line, and where a procedure has just ended
        for (const TextView statement : statements(line.text)) {
            if (inside) {
                inside = !isEnd(statement);
                canBegin = !inside;
            } else if (auto procedure = canBegin ? header(statement) : std::nullopt) {
                procedure->body = line.first;
                procedure->start = startLine(module, gap, line.first);
                procedures_.push_back(std::move(*procedure));
                inside = true;
                gap = line.first;
            } else {
                canBegin = false;
            }
        }
        gap = line.last + 1;
    }
    declarationLines_ = procedures_.empty() ? lines_ : procedures_.front().start - 1;
    for (std::size_t i = 0; i < procedures_.size(); ++i) {
        const std::size_t next = i + 1 < procedures_.size() ? procedures_[i + 1].start : lines_ + 1;
        procedures_[i].count = next - procedures_[i].start;
    }
}

const ModuleProcedure* ModuleProcedures::at(std::size_t line) const {
    const auto next = std::ranges::upper_bound(procedures_, line, {}, &ModuleProcedure::start);
    return next == procedures_.begin() || line > lines_ ? nullptr : &*std::prev(next);
}

const ModuleProcedure& ModuleProcedures::find(TextView name, ProcedureKind kind) const {
    const auto found = std::ranges::find_if(procedures_, [&](const ModuleProcedure& procedure) {
        return (procedure.kind == kind || kind == ProcedureKind::Procedure) &&
               equalsIgnoringCase(procedure.name, name);
    });
    if (found == procedures_.end()) {
        throw RunTimeError(ErrorNumber::ProcedureNotDefined, name);
    }
    return *found;
}

} // namespace relvane::access
