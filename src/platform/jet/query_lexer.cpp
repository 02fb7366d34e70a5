#include "jet/query_lexer.h"

#include <algorithm>

#include "jet/query_names.h"

namespace relvane::jet {
namespace {

bool isBlank(char16_t character) {
    return character <= u' ';
}

bool isDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

class Lexer {
public:
    explicit Lexer(TextView text) : text_(text) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        do {
            tokens.push_back(next());
        } while (tokens.back().kind != TokenKind::End);
        return tokens;
    }

private:
    char16_t at(std::size_t place) const { return place < text_.size() ? text_[place] : u'\0'; }

    Token token(TokenKind kind, std::size_t begin, std::size_t end, std::size_t delimiters = 0) {
        place_ = std::min(end, text_.size());
        const std::size_t inner = std::min(begin + delimiters, place_);
        // An unclosed text has no closing delimiter to leave out.
        const std::size_t innerEnd = end <= text_.size() ? std::max(inner, end - delimiters) : text_.size();
        return {kind, text_.substr(inner, innerEnd - inner), begin, place_};
    }

    Token next() {
        while (place_ < text_.size() && isBlank(text_[place_])) {
            ++place_;
        }
        if (place_ == text_.size()) {
            return token(TokenKind::End, place_, place_);
        }
        const char16_t first = text_[place_];
        switch (first) {
        case u'[':
            return delimited(TokenKind::Name, u']');
        case u'"':
        case u'\'':
            return quoted(first);
        case u'#':
            return delimited(TokenKind::Date, u'#');
        default:
            break;
        }
        if (isDigit(first) || (first == u'.' && isDigit(at(place_ + 1)))) {
            return number();
        }
        return isNameCharacter(first) ? word() : sign();
    }

    Token delimited(TokenKind kind, char16_t close) {
        const std::size_t found = text_.find(close, place_ + 1);
        return token(kind, place_, found == TextView::npos ? text_.size() + 1 : found + 1, 1);
    }

    Token quoted(char16_t quote) {
        std::size_t found = text_.find(quote, place_ + 1);
        while (found != TextView::npos && at(found + 1) == quote) {
            found = text_.find(quote, found + 2);
        }
        return token(TokenKind::String, place_, found == TextView::npos ? text_.size() + 1 : found + 1, 1);
    }

    Token number() {
        std::size_t end = place_;
        while (isDigit(at(end)) || at(end) == u'.') {
            ++end;
        }
        if (at(end) == u'e' || at(end) == u'E') {
            const std::size_t digits = end + (at(end + 1) == u'+' || at(end + 1) == u'-' ? 2 : 1);
            if (isDigit(at(digits))) {
                end = digits;
                while (isDigit(at(end))) {
                    ++end;
                }
            }
        }
        return token(TokenKind::Number, place_, end);
    }

    // A "$" belongs to the name of a function: Left$(...).
    Token word() {
        std::size_t end = place_;
        while (end < text_.size() && isNameCharacter(text_[end])) {
            ++end;
        }
        return token(TokenKind::Word, place_, end + (at(end) == u'$' && at(end + 1) == u'(' ? 1 : 0));
    }

    Token sign() {
        const char16_t first = text_[place_], second = at(place_ + 1);
        const bool two =
            (first == u'<' && (second == u'=' || second == u'>')) || (first == u'>' && second == u'=');
        return token(TokenKind::Sign, place_, place_ + (two ? 2 : 1));
    }

    TextView text_;
    std::size_t place_ = 0;
};

} // namespace

Text Token::value() const {
    if (kind != TokenKind::String) {
        return Text(text);
    }
    Text single;
    for (std::size_t place = 0; place < text.size(); ++place) {
        single += text[place];
        const bool doubled = (text[place] == u'"' || text[place] == u'\'') && place + 1 < text.size() &&
                             text[place + 1] == text[place];
        place += doubled ? 1 : 0;
    }
    return single;
}

std::vector<Token> sqlTokens(TextView text) {
    return Lexer(text).run();
}

void TokenReader::skipParentheses() {
    for (int depth = 1; depth > 0 && !atEnd();) {
        const Token& token = take();
        depth += token.isSign(u"(") ? 1 : token.isSign(u")") ? -1 : 0;
    }
}

} // namespace relvane::jet
