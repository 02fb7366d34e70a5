// The viewer of the picture that a capture left on the clipboard: looked at, printed, saved as a bitmap.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

class FrmCapture : public Form {
public:
    explicit FrmCapture(AnalysisContext& owner);

    AnalysisContext& context;

    MenuItem m1{*this, "m1", u"プリンタ"};
    MenuItem m1a{*this, "m1a", u"ﾍﾟｰｼﾞ設定", &m1};
    MenuItem m1b{*this, "m1b", u"印刷", &m1};
    MenuItem m4{*this, "m4", u"保存"};
    MenuItem m5{*this, "m5", u"閉じる"};

    PictureBox picWk{*this, "picWk"};
    PictureBox picWk2{*this, "picWk2"}; // never shown
};

} // namespace relvane
