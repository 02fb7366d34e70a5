// Opens a database file and reads everything that DAO tells about it: walk_file FILE. Prints how much that was, so
// that nothing of the reading can be left out.
#include <iostream>

#include "walk.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "walk_file FILE\n";
        return 2;
    }
    std::cout << relvane::bench::walk(argv[1]) << " values\n";
}
