// Reads all that a database file says of itself, as the benchmark's counterpart to mdb-schema:
//
//     walk_file FILE [records]
//
// through the object model, or with "records" below it. Prints how many values were read.
#include <iostream>

#include "walk.h"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "walk_file FILE [records]\n";
        return 2;
    }
    std::cout << (argc > 2 ? relvane::bench::readWhole(argv[1]) : relvane::bench::walk(argv[1]))
              << " values\n";
}
