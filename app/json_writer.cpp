#include "json_writer.h"

#include <charconv>
#include <cmath>

namespace relvane {
namespace {

template <class... Functions>
struct Visitor : Functions... {
    using Functions::operator()...;
};
template <class... Functions>
Visitor(Functions...) -> Visitor<Functions...>;

constexpr char hexDigits[] = "0123456789abcdef";

Text hexText(const Bytes& bytes) {
    Text text;
    for (const std::uint8_t byte : bytes) {
        text += static_cast<char16_t>(hexDigits[byte >> 4]);
        text += static_cast<char16_t>(hexDigits[byte & 15]);
    }
    return text;
}

} // namespace

void JsonWriter::open(char bracket) {
    separate();
    out_ << bracket;
    hasElements_.push_back(false);
}

void JsonWriter::close(char bracket) {
    const bool any = hasElements_.back();
    hasElements_.pop_back();
    if (any) {
        indent();
    }
    out_ << bracket;
    if (hasElements_.empty()) {
        out_ << '\n';
    }
}

void JsonWriter::indent() {
    out_ << '\n';
    for (std::size_t i = 0; i < hasElements_.size(); ++i) {
        out_ << ' ';
    }
}

void JsonWriter::separate() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (!hasElements_.empty()) {
        if (hasElements_.back()) {
            out_ << ',';
        }
        hasElements_.back() = true;
        indent();
    }
}

void JsonWriter::key(std::string_view name) {
    separate();
    out_ << '"' << name << "\": ";
    afterKey_ = true;
}

void JsonWriter::text(TextView text) {
    separate();
    out_ << '"';
    Text plain; // characters that stand for themselves, written together
    const auto flush = [&] {
        out_ << toUtf8(plain);
        plain.clear();
    };
    for (const char16_t unit : text) {
        if (unit == u'"' || unit == u'\\') {
            plain += u'\\';
            plain += unit;
        } else if (unit < 0x20 || unit == 0x7F) {
            flush();
            out_ << "\\u00" << hexDigits[unit >> 4] << hexDigits[unit & 15];
        } else {
            plain += unit;
        }
    }
    flush();
    out_ << '"';
}

void JsonWriter::number(std::int64_t number) {
    separate();
    out_ << number;
}

void JsonWriter::number(double number) {
    if (!std::isfinite(number)) {
        null();
        return;
    }
    separate();
    char digits[64];
    out_ << std::string_view(digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr);
}

void JsonWriter::boolean(bool value) {
    separate();
    out_ << (value ? "true" : "false");
}

void JsonWriter::null() {
    separate();
    out_ << "null";
}

void JsonWriter::value(const Value& value) {
    std::visit(Visitor{
                   [&](const Null&) { null(); },
                   [&](bool flag) { boolean(flag); },
                   [&](std::int64_t integer) { number(integer); },
                   [&](float single) { number(static_cast<double>(single)); },
                   [&](double real) { number(real); },
                   [&](const Text& string) { text(string); },
                   [&](const Bytes& bytes) { text(hexText(bytes)); },
                   [&](const auto& other) { text(toText(Value(other))); },
               },
               value);
}

} // namespace relvane
