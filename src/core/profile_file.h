// Settings files of the form
//
//     [SECTION]
//     key=value
//
// with the rules of a Windows private profile: sections and keys are found without regard to case, the first of a
// name counts, lines that begin with ";" are remarks, blanks around key and value and one pair of quotes around the
// value are dropped. Text in code page 932, CR LF; writing keeps every other byte of the file as it is.
#pragma once

#include "platform/files.h"

namespace relvane {

class ProfileFile {
public:
    ProfileFile(Files& files, Text path) : files_(files), path_(std::move(path)) {}

    // `otherwise` when the file, the section or the key is missing, or when the file cannot be read.
    Text read(TextView section, TextView key, TextView otherwise) const;

    // Replaces the key's line, or adds it at the end of its section, or the section at the end of the file. A
    // missing file is made. Errors 70, 76, 61, 57.
    void write(TextView section, TextView key, TextView value);

private:
    Files& files_;
    Text path_;
};

} // namespace relvane
