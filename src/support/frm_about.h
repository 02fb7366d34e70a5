// The about box: the program, the selected file with its size and that of its disk, and two links to its makers.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// Where the links lead, chosen when the program is built (RELVANE_MAIL, RELVANE_HOME_PAGE). A link without an address is
// hidden.
struct Addresses {
    Text mail;     // without "mailto:"
    Text homePage; // with "https://"
};

Addresses builtInAddresses();

class FrmAbout : public Form {
public:
    FrmAbout(AnalysisContext& context, const Addresses& addresses);

    // While the box is open the logo goes from picture to picture and begins again.
    static constexpr int logoPictures = 10;
    static constexpr int logoInterval = 250; // milliseconds

    Image Image1{*this, "Image1"};
    Label Label1{*this, "Label1", Text(programTitle)};
    Label Label2{*this, "Label2", u"FileName:"};
    Label lblName{*this, "lblName"};
    Label Label3{*this, "Label3", u"Drive:"};
    Label lblDrive{*this, "lblDrive"};
    Label Label4{*this, "Label4", u"TotalSize:"};
    Label lblTotal{*this, "lblTotal"};
    Label Label5{*this, "Label5", u"FreeSize:"};
    Label lblFree{*this, "lblFree"};
    Label Label7{*this, "Label7", u"FileSize:"};
    Label lblObjSize{*this, "lblObjSize"};
    Label Label6{*this, "Label6", u"感想等(E-mail)"};
    Label Label8{*this, "Label8", u"ホームページへ"};
    CommandButton cmdAbout{*this, "cmdAbout", u"OK"};
    Timer Timer1{*this, "Timer1"};

private:
    void Form_Load();
    void showFile(const Text& path);
    void closeBox();
    void wireLink(Label& label, const Text& address);

    AnalysisContext& context_;
};

} // namespace relvane
