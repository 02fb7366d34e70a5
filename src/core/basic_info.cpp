#include "core/basic_info.h"

#include "core/text_functions.h"
#include "platform/codepage.h"

namespace relvane {
namespace {

struct Item {
    TextView key;
    std::int64_t length; // characters read at most
    Text AnalysisContext::*field;
    TextBox FrmRelvane::*box;
};

constexpr Item items[] = {
    {u"Title", 255, &AnalysisContext::CoverTitle, &FrmRelvane::txtTitle},
    {u"Kisya", 255, &AnalysisContext::CoverCompany, &FrmRelvane::txtCompany},
    {u"Bumon", 255, &AnalysisContext::CoverDepartment, &FrmRelvane::txtBumon},
    {u"CapTm", 2, &AnalysisContext::CaptureSeconds, &FrmRelvane::txtCapTime},
};

Text pathOf(const AnalysisContext& context) {
    return context.ProgramFolder + u"Relvane.dat";
}

void readLine(AnalysisContext& context, TextView line) {
    for (const Item& item : items) {
        if (const std::int32_t position = InStr(line, item.key)) {
            context.*item.field = RTrim(Mid(line, position + 6, item.length)); // behind the key and its "="
            return;
        }
    }
}

} // namespace

void ReadBasicInfo(AnalysisContext& context) {
    const Bytes bytes = context.platform.files->read(pathOf(context));
    const Text content = decode(bytes, japaneseCodePage);
    for (std::size_t begin = 0; begin < content.size();) {
        const std::size_t end = std::min(content.find_first_of(u"\r\n", begin), content.size());
        readLine(context, TextView(content).substr(begin, end - begin));
        begin = end + 1;
    }
}

void cmdSave_Click(AnalysisContext& context) {
    constexpr TextView saved = u"基本情報が登録されました。";
    FrmRelvane& form = context.frmRelvane;
    Text content;
    for (const Item& item : items) {
        context.*item.field = Trim((form.*item.box).Text.get());
        content += Text(item.key) + u"=" + context.*item.field + u"\r\n";
    }
    const std::string encoded = encode(content, japaneseCodePage);
    context.platform.files->write(pathOf(context), Bytes(encoded.begin(), encoded.end()));
    showMessage(form.gauge, saved);
    context.platform.dialogs->MsgBox(Text(saved), okOnly, Text(programTitle));
}

} // namespace relvane
