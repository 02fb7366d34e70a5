#include "report_output.h"

#include <algorithm>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "reports/pdf.h"
#include "reports/report_document.h"
#include "sqlite/work_store.h"
#include "system/linux_system.h"

namespace relvane::cli {
namespace {

DateTime now() {
    return LinuxSystem(false).now();
}

} // namespace

void makeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        const bool permitted =
            error != std::errc::permission_denied && error != std::errc::read_only_file_system;
        throw RunTimeError(permitted ? ErrorNumber::PathNotFound : ErrorNumber::PermissionDenied,
                           textOfNativePath(folder.string()));
    }
}

namespace {

class ReportApplication final : public access::Application, private access::DoCmd {
public:
    explicit ReportApplication(ReportOutput output) : output_(std::move(output)) {}

    void OpenCurrentDatabase(const Text& path, bool) override { store_ = openWorkStore(path); }
    void CloseCurrentDatabase() override {
        if (!store_) {
            throw RunTimeError(ErrorNumber::NoCurrentDatabase);
        }
        store_.reset();
    }
    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool) override {}

private:
    void OpenReport(const Text& name, access::View view) override {
        if (!store_) {
            throw RunTimeError(ErrorNumber::NoCurrentDatabase);
        }
        if (view != access::acViewPreview) {
            throw RunTimeError(ErrorNumber::NoPrinter);
        }
        const reports::ReportDocument document =
            reports::open(store_, name, now(), output_.binding ? output_.binding->chapter : Text());
        if (output_.folder) {
            makeFolder(*output_.folder);
            const std::filesystem::path file = *output_.folder / (toUtf8(name) + ".pdf");
            if (output_.binding) {
                output_.binding->add(document, file);
                return;
            }
            reports::writePdf(document, textOfNativePath(file.string()));
            if (output_.written) {
                output_.written(file);
            }
        }
    }
    void Maximize() override {}

    ReportOutput output_;
    std::shared_ptr<RowStore> store_;
};

} // namespace

struct ReportBinding::Volume {
    std::filesystem::path file;
    reports::BoundPdf pages;
};

ReportBinding::ReportBinding() = default;
ReportBinding::~ReportBinding() = default;

void ReportBinding::add(const reports::ReportDocument& document, const std::filesystem::path& file) {
    auto volume = std::ranges::find(volumes_, file, &Volume::file);
    if (volume == volumes_.end()) {
        volumes_.push_back({file, reports::BoundPdf(textOfNativePath(file.string()))});
        volume = std::prev(volumes_.end());
    }
    volume->pages.add(document, chapter);
}

std::vector<std::filesystem::path> ReportBinding::finish() {
    std::vector<std::filesystem::path> files;
    for (Volume& volume : volumes_) {
        volume.pages.finish();
        files.push_back(volume.file);
    }
    volumes_.clear();
    return files;
}

std::shared_ptr<access::Application> newReportApplication(const ReportOutput& output) {
    return std::make_shared<ReportApplication>(output);
}

void writeReport(const Text& store, const Text& reportName, const std::filesystem::path& file) {
    reports::writePdf(reports::open(openWorkStore(store), reportName, now()),
                      textOfNativePath(file.string()));
}

} // namespace relvane::cli
