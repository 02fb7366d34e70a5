#include "qt/japanese_texts.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace relvane::qt {
namespace {

struct Wording {
    std::string_view context, english;
    const char16_t* japanese;
};

constexpr Wording wordings[] = {
    {"QPlatformTheme", "OK", u"OK"},
    {"QPlatformTheme", "&Yes", u"はい(&Y)"},
    {"QPlatformTheme", "&No", u"いいえ(&N)"},
    {"QPlatformTheme", "Cancel", u"キャンセル"},
    {"QPlatformTheme", "Close", u"閉じる"},
    {"QPlatformTheme", "Save", u"保存"},
    {"QPlatformTheme", "Open", u"開く"},
    {"QFileDialog", "Look in:", u"場所:"},
    {"QFileDialog", "Directory:", u"フォルダ:"},
    {"QFileDialog", "File &name:", u"ファイル名(&N):"},
    {"QFileDialog", "Files of type:", u"ファイルの種類:"},
    {"QFileDialog", "&Open", u"開く(&O)"},
    {"QFileDialog", "Open", u"開く"},
    {"QFileDialog", "&Save", u"保存(&S)"},
    {"QFileDialog", "Save As", u"名前を付けて保存"},
    {"QFileDialog", "&Choose", u"選択(&C)"},
    {"QFileDialog", "&Rename", u"名前の変更(&R)"},
    {"QFileDialog", "&Delete", u"削除(&D)"},
    {"QFileDialog", "Delete", u"削除"},
    {"QFileDialog", "Show &hidden files", u"隠しファイルを表示(&H)"},
    {"QFileDialog", "&New Folder", u"新しいフォルダ(&N)"},
    {"QFileDialog", "New Folder", u"新しいフォルダ"},
    {"QFileDialog", "Create New Folder", u"新しいフォルダを作る"},
    {"QFileDialog", "Create a New Folder", u"新しいフォルダを作る"},
    {"QFileDialog", "Back", u"戻る"},
    {"QFileDialog", "Go back", u"戻る"},
    {"QFileDialog", "Forward", u"進む"},
    {"QFileDialog", "Go forward", u"進む"},
    {"QFileDialog", "Parent Directory", u"親フォルダ"},
    {"QFileDialog", "Go to the parent directory", u"親フォルダへ移る"},
    {"QFileDialog", "List View", u"一覧"},
    {"QFileDialog", "Change to list view mode", u"一覧で表示する"},
    {"QFileDialog", "Detail View", u"詳細"},
    {"QFileDialog", "Change to detail view mode", u"詳細を表示する"},
    {"QFileDialog", "Recent Places", u"最近使った場所"},
    {"QFileDialog", "Sidebar", u"サイドバー"},
    {"QFileDialog", "List of places and bookmarks", u"場所とブックマークの一覧"},
    {"QFileDialog", "Files", u"ファイル"},
    {"QFileDialog", "All Files (*)", u"すべてのファイル (*)"},
    {"QFileDialog", "My Computer", u"コンピュータ"},
    {"QFileDialog", "%1\nFile not found.\nPlease verify the correct file name was given.",
     u"%1\nファイルが見つかりません。\nファイル名を確かめて下さい。"},
    {"QFileDialog", "%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     u"%1\nフォルダが見つかりません。\nフォルダ名を確かめて下さい。"},
    {"QFileSystemModel", "Name", u"名前"},
    {"QFileSystemModel", "Size", u"サイズ"},
    {"QFileSystemModel", "Kind", u"種類"},
    {"QFileSystemModel", "Type", u"種類"},
    {"QFileSystemModel", "Date Modified", u"更新日時"},
    {"QFileSystemModel", "Computer", u"コンピュータ"},
    {"QFileSystemModel", "My Computer", u"コンピュータ"},
    {"QFileSystemModel", "%1 bytes", u"%1 バイト"},
    {"QAbstractFileIconProvider", "File", u"ファイル"},
    {"QAbstractFileIconProvider", "%1 File", u"%1 ファイル"},
    {"QAbstractFileIconProvider", "Folder", u"フォルダ"},
    {"QAbstractFileIconProvider", "Drive", u"ドライブ"},
    {"QLineEdit", "&Undo", u"元に戻す(&U)"},
    {"QLineEdit", "&Redo", u"やり直す(&R)"},
    {"QLineEdit", "Cu&t", u"切り取り(&T)"},
    {"QLineEdit", "&Copy", u"コピー(&C)"},
    {"QLineEdit", "&Paste", u"貼り付け(&P)"},
    {"QLineEdit", "Delete", u"削除"},
    {"QLineEdit", "Select All", u"すべて選択"},
    {"QWidgetTextControl", "&Undo", u"元に戻す(&U)"},
    {"QWidgetTextControl", "&Redo", u"やり直す(&R)"},
    {"QWidgetTextControl", "Cu&t", u"切り取り(&T)"},
    {"QWidgetTextControl", "&Copy", u"コピー(&C)"},
    {"QWidgetTextControl", "Copy &Link Location", u"リンク先をコピー(&L)"},
    {"QWidgetTextControl", "&Paste", u"貼り付け(&P)"},
    {"QWidgetTextControl", "Delete", u"削除"},
    {"QWidgetTextControl", "Select All", u"すべて選択"},
    {"QAbstractSpinBox", "&Select All", u"すべて選択(&S)"},
    {"QAbstractSpinBox", "&Step up", u"増やす(&S)"},
    {"QAbstractSpinBox", "Step &down", u"減らす(&D)"},
};

} // namespace

QString JapaneseTexts::translate(const char* context, const char* sourceText, const char*, int) const {
    const auto found = std::ranges::find_if(wordings, [&](const Wording& wording) {
        return wording.context == context && wording.english == sourceText;
    });
    return found == std::end(wordings) ? QString() : QString::fromUtf16(found->japanese);
}

} // namespace relvane::qt
