#include "core/error_report.h"

#include "core/shut_down.h"

namespace relvane {

constexpr ErrorBox brokenLinkBox{
    BoxHead::PlaceAndNumber,
    {u"リンクテーブルのパスが不正です。", u"リンクテーブルのリンクを", u"再設定後実行下さい。"},
    true};

namespace {

constexpr ErrorBox unstable{
    BoxHead::PlaceAndNumber,
    {u"システムが不安定です。", u"詳細はヘルプを参照下さい。", u"システムを終了します。"},
    true};
constexpr ErrorBox unstableWithoutDescription{BoxHead::PlaceAndNumber, unstable.lines, false};
constexpr ErrorBox mail{BoxHead::PlaceAndNumber, {u"場所、ｴﾗｰNo、内容を控えメールをお願いします。"}, true};
constexpr ErrorBox shortMail{BoxHead::PlaceAndNumber, {u"場所とｴﾗｰNoを控えメールをお願いします。"}, true};
constexpr ErrorBox olderAccess{
    BoxHead::None, {u"Access97以前のバージョンのファイルです。", u"Access97形式に変換して下さい。"}, false};
constexpr ErrorBox noPrinter{
    BoxHead::Place,
    {u"プリンタドライバがインストールされていません。", u"プリンタドライバをインストールして下さい。"},
    false};
constexpr ErrorBox noMacroConversion{
    BoxHead::PlaceAndNumber,
    {u"マクロをVBAに変換する機能が組み込まれていません。", u"インストールの追加で追加お願いします。"},
    false};
constexpr ErrorBox earlierVersion{BoxHead::PlaceAndNumber,
                                  {u"Access97以前のバージョンで作成した", u"ファイルのため解析出来ません。",
                                   u"Access97で変換後、解析して下さい。"},
                                  false};
constexpr ErrorBox hiddenMacro{
    BoxHead::PlaceAndNumber,
    {u"隠しオブジェクトで指定されているマクロがあります。", u"隠しオブジェクトを表示後、解析して下さい。"},
    false};
constexpr ErrorBox dependentForm{
    BoxHead::PlaceAndNumber,
    {u"他フォームを参照しているため取得出来ません。", u"デザインビューにチェック後実行してください。"},
    false};
constexpr ErrorBox emptyPrintText{BoxHead::None, {u"印字する文字を入力して下さい。"}, false};

// The numbers of Access's own run-time errors.
constexpr ErrorRule fatal{2449, 2999, &unstable, Afterwards::ExitProgram};
constexpr ErrorRule fatalWithoutDescription{2449, 2999, &unstableWithoutDescription, Afterwards::ExitProgram};
constexpr ErrorRule olderVersion{7866, 7866, &olderAccess, Afterwards::GoOn};

constexpr ErrorRule ofAnalyses[] = {fatal, olderVersion};
constexpr ErrorRule ofTables[] = {{3044, 3044, &brokenLinkBox, Afterwards::ExitProgram}, fatal, olderVersion};
constexpr ErrorRule ofSpecifications[] = {fatal, {3044, 3044, &brokenLinkBox, Afterwards::GoOn}};
constexpr ErrorRule ofMacros[] = {{2046, 2046, &noMacroConversion, Afterwards::GoOn},
                                  {2516, 2516, &earlierVersion, Afterwards::GoOn},
                                  {2544, 2544, &hiddenMacro, Afterwards::GoOn},
                                  fatal,
                                  olderVersion};
constexpr ErrorRule ofScreenCapture[] = {
    {2450, 2450, &dependentForm, Afterwards::GoOn}, {2501, 2501, &dependentForm, Afterwards::GoOn}, fatal};
constexpr ErrorRule ofTableUsage[] = {{2500, 2999, &unstable, Afterwards::ExitProgram}};
constexpr ErrorRule ofPanelFiles[] = {fatalWithoutDescription}; // selection, save, load, viewer
constexpr ErrorRule ofExports[] = {fatal};
constexpr ErrorRule ofReports[] = {{2202, 2202, &noPrinter, Afterwards::GoOn},
                                   {2455, 2455, nullptr, Afterwards::GoOn}};
constexpr ErrorRule ofPrintSettings[] = {{3315, 3315, &emptyPrintText, Afterwards::GoOn}, fatal};

void append(Text& text, TextView line) {
    if (!text.empty()) {
        text += u'\r';
    }
    text += line;
}

Text textOf(const ErrorBox& box, const ErrorPlace& place, const RunTimeError& error) {
    Text text;
    if (box.head == BoxHead::PlaceAndNumber) {
        text = u"場所:" + Text(place.name) + u"ｴﾗｰNo:" + toText(static_cast<long long>(error.number()));
    }
    for (const TextView line : box.lines) {
        if (!line.empty()) {
            append(text, text.empty() && box.head == BoxHead::Place ? u"場所:" + Text(place.name) + Text(line)
                                                                    : Text(line));
        }
    }
    if (box.description) {
        append(text, u"内容:" + error.description());
    }
    return text;
}

} // namespace

namespace places {
const ErrorPlace selection{u"選択", ofPanelFiles, mail};
const ErrorPlace tableAnalysis{u"テーブル情報", ofTables, mail};
const ErrorPlace queryAnalysis{u"クエリー情報", ofAnalyses, mail};
const ErrorPlace formAnalysis{u"フォーム情報", ofAnalyses, mail};
const ErrorPlace reportAnalysis{u"レポート情報", ofAnalyses, mail};
const ErrorPlace procedureList{u"プロシージャ一覧", ofAnalyses, mail};
const ErrorPlace moduleListing{u"モジュール情報", ofAnalyses, mail};
const ErrorPlace stepCounts{u"モジュールステップ", ofAnalyses, mail};
const ErrorPlace macroAnalysis{u"マクロ情報", ofMacros, mail};
const ErrorPlace controlCounts{u"コントロール数", ofAnalyses, mail};
const ErrorPlace commentList{u"コメント一覧", ofAnalyses, mail};
const ErrorPlace fileList{u"ファイル一覧", ofAnalyses, mail};
const ErrorPlace coverPage{u"表紙", ofAnalyses, mail};
const ErrorPlace reportPreview{u"レポート表示", ofReports, mail};
const ErrorPlace screenCapture{u"画面イメージ", ofScreenCapture, mail};
const ErrorPlace imageViewer{u"画像取得", ofPanelFiles, mail};
const ErrorPlace saving{u"保存", ofPanelFiles, mail};
const ErrorPlace loading{u"読込", ofPanelFiles, mail};
const ErrorPlace printSettings{u"ファイル名印刷指定", ofPrintSettings, shortMail};
const ErrorPlace batch{u"一括処理", ofExports, mail};
const ErrorPlace textExportSql{u"テキスト出力(SQL)", ofExports, mail};
const ErrorPlace textExportModule{u"テキスト出力(モジュール)", ofExports, mail};
const ErrorPlace csvExportObject{u"ＣＳＶ出力(オブジェクト)", ofExports, mail};
const ErrorPlace csvExportTable{u"ＣＳＶ出力(テーブル)", ofExports, mail};
const ErrorPlace csvExportQuery{u"ＣＳＶ出力(クエリー)", ofExports, mail};
const ErrorPlace csvExportForm{u"ＣＳＶ出力(フォーム)", ofExports, mail};
const ErrorPlace csvExportReport{u"ＣＳＶ出力(レポート)", ofExports, mail};
const ErrorPlace csvExportMacro{u"ＣＳＶ出力(マクロ)", ofExports, mail};
// Table usage bears the name of the references, and its band begins higher.
const ErrorPlace tableUsage{u"オブジェクト参照元情報(フォーム)", ofTableUsage, shortMail};
const ErrorPlace specifications{u"テーブル情報", ofSpecifications, shortMail};
const ErrorPlace referencesOfForms{u"オブジェクト参照元情報(フォーム)", ofExports, shortMail};
const ErrorPlace referencesOfReports{u"オブジェクト参照元情報(レポート)", ofExports, shortMail};
const ErrorPlace procedureReferences{u"プロシージャ引用先情報", ofExports, shortMail};
const ErrorPlace variables{u"変数情報", ofExports, shortMail};
const ErrorPlace comparison{u"オブジェクト比較", ofExports, shortMail};
const ErrorPlace preparation{u"初期処理", ofExports, shortMail};
const ErrorPlace about{u"About　", {}, shortMail}; // its box has a wide blank before the number
} // namespace places

void showErrorBox(AnalysisContext& context, const ErrorPlace& place, const ErrorBox& box,
                  const RunTimeError& error) {
    flushWorkStore(context);
    context.platform.dialogs->MsgBox(textOf(box, place, error), okOnly, Text(programTitle));
}

void reportError(AnalysisContext& context, const ErrorPlace& place, const RunTimeError& error, Form& window) {
    const ErrorBox* box = &place.otherwise;
    Afterwards afterwards = Afterwards::GoOn;
    for (const ErrorRule& rule : place.rules) {
        if (error.number() >= rule.first && error.number() <= rule.last) {
            box = rule.box;
            afterwards = rule.afterwards;
            break;
        }
    }
    if (box != nullptr) {
        showErrorBox(context, place, *box, error);
    }
    if (afterwards == Afterwards::ExitProgram) {
        m1z_Click(context);
    }
    window.Pointer = MousePointer::Normal;
    window.Enabled = true;
}

int guarded(AnalysisContext& context, const ErrorPlace& place, Form& window,
            const std::function<void()>& command) {
    try {
        command();
        return 0;
    } catch (const RunTimeError& error) {
        reportError(context, place, error, window);
        return error.number();
    }
}

int guarded(AnalysisContext& context, const ErrorPlace& place, const std::function<void()>& command) {
    return guarded(context, place, context.frmRelvane, command);
}

} // namespace relvane
