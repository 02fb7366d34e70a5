#include "system/shell_copy.h"

#include <filesystem>

#include "platform/native_path.h"

namespace relvane {

FileCopy shellCopy(Dialogs& dialogs, FileCopy copy) {
    return [&dialogs, copy = std::move(copy)](const Text& from, const Text& to) {
        std::error_code ignored;
        if (std::filesystem::exists(nativePath(to), ignored) &&
            dialogs.MsgBox(u"ファイルは既に存在します。上書きしますか？\r" + to, yesNo | exclamationIcon,
                           u"ファイルの上書きの確認") != boxYes) {
            return;
        }
        copy(from, to);
    };
}

} // namespace relvane
