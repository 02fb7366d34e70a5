// The print settings: which line the reports print as the name of the analysed file.
#pragma once

#include "core/analysis_context.h"
#include "platform/controls.h"

namespace relvane {

class FrmSetUp : public Form {
public:
    explicit FrmSetUp(AnalysisContext& context);

    CheckBox chkSetUp{*this, "chkSetUp", u"任意の文字を印字する"};
    TextBox txtNini{*this, "txtNini"};
    Frame framSetUp{*this, "framSetUp", u""};
    CheckBox chkFile{*this, "chkFile", u"各種レポートへファイル名を印字する", &framSetUp};
    CheckBox chkPath{*this, "chkPath", u"ファイル名をフルパスで表示する", &framSetUp};
    Label lblMsg{*this, "lblMsg"}; // the choice taken last
    CommandButton cmdOK{*this, "cmdOK", u"OK"};

private:
    void Form_Load();
    void chkSetUp_Click();
    void cmdOK_Click();
    void writeLine(const Text& line, TextView choice); // the row of T_RvTitle
    void take(TextView choice);

    AnalysisContext& context_;
};

} // namespace relvane
