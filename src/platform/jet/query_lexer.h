// The words of SQL and of the expressions in saved queries.
#pragma once

#include <vector>

#include "platform/text.h"

namespace relvane::jet {

enum class TokenKind {
    Word,   // a bare name, a keyword, the name of a function
    Name,   // [a name in brackets], `text` without them
    String, // "text" or 'text', `text` without the quotes, doubled quotes as they stand
    Number,
    Date, // #...#
    Sign, // an operator or a mark of punctuation of one or two characters
    End,
};

struct Token {
    TokenKind kind = TokenKind::End;
    TextView text;
    std::size_t begin = 0, end = 0; // in the text that was read, delimiters included

    bool isSign(TextView sign) const { return kind == TokenKind::Sign && text == sign; }
    bool isWord(TextView word) const { return kind == TokenKind::Word && equalsIgnoringCase(text, word); }
    Text value() const; // of a string with its doubled quotes made single
    bool isName() const { return kind == TokenKind::Word || kind == TokenKind::Name; }
};

// All tokens of a text, an End behind them. Anything can be read: an unclosed bracket or quote ends with the
// text, an unknown character is a sign. The tokens point into `text`.
std::vector<Token> sqlTokens(TextView text);

// A run of tokens that is read from the front. Reading past the last token gives End again and again.
class TokenReader {
public:
    TokenReader(const Token* first, const Token* last) : next_(first), last_(last) {}
    explicit TokenReader(const std::vector<Token>& tokens)
        : TokenReader(tokens.data(), tokens.data() + tokens.size()) {}

    const Token& peek(std::size_t ahead = 0) const {
        static const Token end;
        return ahead < static_cast<std::size_t>(last_ - next_) ? next_[ahead] : end;
    }
    const Token& take() {
        const Token& token = peek();
        next_ += next_ < last_ ? 1 : 0;
        return token;
    }
    bool atEnd() const { return peek().kind == TokenKind::End; }
    bool takeSign(TextView sign) { return peek().isSign(sign) && (take(), true); }
    bool takeWord(TextView word) { return peek().isWord(word) && (take(), true); }

    // Behind an opening parenthesis that was taken: skips to the closing one and takes it.
    void skipParentheses();

    const Token* position() const { return next_; }

private:
    const Token* next_;
    const Token* last_;
};

} // namespace relvane::jet
