// Starts an instance of the spreadsheet program in the folder RELVANE_TEST_FOLDER, says so by a file there, and waits to
// be killed.
//
//     killed_program MODULE
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "spreadsheet/service.h"

int main(int count, char** words) {
    const char* const named = std::getenv("RELVANE_TEST_FOLDER");
    if (count != 2 || named == nullptr) {
        return 2;
    }
    const std::filesystem::path folder = named;
    const auto excel = relvane::spreadsheet::newSpreadsheet({.folder = folder}, words[1]);
    excel->CreateObject();
    std::ofstream(folder / "ready") << "1";
    std::this_thread::sleep_for(std::chrono::minutes(5));
    return 0;
}
