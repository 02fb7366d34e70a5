#include "access/macro_expression.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <vector>

namespace relvane::access {
namespace {

enum class Kind {
    Name,      // that may need brackets or a leading dot
    Word,      // And, Like, ...: an operator between two operands
    Prefix,    // Not
    Value,     // a literal, or a word that is one
    Operator,  // = < + ...
    Separator, // "." and "!" between the parts of a name
    Open,
    Close,
    Comma,
    Other, // a character without a meaning
};

struct Token {
    Kind kind = Kind::Other;
    Text text;              // as it is written
    bool bracketed = false; // was in brackets

    bool is(TextView word) const { return !bracketed && equalsIgnoringCase(text, word); }
};

struct WordMeaning {
    TextView typed, written;
    Kind kind;
};

constexpr WordMeaning words[] = {
    {u"And", u"And", Kind::Word},      {u"Between", u"Between", Kind::Word}, {u"Eqv", u"Eqv", Kind::Word},
    {u"Imp", u"Imp", Kind::Word},      {u"In", u"In", Kind::Word},           {u"Is", u"Is", Kind::Word},
    {u"Like", u"Like", Kind::Word},    {u"Mod", u"Mod", Kind::Word},         {u"Or", u"Or", Kind::Word},
    {u"Xor", u"Xor", Kind::Word},      {u"Not", u"Not", Kind::Prefix},       {u"Yes", u"True", Kind::Value},
    {u"On", u"True", Kind::Value},     {u"True", u"True", Kind::Value},      {u"No", u"False", Kind::Value},
    {u"Off", u"False", Kind::Value},   {u"False", u"False", Kind::Value},    {u"Null", u"Null", Kind::Value},
    {u"Empty", u"Empty", Kind::Value}, {u"Nothing", u"Nothing", Kind::Value}};

// Names that keep their brackets, since Visual Basic or the expression service takes them for a word of its own.
constexpr TextView reservedWords[] = {
    u"AddressOf",  u"And",        u"Any",        u"As",         u"Between", u"Boolean",  u"ByRef",
    u"Byte",       u"ByVal",      u"Call",       u"Case",       u"Const",   u"Currency", u"Debug",
    u"Declare",    u"Dim",        u"Do",         u"Double",     u"Each",    u"Else",     u"ElseIf",
    u"Empty",      u"End",        u"Eqv",        u"Erase",      u"Event",   u"Exists",   u"Exit",
    u"False",      u"For",        u"Friend",     u"Function",   u"Get",     u"Global",   u"GoSub",
    u"GoTo",       u"If",         u"Imp",        u"Implements", u"In",      u"Integer",  u"Is",
    u"Let",        u"Like",       u"Long",       u"Loop",       u"LSet",    u"Me",       u"Mod",
    u"New",        u"Next",       u"Not",        u"Nothing",    u"Null",    u"On",       u"Option",
    u"Optional",   u"Or",         u"ParamArray", u"Preserve",   u"Print",   u"Private",  u"Public",
    u"RaiseEvent", u"ReDim",      u"Rem",        u"Resume",     u"Return",  u"RSet",     u"Select",
    u"Set",        u"Single",     u"Static",     u"Stop",       u"String",  u"Sub",      u"Then",
    u"To",         u"True",       u"TypeOf",     u"Until",      u"Variant", u"Wend",     u"While",
    u"With",       u"WithEvents", u"Write",      u"Xor"};

// What a name may begin with that is no member of the running form or report.
constexpr TextView globalObjects[] = {u"Application", u"CodeContextObject", u"DBEngine", u"Forms",
                                      u"Modules",     u"Reports",           u"Screen"};

constexpr TextView pairedOperators[] = {u"<=", u">=", u"<>", u"=<", u"=>", u"><"};

bool holds(std::span<const TextView> list, TextView name) {
    return std::ranges::any_of(list, [&](TextView entry) { return equalsIgnoringCase(entry, name); });
}

bool isBlank(char16_t character) {
    return character <= u' ' || character == u'\u00A0' || character == u'\u3000';
}

bool isDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

bool isHexDigit(char16_t character) {
    const char16_t capital = upperCase(character);
    return isDigit(character) || (capital >= u'A' && capital <= u'F');
}

bool beginsName(char16_t character) {
    return (character >= u'A' && character <= u'Z') || (character >= u'a' && character <= u'z') ||
           character == u'_' || (character >= 0x80 && !isBlank(character));
}

bool continuesName(char16_t character) {
    return beginsName(character) || isDigit(character);
}

bool needsNoBrackets(TextView name) {
    return !name.empty() && beginsName(name[0]) && name[0] != u'_' &&
           std::ranges::all_of(name, continuesName) && !holds(reservedWords, name);
}

class Tokens {
public:
    explicit Tokens(TextView text) : text_(text) {
        while (skipBlanks()) {
            tokens_.push_back(next());
        }
    }

    std::vector<Token> take() { return std::move(tokens_); }

private:
    bool skipBlanks() {
        while (at_ < text_.size() && isBlank(text_[at_])) {
            ++at_;
        }
        return at_ < text_.size();
    }

    char16_t peek(std::size_t ahead = 0) const {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : u'\0';
    }

    // Where a value may begin and an operator may not, but for a sign.
    bool expectsOperand() const {
        if (tokens_.empty()) {
            return true;
        }
        const Kind last = tokens_.back().kind;
        return last != Kind::Name && last != Kind::Value && last != Kind::Close && last != Kind::Separator;
    }

    Token next() {
        const char16_t first = peek();
        if (first == u'"' || first == u'\'') {
            return string(first);
        }
        if (first == u'[') {
            return bracketedName();
        }
        if (beginsName(first)) {
            return nameOrWord();
        }
        if (expectsOperand()) {
            if (isDigit(first) || (first == u'.' && isDigit(peek(1)))) {
                return number();
            }
            if (first == u'&' && (upperCase(peek(1)) == u'H' || upperCase(peek(1)) == u'O')) {
                return take(Kind::Value, 2 + countFrom(2, isHexDigit));
            }
            if (const std::size_t length = lengthOfDate(); length != 0) {
                return take(Kind::Value, length);
            }
        }
        if (isDigit(first)) {
            return number();
        }
        return sign();
    }

    // Of "#1/2/97#"; 0 when none begins here.
    std::size_t lengthOfDate() const {
        const std::size_t end = peek() == u'#' ? text_.find(u'#', at_ + 1) : TextView::npos;
        return end == TextView::npos ? 0 : end + 1 - at_;
    }

    Token sign() {
        if (std::ranges::find(pairedOperators, text_.substr(at_, 2)) != std::end(pairedOperators)) {
            return take(Kind::Operator, 2);
        }
        switch (peek()) {
        case u'(':
            return take(Kind::Open, 1);
        case u')':
            return take(Kind::Close, 1);
        case u',':
            return take(Kind::Comma, 1);
        case u'.':
        case u'!':
            return take(Kind::Separator, 1);
        default:
            return take(
                TextView(u"=<>+-*/\\^&").find(peek()) != TextView::npos ? Kind::Operator : Kind::Other, 1);
        }
    }

    // Either quote may close a text; one that is never closed ends with the expression.
    Token string(char16_t quote) {
        Text content;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == quote) {
                ++at_;
                if (peek() != quote) {
                    break;
                }
            }
            content += text_[at_];
        }
        return {Kind::Value, quoted(content), false};
    }

    Token bracketedName() {
        const std::size_t end = std::min(text_.find(u']', at_), text_.size());
        const TextView name = text_.substr(at_ + 1, end - at_ - 1);
        at_ = std::min(end + 1, text_.size());
        if (needsNoBrackets(name)) {
            return {Kind::Name, Text(name), true};
        }
        Text text(u"[");
        text += name;
        text += u']';
        return {Kind::Name, std::move(text), true};
    }

    Token nameOrWord() {
        Token token = take(Kind::Name, countFrom(0, continuesName));
        const bool isPart = !tokens_.empty() && tokens_.back().kind == Kind::Separator;
        const auto* word = std::ranges::find_if(
            words, [&](const WordMeaning& meaning) { return equalsIgnoringCase(meaning.typed, token.text); });
        if (!isPart && word != std::end(words)) {
            return {word->kind, Text(word->written), false};
        }
        if (peek() == u'$') { // of a function: Left$
            token.text += u'$';
            ++at_;
        }
        return token;
    }

    Token number() {
        std::size_t length = countFrom(0, isDigit);
        if (peek(length) == u'.') {
            length += 1 + countFrom(length + 1, isDigit);
        }
        if (upperCase(peek(length)) == u'E') {
            const bool hasSign = peek(length + 1) == u'+' || peek(length + 1) == u'-';
            const std::size_t start = length + (hasSign ? 2 : 1);
            const std::size_t digits = countFrom(start, isDigit);
            length = digits == 0 ? length : start + digits;
        }
        return take(Kind::Value, length);
    }

    template <typename Predicate>
    std::size_t countFrom(std::size_t ahead, Predicate predicate) const {
        std::size_t count = 0;
        while (at_ + ahead + count < text_.size() && predicate(text_[at_ + ahead + count])) {
            ++count;
        }
        return count;
    }

    Token take(Kind kind, std::size_t length) {
        Token token{kind, Text(text_.substr(at_, length)), false};
        at_ += token.text.size();
        return token;
    }

    TextView text_;
    std::size_t at_ = 0;
    std::vector<Token> tokens_;
};

// Whether Visual Basic lacks a word for something in it.
bool needsEval(std::span<const Token> tokens) {
    const auto follows = [&](std::size_t place, TextView word) {
        return place < tokens.size() && tokens[place].is(word);
    };
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != Kind::Word && tokens[i].kind != Kind::Prefix) {
            continue;
        }
        const bool isNull = tokens[i].is(u"Is") && follows(i + (follows(i + 1, u"Not") ? 2 : 1), u"Null");
        const bool isNotLike = tokens[i].is(u"Not") && follows(i + 1, u"Like");
        const bool isIn = tokens[i].is(u"In") && follows(i + 1, u"(");
        if (isNull || isNotLike || isIn || tokens[i].is(u"Between")) {
            return true;
        }
    }
    return false;
}

// Writes token by token; what stood before decides about the blanks.
class Writer {
public:
    VbaExpression write(std::span<const Token> tokens) {
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            write(tokens[i], i + 1 < tokens.size() && tokens[i + 1].kind == Kind::Open);
            last_ = tokens[i].kind;
        }
        trim();
        return std::move(result_);
    }

private:
    Text& text() { return result_.text; }

    void write(const Token& token, bool isCall) {
        switch (token.kind) {
        case Kind::Name:
            blankBehindOperand();
            if (last_ != Kind::Separator && !isCall && !holds(globalObjects, token.text)) {
                result_.usesContext = true;
                text() += u'.';
            }
            text() += token.text;
            operandNext_ = false;
            break;
        case Kind::Value:
        case Kind::Other:
            blankBehindOperand();
            text() += token.text;
            operandNext_ = false;
            break;
        case Kind::Prefix:
        case Kind::Word:
            writeOperator(token.text);
            break;
        case Kind::Operator:
            if (operandNext_ && (token.text == u"-" || token.text == u"+")) {
                text() += token.text;
            } else {
                writeOperator(token.text);
            }
            break;
        case Kind::Separator:
            result_.usesContext = result_.usesContext || operandNext_; // a dot of its own
            text() += token.text;
            operandNext_ = false;
            break;
        case Kind::Open:
            text() += token.text;
            operandNext_ = true;
            break;
        case Kind::Close:
            trim();
            text() += token.text;
            operandNext_ = false;
            break;
        case Kind::Comma:
            if (last_ != Kind::Comma) { // an argument left out keeps its blank
                trim();
            }
            text() += u", ";
            operandNext_ = true;
            break;
        }
    }

    void writeOperator(TextView name) {
        if (!text().empty() && !text().ends_with(u' ') && last_ != Kind::Open) {
            text() += u' ';
        }
        text() += name;
        text() += u' ';
        operandNext_ = true;
    }

    // Two operands side by side make no expression, but must not become one word.
    void blankBehindOperand() {
        if (!operandNext_ && last_ != Kind::Separator) {
            text() += u' ';
        }
    }

    void trim() {
        while (text().ends_with(u' ')) {
            text().pop_back();
        }
    }

    VbaExpression result_;
    Kind last_ = Kind::Comma;
    bool operandNext_ = true;
};

} // namespace

Text quoted(TextView text) {
    Text result(u"\"");
    for (const char16_t character : text) {
        result.append(character == u'"' ? 2 : 1, character);
    }
    result += u'"';
    return result;
}

VbaExpression toVbaExpression(TextView typed) {
    if (typed.starts_with(u'=')) {
        typed.remove_prefix(1);
    }
    const std::vector<Token> tokens = Tokens(typed).take();
    if (needsEval(tokens)) {
        return {u"Eval(" + quoted(typed) + u")", false};
    }
    return Writer().write(tokens);
}

} // namespace relvane::access
