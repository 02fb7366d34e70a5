// The listing of big applications in two columns a page, from the rows in the work database to a PDF file with its
// outline, against a bare loop that draws the same texts on as many pages.
//
//     bench_listing_pages [LINES ...]
//
// For each number of lines (125,000 to 1,000,000) a work database is filled: 1,000 modules, 5,000 procedures. Each
// measurement is a process of its own; engine and loop take turns, and the median of the rounds counts. The listing in
// kana order follows, and the layouts of both without any drawing. The last line holds the time of a line in the longest listing
// against that in the shortest: 1 is growth in proportion.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <QGuiApplication>

#include "bare_pages.h"
#include "own_process.h"
#include "platform/native_path.h"
#include "reports/pdf.h"
#include "sqlite/work_store.h"

namespace {

namespace fs = std::filesystem;
using namespace relvane;
using namespace relvane::bench;

constexpr DateTime now{2026, 11, 20, 16, 5, 9};
constexpr std::int64_t modules = 1000, proceduresOfAModule = 5;
constexpr int rounds = 3;

// Lines of a procedure behind its head; what is too long for half a page is wrapped.
constexpr const char16_t* body[] = {
    u"    ' 締め日までの受注を得意先ごとに集計し、請求明細に書き込みます。",
    u"    Dim rs As Recordset, lngCount As Long",
    u"    Set rs = CurrentDb.OpenRecordset(\"Q_受注集計\", dbOpenDynaset)",
    u"    On Error GoTo Err_Label",
    u"    Do Until rs.EOF",
    u"        If IsNull(rs!受注日) Or rs!数量 <= 0 Then",
    (u"            MsgBox \"受注明細の登録に失敗しました。受注番号を確認して下さい。\" & vbCrLf & "
     u"Err.Description, vbCritical"),
    u"            Exit Do",
    u"        End If",
    u"        lngCount = lngCount + 1",
    u"        rs.Edit",
    u"        rs!金額 = CLng(Nz(rs!単価) * rs!数量 * (1 - Nz(rs!割引)) * 100) / 100 ' 円未満は切り捨て",
    u"        rs.Update",
    u"        rs.MoveNext",
    u"    Loop",
    u"    DoCmd.OpenForm \"F_受注入力\", acNormal, , \"受注コード = \" & lngCount",
};

void fill(const fs::path& file, std::int64_t lines) {
    const auto store = openWorkStore(textOfNativePath(file.string()));
    store->Execute(u"delete * from T_RvModule;");
    const auto rows = store->OpenRecordset(u"T_RvModule");
    const std::int64_t ofModule = lines / modules, ofProcedure = ofModule / proceduresOfAModule;
    for (std::int64_t module = 0; module < modules; ++module) {
        // Numbers from the far end, so that kana order is another than that of the rows.
        const Text name = Text(u"M_受注管理") + toText(modules - module);
        for (std::int64_t line = 0; line < ofModule; ++line) {
            const std::int64_t procedure = line / ofProcedure, within = line % ofProcedure;
            const Text procedureName = Text(u"集計処理") + toText(proceduresOfAModule - procedure);
            rows->AddNew();
            rows->Collect(u"Label", Text(u"3"));
            rows->Collect(u"objectNo", module + 1);
            rows->Collect(u"ProcedureNo", module * proceduresOfAModule + procedure + 1);
            rows->Collect(u"ObjectName", name);
            rows->Collect(u"Line", line + 1);
            rows->Collect(u"ProcedureName", procedureName);
            rows->Collect(u"Procedure",
                          within == 0 ? u"Public Sub " + procedureName + u"(ByVal 得意先コード As String)"
                          : within == ofProcedure - 1
                              ? Text(u"End Sub")
                              : Text(body[static_cast<std::size_t>(within) % std::size(body)]));
            rows->Update();
        }
    }
    rows->Close();
}

// What the work that `prepare` gives takes, in a process of its own that can set texts. It answers a number of pages.
template <class Prepare>
Measured measured(Prepare prepare) {
    return inOwnProcess([&] {
        int count = 1;
        char name[] = "bench", *words[] = {name, nullptr};
        const QGuiApplication application(count, words);
        const auto work = prepare();
        rusage before{}, after{};
        getrusage(RUSAGE_SELF, &before);
        const auto begin = std::chrono::steady_clock::now();
        const int pages = work();
        const std::chrono::duration<double> clock = std::chrono::steady_clock::now() - begin;
        getrusage(RUSAGE_SELF, &after);
        return Measured{clock.count(),
                        seconds(after.ru_utime) + seconds(after.ru_stime) - seconds(before.ru_utime) -
                            seconds(before.ru_stime),
                        megabytes(after), static_cast<double>(pages)};
    });
}

std::shared_ptr<RowStore> opened(const fs::path& file) {
    return openWorkStore(textOfNativePath(file.string()));
}

Measured engine(const fs::path& file, const Text& report, const fs::path& pdf) {
    return measured([&] {
        return [&] {
            const auto document = reports::open(opened(file), report, now);
            reports::writePdf(document, textOfNativePath(pdf.string()));
            return document.pageCount();
        };
    });
}

Measured layout(const fs::path& file, const Text& report) {
    return measured([&] { return [&] { return reports::open(opened(file), report, now).pageCount(); }; });
}

reports::ReportDefinition definition(const std::shared_ptr<RowStore>& store, TextView report) {
    const auto rows = store->OpenRecordset(u"RvReports");
    while (toText(rows->Field(u"Name")) != report) {
        rows->MoveNext();
    }
    return reports::parseDefinition(Text(report), toText(rows->Field(u"Definition")));
}

Measured loop(const fs::path& file, int pages, const fs::path& pdf) {
    return measured([&] {
        const auto store = opened(file);
        return [&, bare = BarePages(store, definition(store, u"R_RvModule2"), now)] {
            bare.draw(pages, pdf.string());
            return pages;
        };
    });
}

Measured median(std::vector<Measured> all) {
    std::sort(all.begin(), all.end(),
              [](const Measured& left, const Measured& right) { return left.processor < right.processor; });
    return all[all.size() / 2];
}

void print(std::int64_t lines, const char* what, const Measured& of) {
    std::printf("%9lld lines  %-22s %6.0f pages  %7.2f s processor  %7.2f s clock  %6.0f pages/s  %6.1f MB\n",
                static_cast<long long>(lines), what, of.rows, of.processor, of.clock, of.rows / of.processor,
                of.megabytes);
    std::fflush(stdout);
}

} // namespace

int main(int count, char** arguments) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    std::vector<std::int64_t> sizes;
    for (int i = 1; i < count; ++i) {
        sizes.push_back(std::atoll(arguments[i]));
    }
    if (sizes.empty()) {
        sizes = {125'000, 250'000, 500'000, 1'000'000};
    }
    const fs::path folder = fs::temp_directory_path() / ("listing-pages-" + std::to_string(getpid()));
    fs::create_directories(folder);
    int status = 0;
    try {
        std::vector<double> aLine;
        for (const std::int64_t lines : sizes) {
            const fs::path file = folder / "Relvane.mdb", pdf = folder / "listing.pdf";
            fs::copy_file(WORK_DATABASE, file, fs::copy_options::overwrite_existing);
            inOwnProcess([&] {
                fill(file, lines);
                return Measured{};
            });
            std::vector<Measured> engines, loops;
            for (int round = 0; round < rounds; ++round) {
                engines.push_back(engine(file, u"R_RvModule2", pdf));
                loops.push_back(loop(file, static_cast<int>(engines.back().rows), pdf));
            }
            const Measured listed = median(engines), bare = median(loops);
            print(lines, "two columns", listed);
            print(lines, "bare loop", bare);
            print(lines, "in kana order", engine(file, u"R_RvModule250", pdf));
            print(lines, "layout alone", layout(file, u"R_RvModule2"));
            print(lines, "the same in kana order", layout(file, u"R_RvModule250"));
            std::printf("%9lld lines  %.2f of the pages per second of the bare loop\n",
                        static_cast<long long>(lines), bare.processor / listed.processor);
            aLine.push_back(listed.processor / static_cast<double>(lines));
        }
        std::printf("A line of the longest listing takes %.2f of the time of one of the shortest.\n",
                    aLine.back() / aLine.front());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        status = 1;
    }
    fs::remove_all(folder);
    return status;
}
