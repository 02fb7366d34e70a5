// A small writer of indented JSON: members and elements in the order of the calls.
#pragma once

#include <ostream>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace relvane {

class JsonWriter {
public:
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    void key(std::string_view name); // ASCII

    void text(TextView text);
    void number(std::int64_t number);
    void number(double number); // null for what JSON has no number for
    void boolean(bool value);
    void null();
    // Currency, decimals, dates and GUIDs as texts, bytes as a text of hexadecimal digits.
    void value(const Value& value);

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void indent();

    std::ostream& out_;
    std::vector<bool> hasElements_; // of the objects and arrays that are open
    bool afterKey_ = false;
};

} // namespace relvane
