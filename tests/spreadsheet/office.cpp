#include "spreadsheet/office.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace relvane::test {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Comma-separated, quoted where needed, LF between rows.
Cells parse(const std::string& text) {
    Cells rows;
    std::vector<std::string> row(1);
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char byte = text[i];
        if (quoted && byte == '"' && i + 1 < text.size() && text[i + 1] == '"') {
            row.back() += text[++i];
        } else if (byte == '"') {
            quoted = !quoted;
        } else if (!quoted && byte == ',') {
            row.emplace_back();
        } else if (!quoted && byte == '\n') {
            rows.push_back(std::move(row));
            row.assign(1, {});
        } else {
            row.back() += byte;
        }
    }
    return rows;
}

} // namespace

std::vector<pid_t> officesIn(const fs::path& folder) {
    std::vector<pid_t> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos &&
            contentOf(entry.path() / "cmdline").find(folder.string()) != std::string::npos) {
            found.push_back(static_cast<pid_t>(std::stol(name)));
        }
    }
    return found;
}

Workbook::Workbook(const fs::path& file) : file_(file) {
    // Separator, quote, UTF-8, from row 1; as shown; every sheet into a file of its own.
    convert("csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true,false,false,-1");
}

void Workbook::convert(const std::string& format) const {
    static const TemporaryFolder settings; // made anew they would cost each of them a second
    const std::string command = std::string("LC_ALL=C.UTF-8 '") + converter +
                                "' -env:UserInstallation=file://" + settings.path().string() +
                                " --headless --convert-to '" + format + "' --outdir '" +
                                folder_.path().string() + "' '" + file_.string() + "' >/dev/null 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << command; // NOLINT: of our own words
}

Cells Workbook::sheet(const std::string& name) const {
    return parse(contentOf(folder_ / (file_.stem().string() + "-" + name + ".csv")));
}

std::string Workbook::flat() const {
    convert("fods");
    return contentOf(folder_ / (file_.stem().string() + ".fods"));
}

} // namespace relvane::test
