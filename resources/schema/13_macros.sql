-- The macro analysis: the actions of macros, and their arguments.

-- One row an action.
CREATE TABLE "T_RvMacro" (
    "objectNo" INTEGER,
    "ProcedureNo" INTEGER,      -- with LineNo: what ties the arguments to their action
    "ObjectName" TEXT,          -- the macro
    "ActionNo" INTEGER,         -- see RvMacroActions
    "LineNo" INTEGER,
    "ProcName" TEXT,            -- member of a macro group
    "Procedure" TEXT,           -- the action as a source line
    "Tekiyou" TEXT,             -- comment
    "AcWhere" TEXT,             -- condition
    "Midasi" INTEGER            -- option of the run
) STRICT;

-- One row an argument.
CREATE TABLE "T_RvMacro2" (
    "ProcedureNo" INTEGER,
    "LineNo" INTEGER,
    "Hikisu" TEXT,              -- the argument
    "ActionNo" INTEGER,
    "HikiNo" INTEGER            -- from 1 within the action
) STRICT;

-- The words for the numbers of actions.
CREATE TABLE "RvMacroActions" (
    "ActionNo" INTEGER NOT NULL PRIMARY KEY,
    "ActionName" TEXT NOT NULL
) STRICT;
INSERT INTO "RvMacroActions" VALUES
    (1, 'SQLの実行'),
    (2, 'アプリケーションの実行'),
    (3, 'イベントのキャンセル'),
    (4, 'エコー'),
    (5, 'オブジェクトのコピー'),
    (6, 'オブジェクトの再描画'),
    (7, 'オブジェクトの削除'),
    (8, 'オブジェクトの選択'),
    (9, 'オブジェクトの送信'),
    (10, 'オブジェクトの保存'),
    (11, 'キー送信'),
    (12, 'クエリーを開く'),
    (13, 'コマンドの実行'),
    (14, 'コントロールの移動'),
    (15, 'サイズ変更'),
    (16, 'ツールバーの表示'),
    (17, 'データベース変換'),
    (18, 'テーブルを開く'),
    (19, 'テキスト変換'),
    (20, 'フィルタの実行'),
    (21, 'フォームを開く'),
    (22, 'プロシージャの実行'),
    (23, 'ページの移動'),
    (24, 'マクロの実行'),
    (25, 'マクロの中止'),
    (26, 'メッセージの設定'),
    (27, 'メッセージボックス'),
    (28, 'メニュー項目の設定'),
    (29, 'メニューの追加'),
    (30, 'モジュールを開く'),
    (31, 'レコードの移動'),
    (32, 'レコードの検索'),
    (33, 'レポートを開く'),
    (34, 'ワークシート変換'),
    (35, '印刷'),
    (36, '警告音'),
    (37, '元のサイズに戻す'),
    (38, '砂時計ポインタの表示'),
    (39, '再クエリー'),
    (40, '最小化'),
    (41, '最大化'),
    (42, '次のレコードの検索'),
    (43, '終了'),
    (44, '出力'),
    (45, '全マクロの中止'),
    (46, '全レコードの表示'),
    (47, '値の代入'),
    (48, '閉じる'),
    (49, '名前の変更'),
    (51, 'ストアドプロシージャを開く'),
    (54, 'ビューを開く'),
    (98, 'ダイアグラムを開く'),
    (99, 'その他');

CREATE VIEW "QE_RvMacro" AS
SELECT
    "macro"."ObjectName" AS "オブジェクト名",
    "macro"."ProcName" AS "マクロ名",
    "macro"."AcWhere" AS "条件式",
    "action"."ActionName" AS "アクション",
    "macro"."Tekiyou" AS "説明"
FROM "T_RvMacro" AS "macro"
LEFT JOIN "RvMacroActions" AS "action" ON "action"."ActionNo" = "macro"."ActionNo"
ORDER BY "macro"."objectNo", "macro"."ProcedureNo", "macro"."LineNo";
