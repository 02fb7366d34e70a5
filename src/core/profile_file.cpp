#include "core/profile_file.h"

#include <string>
#include <vector>

#include "core/text_functions.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace relvane {
namespace {

// Lines keep their bytes and line ends, so that what is not ours goes back as it came.
using Lines = std::vector<std::string>;

Lines linesOf(const Bytes& content) {
    Lines lines;
    std::string line;
    for (const std::uint8_t byte : content) {
        line.push_back(static_cast<char>(byte));
        if (byte == '\n') {
            lines.push_back(std::move(line));
            line.clear();
        }
    }
    if (!line.empty()) {
        lines.push_back(std::move(line));
    }
    return lines;
}

Text trimmed(TextView text) {
    constexpr TextView blanks = u" \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == TextView::npos ? Text()
                                   : Text(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
}

bool opensSection(TextView line, TextView section) {
    return line.size() > 2 && line.front() == u'[' && line.find(u']') != TextView::npos &&
           equalsIgnoringCase(trimmed(line.substr(1, line.find(u']') - 1)), section);
}

bool isSectionHeader(TextView line) {
    return !line.empty() && line.front() == u'[';
}

bool setsKey(TextView line, TextView key) {
    const std::size_t equals = line.find(u'=');
    return equals != TextView::npos && line.front() != u';' &&
           equalsIgnoringCase(trimmed(line.substr(0, equals)), key);
}

// Where a key stands, or where it would go.
struct Place {
    bool sectionFound = false, keyFound = false;
    std::size_t line = 0; // of the key; else behind the last line of its section that is not blank
};

Place find(const Lines& lines, TextView section, TextView key) {
    Place place;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Text line = trimmed(decode(lines[i], japaneseCodePage));
        if (place.sectionFound && isSectionHeader(line)) {
            return place;
        }
        if (!place.sectionFound && !opensSection(line, section)) {
            continue;
        }
        if (place.sectionFound && setsKey(line, key)) {
            place.keyFound = true;
            place.line = i;
            return place;
        }
        place.sectionFound = true;
        if (!line.empty()) {
            place.line = i + 1;
        }
    }
    return place;
}

Text withoutQuotes(Text value) {
    const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                        value.back() == value.front();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

void endLastLine(Lines& lines) {
    if (!lines.empty() && lines.back().back() != '\n') {
        lines.back() += "\r\n";
    }
}

} // namespace

Text ProfileFile::read(TextView section, TextView key, TextView otherwise) const {
    Bytes content;
    if (skipErrors([&] { content = files_.read(path_); }) != 0) {
        return Text(otherwise);
    }
    const Lines lines = linesOf(content);
    const Place place = find(lines, section, key);
    if (!place.keyFound) {
        return Text(otherwise);
    }
    const Text line = trimmed(decode(lines[place.line], japaneseCodePage));
    return withoutQuotes(trimmed(TextView(line).substr(line.find(u'=') + 1)));
}

void ProfileFile::write(TextView section, TextView key, TextView value) {
    Lines lines;
    if (files_.exists(path_)) {
        lines = linesOf(files_.read(path_));
    }
    const std::string line = encode(Text(key) + u"=" + Text(value), japaneseCodePage) + "\r\n";
    const Place place = find(lines, section, key);
    if (place.keyFound) {
        lines[place.line] = line;
    } else {
        endLastLine(lines);
        const auto at = lines.begin() + static_cast<std::ptrdiff_t>(place.line);
        if (place.sectionFound) {
            lines.insert(at, line);
        } else {
            lines.push_back(encode(u"[" + Text(section) + u"]", japaneseCodePage) + "\r\n");
            lines.push_back(line);
        }
    }
    Bytes content;
    for (const std::string& each : lines) {
        content.insert(content.end(), each.begin(), each.end());
    }
    files_.write(path_, content);
}

} // namespace relvane
