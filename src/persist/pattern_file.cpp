#include "persist/pattern_file.h"

#include <string>
#include <string_view>

#include "core/panels.h"

namespace relvane {
namespace {

using C = AnalysisContext;

// The file is written in this order, and a line is searched for the keys in it: the capital ones say what runs, the
// small ones with which option.
struct PatternLine {
    std::string_view key;
    ContextNumber number;
};
constexpr PatternLine patternLines[] = {
    {"OBJECT", &C::BatchObject},   {"TABLE", &C::BatchTable},    {"QUERY", &C::BatchQuery},
    {"FORM", &C::BatchForm},       {"REPORT", &C::BatchReport},  {"MACRO", &C::BatchMacro},
    {"PROC", &C::BatchProc},       {"MODULE", &C::BatchModule},  {"MODSTEP", &C::BatchModStep},
    {"CONTROL", &C::BatchControl}, {"FILE", &C::BatchFile},      {"COMMENT", &C::BatchComment},
    {"mtable", &C::OptTable},      {"mquery", &C::OptQuery},     {"mform", &C::OptForm},
    {"mreport", &C::OptReport},    {"mmacro", &C::OptMacro},     {"mproc", &C::OptProc},
    {"mmodule", &C::OptModule},    {"mmodstep", &C::OptModStep}, {"mcontrol", &C::OptControl},
    {"mfile", &C::OptFile},
};

std::int16_t digitAt(std::string_view line, std::size_t position) {
    if (position >= line.size() || line[position] < '0' || line[position] > '9') {
        throw RunTimeError(ErrorNumber::TypeMismatch);
    }
    return static_cast<std::int16_t>(line[position] - '0');
}

void takeLine(AnalysisContext& context, std::string_view line) {
    for (const PatternLine& each : patternLines) {
        if (const std::size_t found = line.find(each.key); found != std::string_view::npos) {
            context.*each.number = digitAt(line, found + each.key.size() + 1);
            return;
        }
    }
}

} // namespace

// Keys and digits are the same bytes in every encoding of a text file, so nothing is decoded. Lines end at CR, LF or
// both.
void ReadPattern(AnalysisContext& context, const Text& path) {
    const Bytes content = context.platform.files->read(path);
    std::string line;
    for (const std::uint8_t byte : content) {
        if (byte == '\r' || byte == '\n') {
            takeLine(context, line);
            line.clear();
        } else {
            line.push_back(static_cast<char>(byte));
        }
    }
    takeLine(context, line);
}

void writePattern(AnalysisContext& context, const Text& path) {
    std::string content;
    for (const PatternLine& each : patternLines) {
        content += each.key;
        content += '=' + std::to_string(context.*each.number) + "\r\n";
    }
    context.platform.files->write(path, Bytes(content.begin(), content.end()));
}

} // namespace relvane
