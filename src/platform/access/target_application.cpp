#include "access/target_application.h"

#include "jet/jet_file.h"
#include "jet/open_database.h"
#include "platform/native_path.h"

namespace relvane::access {
namespace {

constexpr int reportNotFound = 2103, databaseAlreadyOpen = 7867;

// What Access 97 writes into the property AccessVersion; Access 95 wrote "06.68".
constexpr TextView access97 = u"07.53";

// Access 1.0 to 2.0 kept another format, of which the reader knows no more than how to tell it.
bool isOfAccess2(const Text& path) {
    bool isOlder = false;
    skipErrors([&] { // any other fault of the file is for openDatabase to name
        isOlder = jet::readFileHeader(*jet::openByteFile(nativePath(path))).isBeforeJet3;
    });
    return isOlder;
}

// A file without the property was made by DAO alone; Access 97 opens it.
bool isOfAccess95(dao::Database& database) {
    const auto version = database.Properties().find(u"AccessVersion");
    return jet::fileOf(database)->header().isJet3() && version &&
           toText(version->value) < access97;
}

// The application is its own DoCmd.
class TargetApplication : public Application, public DoCmd {
public:
    explicit TargetApplication(jet::LinkResolver resolveLink) : resolveLink_(std::move(resolveLink)) {}

    void OpenCurrentDatabase(const Text& path, bool) override {
        if (database_) {
            throw RunTimeError(databaseAlreadyOpen, u"データベースは既に開いています。");
        }
        if (isOfAccess2(path)) {
            throw RunTimeError(ErrorNumber::OlderAccessVersion, path);
        }
        auto database = jet::openDatabase(path, {.resolveLink = resolveLink_});
        if (isOfAccess95(*database)) {
            throw RunTimeError(ErrorNumber::OlderAccessVersion, path);
        }
        database_ = std::move(database);
    }

    void CloseCurrentDatabase() override {
        requireDatabase();
        database_.reset();
    }

    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool) override {} // it has no window

    void OpenReport(const Text& name, View) override {
        requireDatabase();
        dao::Container* reports = database_->Containers().find(u"Reports");
        if (reports == nullptr || reports->Documents().find(name) == nullptr) {
            throw RunTimeError(reportNotFound, u"レポートが見つかりません。 (" + name + u")");
        }
        throw RunTimeError(reportNotFound, unreadable() + u" (" + name + u")");
    }
    void Maximize() override { requireDatabase(); }

private:
    void requireDatabase() const {
        if (!database_) {
            throw RunTimeError(ErrorNumber::NoCurrentDatabase);
        }
    }
    Text unreadable() const {
        return jet::fileOf(*database_)->header().isJet3()
                   ? u"デザインはまだ読み込めません。"
                   : u"Access97より新しいバージョンのファイルのデザインはまだ読み込めません。";
    }

    jet::LinkResolver resolveLink_;
    std::shared_ptr<dao::Database> database_;
};

} // namespace

std::shared_ptr<Application> newTargetApplication(jet::LinkResolver resolveLink) {
    return std::make_shared<TargetApplication>(std::move(resolveLink));
}

} // namespace relvane::access
