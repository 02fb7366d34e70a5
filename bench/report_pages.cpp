// Pages per second from rows to a PDF file, layout pass, outline and all, against a bare loop that draws the same
// texts at the same places on the same page writer. Each measurement is a process of its own, so that its peak
// memory can be told; the two kinds take turns.
//
//     bench_report_pages [PAGES]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <QGuiApplication>

#include "bare_pages.h"
#include "platform/runtime_error.h"
#include "reports/pdf.h"

namespace {

using namespace relvane;
using namespace relvane::reports;

constexpr DateTime now{2026, 11, 20, 16, 5, 9};
constexpr int rowsPerPage = 16; // about
constexpr int rounds = 3;

// Object rows made up one by one: nothing but the engine's own memory counts. Every fourth description grows over
// two or three lines. A group of 100 rows, so that the outline has an entry for every five pages.
class Rowsource : public Recordset {
public:
    Rowsource(std::int64_t rows, std::int64_t at) : rows_(rows), at_(at) {}

    void AddNew() override {}
    void Collect(TextView, const Value&) override {}
    void Update() override {}
    bool EOF_() const override { return at_ >= rows_; }
    void MoveFirst() override { at_ = 0; }
    void MoveNext() override { ++at_; }
    int FieldCount() const override { return 9; }
    Text FieldName(int position) const override {
        static const char16_t* const names[] = {u"DbNo",       u"objectNo",   u"Class",
                                                u"ObjectName", u"DateCreate", u"DateUpdate",
                                                u"QueryType",  u"Midasi",     u"Description"};
        return names[position];
    }
    Value Field(TextView) const override { throw RunTimeError(ErrorNumber::ItemNotInCollection); }
    Value Field(int position) const override {
        const int day = 1 + static_cast<int>(at_ % 28), minute = static_cast<int>(at_ % 60);
        switch (position) {
        case 1:
            return at_ + 1;
        case 2:
            return Text(u"組 ") + toText(at_ / 100 + 1);
        case 3:
            return Text(u"T_受注明細ワーク_") + toText(at_ + 1);
        case 4:
            return DateTime{1998, 4, day, 9, minute, 0};
        case 5:
            return DateTime{2003, 12, day, 18, minute, 59};
        case 6:
            return at_ % 5 == 0 ? Value(Text(u"Link(Access)")) : Value(Null{});
        case 8:
            return at_ % 4 == 1
                       ? Value(Text(
                             u"受注明細を得意先ごとに集計し、月次の請求書に渡します。締め日は得意先マスタに"
                             u"従い、月末以外の得意先は翌月の処理に回します。取消分は含みません。"))
                       : Value(Text(u"短い説明"));
        default:
            return std::int64_t{0};
        }
    }
    void Close() override {}

private:
    std::int64_t rows_, at_;
};

class Store : public RowStore {
public:
    explicit Store(std::int64_t rows) : rows_(rows) {}
    Text Name() const override { return u"bench"; }
    std::unique_ptr<Recordset> OpenRecordset(TextView table) override { return OpenSorted(table, {}, 0); }
    std::unique_ptr<Recordset> OpenSorted(TextView table, std::span<const SortKey>,
                                          std::int64_t skip) override {
        if (table != u"T_RvObject") {
            throw RunTimeError(ErrorNumber::TableNotFound, table);
        }
        return std::make_unique<Rowsource>(rows_, skip);
    }
    void Execute(TextView) override {}
    void copyTo(const Text&) override {}

private:
    std::int64_t rows_;
};

ReportDefinition definition() {
    std::ifstream file(RELVANE_OBJECT_LIST);
    const std::string json((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    ReportDefinition report = parseDefinition(u"R_RvObjectAll", fromUtf8(json));
    report.heads.clear(); // its table is no part of this measurement
    return report;
}

double seconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

struct Result {
    int pages = 0;
    double seconds = 0;
    double layoutSeconds = 0;
};

Result engine(std::int64_t rows, const std::string& path) {
    const auto begin = std::chrono::steady_clock::now();
    const ReportDocument document(std::make_shared<Store>(rows), definition(), now);
    const double layout = seconds(begin);
    writePdf(document, fromUtf8(path));
    return {document.pageCount(), seconds(begin), layout};
}

Result bare(std::int64_t rows, const std::string& path) {
    const bench::BarePages bare(std::make_shared<Store>(rows), definition(), now);
    const int pages = static_cast<int>(rows / rowsPerPage);
    const auto begin = std::chrono::steady_clock::now();
    bare.draw(pages, path);
    return {pages, seconds(begin), 0};
}

struct Measured {
    Result result;
    double megabytes = 0;
    std::uintmax_t fileSize = 0;
};

template <class Work>
Measured measure(Work work, std::int64_t rows, const std::string& path) {
    int ends[2];
    if (pipe(ends) != 0) {
        std::exit(1);
    }
    const pid_t child = fork();
    if (child == 0) {
        int count = 1;
        char name[] = "bench";
        char* arguments[] = {name, nullptr};
        const QGuiApplication application(count, arguments);
        const Result result = work(rows, path);
        const auto written = write(ends[1], &result, sizeof result);
        _exit(written == sizeof result ? 0 : 1);
    }
    close(ends[1]);
    Measured measured;
    int status = 0;
    rusage usage{};
    const bool read = ::read(ends[0], &measured.result, sizeof measured.result) == sizeof measured.result;
    if (wait4(child, &status, 0, &usage) != child || status != 0 || !read) {
        std::cerr << "a measurement failed\n";
        std::exit(1);
    }
    close(ends[0]);
    measured.megabytes = static_cast<double>(usage.ru_maxrss) / 1024;
    measured.fileSize = std::filesystem::file_size(path);
    return measured;
}

void print(const char* what, const Measured& measured) {
    std::printf("%-7s %5d pages %7.2f s %6.0f pages/s  layout %5.2f s  peak %5.1f MB  %5.2f kB a page\n",
                what, measured.result.pages, measured.result.seconds,
                measured.result.pages / measured.result.seconds, measured.result.layoutSeconds,
                measured.megabytes, static_cast<double>(measured.fileSize) / 1024 / measured.result.pages);
    std::fflush(stdout);
}

} // namespace

int main(int count, char** arguments) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const std::int64_t pages = count > 1 ? std::atoll(arguments[1]) : 2000;
    const std::string path =
        (std::filesystem::temp_directory_path() / ("report-pages-" + std::to_string(getpid()))).string();
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        const Measured whole = measure(engine, pages * rowsPerPage, path);
        print("engine", whole);
        const Measured loop = measure(bare, pages * rowsPerPage, path);
        print("bare", loop);
        ratios.push_back((whole.result.pages / whole.result.seconds) /
                         (loop.result.pages / loop.result.seconds));
    }
    std::filesystem::remove(path);
    std::sort(ratios.begin(), ratios.end());
    std::printf("The engine reaches %.2f of the bare loop's pages per second (median of %d rounds).\n",
                ratios[ratios.size() / 2], rounds);
    return 0;
}
