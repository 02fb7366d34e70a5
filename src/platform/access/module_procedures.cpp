#include "access/module_procedures.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>

#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

bool isBlank(char16_t character) {
    return character == u' ' || character == u'\t';
}

bool endsWord(char16_t character) {
    static constexpr auto enders = [] {
        std::array<bool, 0x80> table{};
        for (const char16_t each : TextView(u" \t'\":()=,.;+-*/\\&<>^!#%$@[]{}")) {
            table[each] = true;
        }
        return table;
    }();
    return character < enders.size() && enders[character];
}

TextView skipBlanks(TextView text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

// The word at the beginning; the rest remains in `text`.
TextView takeWord(TextView& text) {
    text = skipBlanks(text);
    const auto end = static_cast<std::size_t>(std::ranges::find_if(text, endsWord) - text.begin());
    const TextView word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

bool isOneOf(TextView word, std::initializer_list<TextView> keywords) {
    return std::ranges::any_of(keywords, [&](TextView keyword) { return equalsIgnoringCase(word, keyword); });
}

bool isComment(TextView statement) {
    statement = skipBlanks(statement);
    return statement.starts_with(u'\'') || isOneOf(takeWord(statement), {u"Rem"});
}

bool isBlankLine(TextView line) {
    return skipBlanks(line).empty();
}

// Walks a module statement line by statement line: physical lines that go on with each other are one.
class LogicalLines {
public:
    explicit LogicalLines(const ModuleText& module) : module_(module) {}

    bool next() {
        first_ = ++last_;
        if (first_ > module_.lineCount()) {
            return false;
        }
        text_ = module_.line(first_);
        if (goesOn(text_)) {
            join();
        }
        return true;
    }
    std::size_t first() const { return first_; }
    std::size_t last() const { return last_; }
    TextView text() const { return text_; } // until the next one
    bool isRemark() const { return isBlankLine(text_) || isComment(text_); }
    bool isDirective() const { return skipBlanks(text_).starts_with(u'#'); }

private:
    void join() {
        joined_.clear();
        while (goesOn(text_) && last_ < module_.lineCount()) {
            joined_ += text_.substr(0, text_.rfind(u'_'));
            text_ = module_.line(++last_);
        }
        joined_ += goesOn(text_) ? text_.substr(0, text_.rfind(u'_')) : text_;
        text_ = joined_;
    }

    const ModuleText& module_;
    std::size_t first_ = 0, last_ = 0;
    TextView text_;
    Text joined_;
};

// Takes the statements off a line: it is cut at colons outside texts and brackets, and a comment ends it.
class Statements {
public:
    explicit Statements(TextView line) : rest_(line) {}

    std::optional<TextView> next() {
        if (!rest_) {
            return std::nullopt;
        }
        const TextView line = *rest_;
        rest_.reset();
        if (line.find(u':') == TextView::npos) { // nearly every line; readers of words stop at its comment
            return line;
        }
        if (isComment(line)) {
            return TextView();
        }
        bool quoted = false, bracketed = false;
        for (std::size_t at = 0; at < line.size(); ++at) {
            const char16_t character = line[at];
            if (character == u'"') {
                quoted = !quoted;
            } else if (quoted) {
                continue;
            } else if (character == u'[' || character == u']') {
                bracketed = character == u'[';
            } else if (!bracketed && character == u'\'') {
                return line.substr(0, at);
            } else if (!bracketed && character == u':' && !line.substr(at).starts_with(u":=")) {
                rest_ = line.substr(at + 1);
                return line.substr(0, at);
            }
        }
        return line;
    }

private:
    std::optional<TextView> rest_; // nothing behind the last statement
};

std::optional<ProcedureKind> propertyKind(TextView word) {
    static constexpr std::pair<TextView, ProcedureKind> kinds[] = {{u"Let", ProcedureKind::PropertyLet},
                                                                   {u"Set", ProcedureKind::PropertySet},
                                                                   {u"Get", ProcedureKind::PropertyGet}};
    for (const auto& [name, kind] : kinds) {
        if (equalsIgnoringCase(word, name)) {
            return kind;
        }
    }
    return std::nullopt;
}

// Name and kind when the statement is the header of a procedure.
std::optional<ModuleProcedure> header(TextView statement) {
    TextView word = takeWord(statement);
    if (isOneOf(word, {u"Public", u"Private", u"Friend"})) {
        word = takeWord(statement);
    }
    if (isOneOf(word, {u"Static"})) {
        word = takeWord(statement);
    }
    std::optional<ProcedureKind> kind;
    if (isOneOf(word, {u"Sub", u"Function"})) {
        kind = ProcedureKind::Procedure;
    } else if (isOneOf(word, {u"Property"})) {
        kind = propertyKind(takeWord(statement));
    }
    const TextView name = kind ? takeWord(statement) : TextView();
    if (name.empty()) {
        return std::nullopt;
    }
    return ModuleProcedure{Text(name), *kind, 0, 0, 0};
}

bool isEnd(TextView statement) {
    return isOneOf(takeWord(statement), {u"End"}) &&
           isOneOf(takeWord(statement), {u"Sub", u"Function", u"Property"});
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
    for (LogicalLines line(module); line.next();) {
        if (!inside && (line.isRemark() || (line.isDirective() && !procedures_.empty()))) {
            continue;
        }
        bool canBegin = !inside; // at the beginning of the line, and where a procedure has just ended
        Statements statements(line.text());
        while (const auto statement = statements.next()) {
            if (inside) {
                inside = !isEnd(*statement);
                canBegin = !inside;
            } else if (auto procedure = canBegin ? header(*statement) : std::nullopt) {
                procedure->body = line.first();
                procedure->start = startLine(module, gap, line.first());
                procedures_.push_back(std::move(*procedure));
                inside = true;
                gap = line.first();
            } else {
                canBegin = false;
            }
        }
        gap = line.last() + 1;
    }
    declarationLines_ = procedures_.empty() ? lines_ : procedures_.front().start - 1;
    for (std::size_t i = 0; i < procedures_.size(); ++i) {
        ModuleProcedure& procedure = procedures_[i];
        const std::size_t next = i + 1 < procedures_.size() ? procedures_[i + 1].start : lines_ + 1;
        procedure.count = next - procedure.start;
        const Text name = upperCase(procedure.name);
        byName_.try_emplace({name, procedure.kind}, i);
        byName_.try_emplace({name, ProcedureKind::Procedure}, i);
    }
}

const ModuleProcedure* ModuleProcedures::at(std::size_t line) const {
    const auto owns = [&](const ModuleProcedure& each) {
        return line >= each.start && line - each.start < each.count;
    };
    if (lastOwner_ >= procedures_.size() || !owns(procedures_[lastOwner_])) {
        const auto next = std::ranges::upper_bound(procedures_, line, {}, &ModuleProcedure::start);
        if (next == procedures_.begin() || line > lines_) {
            return nullptr;
        }
        lastOwner_ = static_cast<std::size_t>(next - procedures_.begin()) - 1;
    }
    return &procedures_[lastOwner_];
}

const ModuleProcedure& ModuleProcedures::find(TextView name, ProcedureKind kind) const {
    const auto found = byName_.find({upperCase(name), kind});
    if (found == byName_.end()) {
        throw RunTimeError(ErrorNumber::ProcedureNotDefined, name);
    }
    return procedures_[found->second];
}

} // namespace relvane::access
