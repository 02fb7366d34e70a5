// The viewer of the picture that a capture left on the clipboard: looked at, printed, saved as a bitmap.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

class FrmCapture : public Form {
public:
    explicit FrmCapture(AnalysisContext& context);

    MenuItem m1{*this, "m1", u"プリンタ"};
    MenuItem m1a{*this, "m1a", u"ﾍﾟｰｼﾞ設定", &m1};
    MenuItem m1b{*this, "m1b", u"印刷", &m1};
    MenuItem m4{*this, "m4", u"保存"};
    MenuItem m5{*this, "m5", u"閉じる"};

    PictureBox picWk{*this, "picWk"};   // always as large as its picture
    PictureBox picWk2{*this, "picWk2"}; // never shown

    // Shows the picture of the clipboard, none when it holds none, and ends the wait of the main window. Error 520 or
    // 521 while another program holds the clipboard.
    void LoadClipboardPicture();

    // Asks for the margins and says which they are. Nobody keeps or shows the answer.
    Text m1a_Click();

    // Unloads the form; the clipboard goes with the picture.
    void close();

private:
    void Form_Load();
    bool asksAgain(int errorNumber);
    void m1b_Click();
    void m4_Click();
    void m5_Click();

    AnalysisContext& context_;
};

} // namespace relvane
