// make_sample DESCRIPTION OUTPUT.mdb: writes the database that a description describes.

#include <exception>
#include <iostream>

#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_sample DESCRIPTION OUTPUT.mdb\n";
        return 2;
    }
    try {
        relvane::samples::writeDatabase(relvane::samples::readDescription(argv[1]), argv[2]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
}
