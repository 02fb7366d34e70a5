#include "capture/frm_capture.h"

#include "core/error_report.h"
#include "core/file_dialogs.h"
#include "core/file_name_parts.h"
#include "platform/bitmap_file.h"

namespace relvane {
namespace {

constexpr int invalidPropertyValue = 380;
constexpr PageMargins leastMargins{.left = 500, .top = 500, .right = 500, .bottom = 500};
constexpr PageMargins offeredMargins{.left = 1000, .top = 2000, .right = 1000, .bottom = 1500};
constexpr TextView extension = u".bmp";

Text inMillimetres(std::int32_t hundredths) {
    return toText(Value(hundredths / 100.0)) + u"mm";
}

Text textOf(const PageMargins& margins) {
    return u"余白情報\r左 : " + inMillimetres(margins.left) + u"\r上 : " + inMillimetres(margins.top) +
           u"\r右 : " + inMillimetres(margins.right) + u"\r下 : " + inMillimetres(margins.bottom);
}

// A name as short as an extension is none.
Text bitmapName(const Text& chosen) {
    return GetFileNamePart(chosen).size() < extension.size() ? chosen + Text(extension)
                                                             : withExtension(chosen, extension);
}

void SavePicture(Files& files, const std::shared_ptr<const Picture>& picture, const Text& path) {
    if (!picture) {
        throw RunTimeError(invalidPropertyValue, u"プロパティの値が不正です。");
    }
    files.write(path, bitmapFile(*picture));
}

} // namespace

FrmCapture::FrmCapture(AnalysisContext& context) : Form("frmCapture", u"画面イメージ"), context_(context) {
    picWk2.Visible = false;
    Load = [this] { Form_Load(); };
    QueryUnload = [this] { close(); };
    m1a.Click = [this] { m1a_Click(); };
    m1b.Click = [this] { m1b_Click(); };
    m4.Click = [this] { m4_Click(); };
    m5.Click = [this] { m5_Click(); };
}

void FrmCapture::Form_Load() {
    picWk.Visible = true;
    picWk2.Visible = false;
    while (const int failed = skipErrors([this] { LoadClipboardPicture(); })) {
        if (!asksAgain(failed)) {
            return;
        }
    }
}

void FrmCapture::LoadClipboardPicture() {
    const Picture picture = need(context_.platform.clipboard).GetData();
    picWk.Picture = picture.isEmpty() ? nullptr : std::make_shared<const Picture>(picture);
    picWk.Refresh();
    context_.frmRelvane.Timer2.Interval = 0;
}

bool FrmCapture::asksAgain(int errorNumber) {
    const auto ask = [this](const Text& text, int buttons) {
        return context_.platform.dialogs->MsgBox(text, buttons, Text(programTitle)) == boxRetry;
    };
    switch (errorNumber) {
    case 520:
    case 521:
        return ask(u"Clipboardが既に別のｱﾌﾟﾘｹｰｼｮﾝで開かれています。", retryCancel);
    case 2486:
    case invalidPropertyValue:
        return ask(u"再度実行して下さい。", okOnly);
    default:
        return ask(u"不明" + toText(static_cast<long long>(errorNumber)), retryCancel);
    }
}

Text FrmCapture::m1a_Click() {
    PageMargins margins = offeredMargins;
    return context_.platform.dialogs->PageSetupDlg(margins, leastMargins) ? textOf(margins)
                                                                          : u"キャンセルされました";
}

void FrmCapture::m1b_Click() {
    context_.platform.dialogs->PrintDlg(); // the picture itself is not printed
}

void FrmCapture::m4_Click() {
    guarded(context_, places::imageViewer, *this, [this] {
        Files& files = *context_.platform.files;
        const Text chosen = ShowSaveDialog(context_, fileFilter(u"ビットマップ(*.bmp)", u"*.bmp"),
                                           files.currentFolder(), u"画像ファイルの保存");
        if (!chosen.empty()) {
            SavePicture(files, picWk.Picture, bitmapName(chosen));
        }
    });
}

void FrmCapture::m5_Click() {
    need(context_.platform.clipboard).Clear();
    close();
}

void FrmCapture::close() {
    need(context_.platform.clipboard).Clear();
    Unload();
    picWk.Picture = nullptr;
}

} // namespace relvane
