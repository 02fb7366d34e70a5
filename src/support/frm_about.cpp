#include "support/frm_about.h"

#include <cmath>

#include "core/error_report.h"
#include "core/file_name_parts.h"
#include "core/panel_events.h"
#include "core/text_functions.h"

namespace relvane {
namespace {

// Format(bytes in megabytes, "#0.00") and the unit; a half is rounded up.
Text megabytes(std::int64_t bytes) {
    const long long hundredths = std::llround(static_cast<double>(bytes) / (1024 * 1024) * 100);
    const Text decimals = toText(hundredths % 100);
    return toText(hundredths / 100) + (decimals.size() < 2 ? u".0" : u".") + decimals + u"MB";
}

// The command processor opens it; where there is none, the desktop does.
void openAddress(SystemServices& system, const Text& address) {
    const Text processor = system.commandProcessor();
    if (processor.empty()) {
        system.openAddress(address);
    } else {
        system.Shell(processor + u" /C Start " + address);
    }
}

} // namespace

Addresses builtInAddresses() {
    return {fromUtf8(RELVANE_MAIL), fromUtf8(RELVANE_HOME_PAGE)};
}

FrmAbout::FrmAbout(AnalysisContext& context, const Addresses& addresses)
    : Form("frmAbout", u"アバウト"), context_(context) {
    Load = [this] { Form_Load(); };
    QueryUnload = cmdAbout.Click = [this] { closeBox(); };
    Timer1.TimerEvent = [this] { Image1.Picture = (Image1.Picture + 1) % logoPictures; };
    wireLink(Label6, addresses.mail.empty() ? Text() : u"mailto:" + addresses.mail);
    wireLink(Label8, addresses.homePage);
    turnEnterIntoTab(*this);
}

// The label is pushed in while the mouse holds it.
void FrmAbout::wireLink(Label& label, const Text& address) {
    label.Visible = !address.empty();
    label.MouseDown = [&label] { label.Left = label.Top = 1; };
    label.MouseUp = [&label] { label.Left = label.Top = 0; };
    label.Click = [this, address] {
        guarded(context_, places::about, *this, [&] { openAddress(*context_.platform.system, address); });
    };
}

void FrmAbout::Form_Load() {
    Image1.Picture = 0;
    Timer1.Interval = logoInterval;
    for (Label* figure : {&lblName, &lblDrive, &lblTotal, &lblFree, &lblObjSize}) {
        figure->Caption = u"";
    }
    if (const Text& path = context_.frmRelvane.lblDBName.Caption.get(); !path.empty()) {
        guarded(context_, places::about, *this, [&] { showFile(path); });
    }
}

void FrmAbout::showFile(const Text& path) {
    lblName.Caption = GetFileNamePart(path);
    lblDrive.Caption = relvane::Left(path, 1);
    const DiskSpace disk = context_.platform.system->GetDiskFreeSpaceEx(GetFolderPart(path));
    lblTotal.Caption = megabytes(disk.total);
    lblFree.Caption = megabytes(disk.free);
    lblObjSize.Caption = megabytes(context_.platform.files->FileLen(path));
}

void FrmAbout::closeBox() {
    Timer1.Interval = 0;
    Unload();
}

} // namespace relvane
