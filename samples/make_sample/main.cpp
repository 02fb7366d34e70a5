// make_sample DESCRIPTION OUTPUT.mdb [--format 97|2000]: writes the database that a description describes.

#include <exception>
#include <iostream>
#include <string_view>

#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"

namespace {

namespace samples = relvane::samples;

std::optional<samples::FileFormat> formatNamed(std::string_view name) {
    if (name == "97") {
        return samples::FileFormat::Access97;
    }
    if (name == "2000") {
        return samples::FileFormat::Access2000;
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 && !(argc == 5 && std::string_view(argv[3]) == "--format")) {
        std::cerr << "usage: make_sample DESCRIPTION OUTPUT.mdb [--format 97|2000]\n";
        return 2;
    }
    try {
        samples::DatabaseSpec spec = samples::readDescription(argv[1]);
        if (argc == 5) {
            const auto format = formatNamed(argv[4]);
            if (!format) {
                std::cerr << "make_sample: no such format: " << argv[4] << " (97 or 2000)\n";
                return 2;
            }
            spec = samples::savedAs(std::move(spec), *format);
        }
        samples::writeDatabase(spec, argv[2]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
}
