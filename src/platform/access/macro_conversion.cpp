#include "access/macro_conversion.h"

#include <algorithm>
#include <vector>

#include "access/macro_expression.h"
#include "access/macro_statements.h"

namespace relvane::access {
namespace {

constexpr TextView lineEnd = u"\r\n";
constexpr TextView ruler = u"'------------------------------------------------------------";
constexpr std::size_t indentation = 4;
constexpr char16_t noBreakBlank = u'\u00A0';

// A name of Visual Basic as long as the one it stands for.
Text vbaName(TextView name) {
    Text result(name);
    for (char16_t& character : result) {
        const bool mayStand = character >= 0x80 || (character >= u'0' && character <= u'9') ||
                              (character >= u'A' && character <= u'Z') ||
                              (character >= u'a' && character <= u'z');
        character = mayStand ? character : u'_';
    }
    return result;
}

// A statement or remark is one line, whatever was typed into its cell.
Text onOneLine(Text text) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (TextView(text).substr(i, 2) != lineEnd) { // of which the LF alone becomes a blank
            text[length++] = text[i] == u'\r' || text[i] == u'\n' ? u' ' : text[i];
        }
    }
    text.resize(length);
    return text;
}

// Behind the letters If of a line that is no condition the blank becomes one that does not break, so that readers of
// the module who look for "If " do not take a remark or a message for a condition. On paper it looks the same.
Text notACondition(Text line) {
    for (std::size_t i = 2; i < line.size(); ++i) {
        if (line[i] == u' ' && upperCase(line[i - 2]) == u'I' && upperCase(line[i - 1]) == u'F') {
            line[i] = noBreakBlank;
        }
    }
    return line;
}

// The lines of a function between its header and its error tail.
class Body {
public:
    explicit Body(std::span<const MacroRow> rows) {
        for (const MacroRow& row : rows) {
            write(row);
        }
        closeBlock();
    }

    bool usesContext() const { return usesContext_; }

    // At the level from which its lines count.
    void appendTo(Text& module, std::size_t level) const {
        for (const Line& line : lines_) {
            module.append((level + line.level) * indentation, u' ');
            module += line.text;
            module += lineEnd;
        }
    }

private:
    struct Line {
        std::size_t level;
        Text text;
    };

    void write(const MacroRow& row) {
        if (!row.continuesCondition()) {
            closeBlock();
            if (!row.condition.empty()) {
                add(onOneLine(u"If (" + expression(row.condition) + u") Then"));
                inBlock_ = true;
            }
        }
        if (!row.comment.empty()) {
            statement(u"' " + row.comment);
        }
        if (const MacroAction* action = row.action()) {
            write(*action, row);
        } else if (row.hasAction()) {
            statement(u"' *****  Action " + toText(row.actionNumber) + u" not available");
        }
    }

    void write(const MacroAction& action, const MacroRow& row) {
        const MacroStatement& form = statementOf(action);
        if (form.beepWhen != 0 &&
            constantOf(ArgumentKind::YesNo, row.arguments[form.beepWhen - 1]) == u"True") {
            statement(u"Beep");
        }
        Text text = filled(form.pattern, action, row);
        if (!form.droppedEnd.empty() && text.ends_with(form.droppedEnd)) {
            text.resize(text.size() - form.droppedEnd.size());
        }
        statement(std::move(text));
    }

    // Goes from mark to mark. The commas ahead of arguments left out are kept only when something follows.
    Text filled(TextView pattern, const MacroAction& action, const MacroRow& row) {
        Text text;
        std::size_t kept = 0;
        while (!pattern.empty()) {
            const std::size_t mark = std::min(pattern.find(u'<'), pattern.size());
            const TextView between = pattern.substr(0, mark);
            text += between;
            kept = between == u", " ? kept : text.size();
            pattern.remove_prefix(mark);
            if (!pattern.empty()) {
                const std::size_t end = pattern.find(u'>');
                const Text written = argument(numberOf(pattern.substr(1, end - 1)) - 1, action, row);
                text += written;
                kept = written.empty() ? kept : text.size();
                pattern.remove_prefix(end + 1);
            }
        }
        text.resize(kept);
        if (text.ends_with(u' ')) { // no argument at all
            text.pop_back();
        }
        return text;
    }

    static std::size_t numberOf(TextView digits) {
        std::size_t number = 0;
        for (const char16_t digit : digits) {
            number = number * 10 + static_cast<std::size_t>(digit - u'0');
        }
        return number;
    }

    Text argument(std::size_t place, const MacroAction& action, const MacroRow& row) {
        const TextView stored = row.arguments[place];
        const ArgumentKind kind = action.arguments[place].kind;
        if (stored.starts_with(u'=') || (kind == ArgumentKind::Expression && !stored.empty())) {
            return expression(stored);
        }
        if (kind == ArgumentKind::Text || kind == ArgumentKind::Expression) {
            return quoted(stored);
        }
        return Text(constantOf(kind, stored).value_or(stored));
    }

    Text expression(TextView typed) {
        VbaExpression converted = toVbaExpression(typed);
        usesContext_ = usesContext_ || converted.usesContext;
        return std::move(converted.text);
    }

    void statement(Text text) { add(notACondition(onOneLine(std::move(text)))); }

    void add(Text text) { lines_.push_back({inBlock_ ? 1U : 0U, std::move(text)}); }

    void closeBlock() {
        if (inBlock_) {
            inBlock_ = false;
            add(u"End If");
        }
    }

    std::vector<Line> lines_;
    bool inBlock_ = false;
    bool usesContext_ = false;
};

class ModuleWriter {
public:
    explicit ModuleWriter(const MacroConversion& conversion) {
        line(u"Option Compare Database");
        if (conversion.optionExplicit) {
            line(u"Option Explicit");
        }
        line();
    }

    void function(const Text& name, const Body& body) {
        header(name);
        line(u"Function " + name + u"()");
        line(u"On Error GoTo " + name + u"_Err");
        line();
        if (body.usesContext()) {
            line(u"    With CodeContextObject");
            body.appendTo(module_, 2);
            line(u"    End With");
        } else {
            body.appendTo(module_, 1);
        }
        line();
        line();
        errorTail(name);
        line();
        line(u"End Function");
        line();
        line();
    }

    Text take() { return std::move(module_); }

private:
    void header(const Text& name) {
        line(ruler);
        line(u"' " + name);
        line(u"'");
        line(ruler);
    }

    void errorTail(const Text& name) {
        line(name + u"_Exit:");
        line(u"    Exit Function");
        line();
        line(name + u"_Err:");
        line(u"    MsgBox Error$");
        line(u"    Resume " + name + u"_Exit");
    }

    void line(TextView text = {}) {
        module_ += text;
        module_ += lineEnd;
    }

    Text module_;
};

} // namespace

Text convertedModuleName(TextView macroName) {
    return u"変換するﾏｸﾛ : " + Text(macroName);
}

Text convertMacro(TextView macroName, const MacroSheet& sheet, const MacroConversion& conversion) {
    ModuleWriter module(conversion);
    for (const MacroMember& member : membersOf(sheet)) {
        Text name = vbaName(macroName);
        if (!member.name.empty()) {
            name += u'_' + vbaName(member.name);
        }
        module.function(name, Body(member.rows));
    }
    return module.take();
}

} // namespace relvane::access
