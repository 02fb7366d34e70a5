#include "core/recent_files.h"

#include "core/profile_file.h"
#include "core/text_functions.h"

namespace relvane {
namespace {

constexpr TextView section = u"RECENT";

Text keyOf(std::size_t number) {
    return u"RecentFile" + toText(static_cast<long long>(number));
}

bool isNone(TextView path) {
    return Left(path, 1) == u"0";
}

} // namespace

void GetRecentFiles(AnalysisContext& context) {
    const ProfileFile settings(*context.platform.files, context.IniPath);
    for (std::size_t i = 0; i < context.RecentList.size(); ++i) {
        context.RecentList[i] = settings.read(section, keyOf(i + 1), u"0");
        MenuItem& entry = context.frmRelvane.RecentFile[i];
        entry.Visible = !isNone(context.RecentList[i]);
        if (entry.Visible) {
            entry.Caption = context.RecentList[i];
        }
    }
}

void WriteRecentFiles(AnalysisContext& context, TextView path) {
    if (path.empty()) {
        return;
    }
    ProfileFile settings(*context.platform.files, context.IniPath);
    settings.write(section, keyOf(1), path);
    for (std::size_t i = context.RecentList.size() - 1; i-- > 0;) {
        if (!isNone(context.RecentList[i])) {
            settings.write(section, keyOf(i + 2), context.RecentList[i]);
        }
    }
}

} // namespace relvane
