// A small database with every kind of module and macro, whole, hidden and damaged.
#pragma once

#include <filesystem>

namespace relvane::test {

// Forms 受注 (with code), Item (without), 壊れた画面 (its text is cut off). Report 請求書 (with code). Modules basMain, a
// class clsItem with properties, 途中, 行方不明 and 空 (cut off, not in the project, not stored), and
// 変換するﾏｸﾛ : 印刷, kept from an earlier conversion. Macros 印刷, a group, Startup, which is hidden, and 壊れたﾏｸﾛ, which is cut
// off. Written once.
const std::filesystem::path& codeDatabase();

} // namespace relvane::test
