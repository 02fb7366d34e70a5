#!/bin/sh
# The commands as a script uses them: files that appear, exit codes, what goes where.
set -u
cli=$1
samples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME="$work/home" XDG_DATA_HOME="$work/home/data"
failed=0

# check NAME EXPECTED_EXIT COMMAND...: runs it, its output into $work/out and $work/err.
check() {
    name=$1 expected=$2
    shift 2
    "$@" >"$work/out" 2>"$work/err" </dev/null
    code=$?
    if [ $code -ne "$expected" ]; then
        echo "FAILED: $name: exit $code, expected $expected"
        cat "$work/out" "$work/err"
        failed=1
    fi
}
holds() { grep -q -- "$2" "$1" || { echo "FAILED: $name: no \"$2\" in $(basename "$1")"; cat "$1"; failed=1; }; }

check "help" 0 "$cli" --help
holds "$work/out" "relvane-cli document TARGET"
check "version" 0 "$cli" --version
check "no command" 2 "$cli"
check "unknown command" 2 "$cli" dance
check "unknown option" 2 "$cli" document a.mdb --dance
check "target missing on the line" 2 "$cli" document

cp "$samples/juchu.mdb" "$work/受注 97.mdb"
before=$(sha256sum <"$work/受注 97.mdb")
check "document" 0 "$cli" document "$work/受注 97.mdb" --without-links --out "$work/folder"
for report in R_RvHyousi R_RvHyousiH R_RvHyousiW R_RvObjectAll R_RvTblTable R_RvTblIndex R_RvQeryAll R_RvQerySql R_RvFile \
    R_RvProcName R_RvProcName50 R_RvModule R_RvModule50 R_RvModule2 R_RvModule250 R_RvModStep R_RvComment R_RvMacro \
    R_RvLinkTable R_RvLinkObject R_RvLinkProc R_RvHensuU R_RvHensuT R_RvHensuH R_RvTextTeigi; do
    [ -s "$work/folder/$report.pdf" ] || { echo "FAILED: no $report.pdf"; failed=1; }
done
if command -v pdftotext >/dev/null; then
    pdftotext "$work/folder/R_RvLinkTable.pdf" "$work/usage.txt"
    for table in 受注明細 得意先; do
        grep -q "$table" "$work/usage.txt" || { echo "FAILED: the usage of $table is not in the volume"; failed=1; }
    done
    pdftotext "$work/folder/R_RvLinkObject.pdf" "$work/references.txt"
    for kind in フォーム レポート; do
        grep -q "オブジェクト参照元一覧($kind)" "$work/references.txt" || { echo "FAILED: no references of $kind"; failed=1; }
    done
fi
check "document with a relative path" 0 sh -c 'cd "$1" && "$2" document "受注 97.mdb" --without-links --quiet --out here' - "$work" "$cli"
[ -s "$work/here/R_RvObjectAll.pdf" ] || { echo "FAILED: no folder beside a relative target"; failed=1; }

check "links that lead nowhere are told, and the other tables are printed" 1 "$cli" document "$work/受注 97.mdb" --out "$work/broken"
holds "$work/err" "場所:テーブル情報ｴﾗｰNo:3170"
holds "$work/err" "once more, without linked tables"
[ -s "$work/broken/R_RvTblTable.pdf" ] || { echo "FAILED: no list of the tables that are there"; failed=1; }

check "document with a title" 0 "$cli" document "$work/受注 97.mdb" --without-links --title 受注管理第2版 --quiet --out "$work/titled"
if command -v pdftotext >/dev/null; then
    pdftotext "$work/titled/R_RvObjectAll.pdf" - | grep -q 受注管理第2版 || { echo "FAILED: the title is not printed"; failed=1; }
fi

# What goes beside the paper, and what is chosen.
here=$(pwd)
cd "$work" || exit 1
check "exports alone" 0 "$cli" document "受注 97.mdb" --without-links --formats csv,text --quiet --out files
cd "$here" || exit 1
[ "$(ls "$work/files")" = "$(printf '%s\n' RvForm.csv RvMacro.csv RvModule.txt RvObject.csv RvQuery.csv RvQuerySql.txt RvReport.csv RvTable.csv)" ] ||
    { echo "FAILED: not the files of csv and text:"; ls "$work/files"; failed=1; }
for file in RvForm.csv RvModule.txt; do
    cmp -s "$work/files/$file" "$work/folder/$file" || { echo "FAILED: $file differs from that of a whole folder"; failed=1; }
done
iconv -f CP932 -t UTF-8 "$work/files/RvTable.csv" | head -n 1 | grep -q '^テーブル名,フィールド名,主キー,属性,サイズ,説明' ||
    { echo "FAILED: no heading line in code page 932"; failed=1; }
check "a format that is none" 2 "$cli" document "$work/受注 97.mdb" --formats csv,html
holds "$work/err" "pdf, csv, text, xls"
printf 'OBJECT=1\r\nQUERY=1\r\nFORM=9\r\nmquery=1\r\n' >"$work/p.apt"
check "a pattern" 0 "$cli" document "$work/受注 97.mdb" --pattern "$work/p.apt" --out "$work/chosen"
[ "$(ls "$work/chosen")" = "$(printf '%s\n' R_RvObjectAll.pdf R_RvQerySql.pdf RvObject.csv RvQuery.csv RvQuerySql.txt)" ] ||
    { echo "FAILED: not what the pattern chooses:"; ls "$work/chosen"; failed=1; }
holds "$work/err" "「一括処理」を終了しました。"
check "a pattern that is not there" 1 "$cli" document "$work/受注 97.mdb" --pattern "$work/none.apt" --out "$work/chosen2"
printf 'TABLE=x\r\n' >"$work/bad.apt"
check "a pattern that cannot be read" 1 "$cli" document "$work/受注 97.mdb" --pattern "$work/bad.apt" --out "$work/chosen2"

check "target that is not there" 1 "$cli" document "$work/none.mdb" --out "$work/folder2"
holds "$work/err" "場所:選択"
printf 'no database' >"$work/text.mdb"
check "target that is no database" 1 "$cli" document "$work/text.mdb" --out "$work/folder2"
holds "$work/err" "3343"
: >"$work/empty.mdb"
check "empty file" 1 "$cli" document "$work/empty.mdb" --out "$work/folder2"
head -c 20000 "$work/受注 97.mdb" >"$work/cut.mdb"
check "file cut off" 1 "$cli" document "$work/cut.mdb" --out "$work/folder2"

check "save" 0 "$cli" save "$work/受注 97.mdb" "$work/first.ADB" --without-links
holds "$work/out" "$work/first.adb"
holds "$work/err" "保存終了しました。"
[ -s "$work/first.adb" ] || { echo "FAILED: no analysis file"; failed=1; }
check "save over a file asks, and takes the answer that is offered" 0 "$cli" save "$work/受注 97.mdb" "$work/first.adb" --without-links
holds "$work/err" "ファイルは既に存在します。上書きしますか？"
check "save tells links that lead nowhere, and keeps the rest" 1 "$cli" save "$work/受注 97.mdb" "$work/broken.adb"
holds "$work/err" "once more, without linked tables"
[ -s "$work/broken.adb" ] || { echo "FAILED: no analysis file without linked tables"; failed=1; }
check "save into a folder that is not there" 1 "$cli" save "$work/受注 97.mdb" "$work/none/first.adb" --without-links --quiet
holds "$work/err" "場所:保存ｴﾗｰNo:76"
check "save under another extension" 2 "$cli" save "$work/受注 97.mdb" "$work/first.txt"
cp "$samples/juchu.mdb" "$work/target.adb"
check "save onto the target" 1 "$cli" save "$work/target.adb" "$work/target.adb" --without-links --quiet
holds "$work/err" "場所:保存ｴﾗｰNo:70"
cmp -s "$work/target.adb" "$samples/juchu.mdb" || { echo "FAILED: the target was written"; failed=1; }
check "refused by hand" 0 "$cli" press "$work/受注 97.mdb" m1b "file=$work/text.adb" --quiet
cp "$work/text.adb" "$work/kept.adb"
check "refused by hand" 0 "$cli" press "$work/受注 97.mdb" cmdObject m1b "file=$work/text.adb" answer=no --quiet
cmp -s "$work/text.adb" "$work/kept.adb" || { echo "FAILED: a refused file was replaced"; failed=1; }

check "compare" 0 "$cli" compare "$work/受注 97.mdb" "$work/first.adb" --out "$work/compared"
[ -s "$work/compared/R_RvObjectUpdate.pdf" ] || { echo "FAILED: no report of the comparison"; failed=1; }
check "document with a comparison" 0 "$cli" document "$work/受注 97.mdb" --without-links --compare "$work/first.adb" --quiet --out "$work/changes"
[ -s "$work/changes/R_RvObjectUpdate.pdf" ] || { echo "FAILED: no comparison among the documents"; failed=1; }
check "compare with what is no analysis file" 1 "$cli" compare "$work/受注 97.mdb" "$work/受注 97.mdb" --out "$work/compared"
holds "$work/err" "場所:オブジェクト比較ｴﾗｰNo:3343"
check "compare without a file" 2 "$cli" compare "$work/受注 97.mdb"

check "press" 0 "$cli" press "$work/受注 97.mdb" optObject=1 cmdObject
check "report of what was pressed" 0 "$cli" report R_RvObjectAll --pdf "$work/objects.pdf"
[ -s "$work/objects.pdf" ] || { echo "FAILED: no objects.pdf"; failed=1; }
check "report that is not there" 1 "$cli" report R_None --pdf "$work/none.pdf"
check "disabled control" 1 "$cli" press "$work/受注 97.mdb" cmdOPre
holds "$work/err" "cmdOPre"
check "unknown control" 2 "$cli" press "$work/受注 97.mdb" cmdNothing
check "unknown value" 2 "$cli" press "$work/受注 97.mdb" optObject=8
check "an answer that no box has" 2 "$cli" press "$work/受注 97.mdb" cmdObject answer=maybe
holds "$work/err" "retry, cancel"
check "unused answer" 2 "$cli" press "$work/受注 97.mdb" cmdObject "file=$work/x"
check "another window" 0 "$cli" press "$work/受注 97.mdb" m8 frmSetUp.chkSetUp=1 frmSetUp.txtNini=受注 frmSetUp.cmdOK
check "window that is not open" 1 "$cli" press "$work/受注 97.mdb" frmSetUp.cmdOK
check "the end" 0 "$cli" press "$work/受注 97.mdb" m1z

# A folder that another version of the program filled gets this program's work database; the user's files stay.
check "first use of a folder" 0 "$cli" press "$work/受注 97.mdb" cmdObject --program-folder "$work/program" --quiet
echo "Title=mine" >"$work/program/Relvane.dat"
echo "of another version" >"$work/program/Relvane.originals"
printf 'no work database any more' >"$work/program/Relvane.mdb"
check "first use after a change of the program" 0 "$cli" press "$work/受注 97.mdb" cmdObject --program-folder "$work/program" --quiet
grep -q "Title=mine" "$work/program/Relvane.dat" || { echo "FAILED: the user's settings are gone"; failed=1; }
printf 'no work database any more' >"$work/program/Relvane.mdb"
check "a damaged work database" 1 "$cli" press "$work/受注 97.mdb" cmdObject --program-folder "$work/program" --quiet
holds "$work/err" "場所:選択"

# Links: where their files lie is told on the line, and kept in the folder that the command works in.
mkdir "$work/data" "$work/alone"
cp "$samples/juchu.mdb" "$work/alone/juchu.mdb"
cp "$samples/zaiko.mdb" "$work/data/Zaiko.mdb"
check "a mapping of links" 0 "$cli" inspect "$work/alone/juchu.mdb" --map "D:=$work" --map "C:\\業務=$work/data"
mapped=$(grep -c '"error"' "$work/out")
check "the same without it" 0 "$cli" inspect "$work/alone/juchu.mdb"
unmapped=$(grep -c '"error"' "$work/out")
[ "$mapped" -lt "$unmapped" ] || { echo "FAILED: the mapping finds nothing: $mapped, $unmapped"; failed=1; }
[ ! -e "$XDG_DATA_HOME/relvane/Relvane.map" ] || { echo "FAILED: an inspection keeps a mapping"; failed=1; }
check "a mapping that is kept" 0 "$cli" press "$work/alone/juchu.mdb" cmdObject --map "C:\\業務=$work/data" --program-folder "$work/mapped" --quiet
grep -qF "C:\\業務=$work/data" "$work/mapped/Relvane.map" || { echo "FAILED: the mapping is not kept"; failed=1; }
check "what was kept counts" 0 "$cli" inspect "$work/alone/juchu.mdb" --program-folder "$work/mapped"
[ "$(grep -c '"error"' "$work/out")" -lt "$unmapped" ] || { echo "FAILED: Relvane.map is not read"; failed=1; }
check "links to what is no file" 1 "$cli" press "$work/alone/juchu.mdb" optFile=2 cmdFile --program-folder "$work/mapped" --quiet
holds "$work/err" "場所:ファイル一覧ｴﾗｰNo:53"
echo "no mapping" >>"$work/mapped/Relvane.map"
check "a line that cannot be read" 0 "$cli" press "$work/alone/juchu.mdb" cmdFile --program-folder "$work/mapped" --quiet
holds "$work/err" 'Relvane.map, line 5: "no mapping" is not PREFIX=DIR'
check "a mapping that is none" 2 "$cli" document "$work/alone/juchu.mdb" --map "C:"
holds "$work/err" "is not PREFIX=DIR"
check "a mapping into a folder that is not there" 2 "$cli" press "$work/alone/juchu.mdb" cmdFile --map "C:=$work/none"
holds "$work/err" "does not exist"
# A private copy has nothing to keep, but its user's own mappings count.
mkdir -p "$XDG_DATA_HOME/relvane"
echo "not a mapping of the user" >"$XDG_DATA_HOME/relvane/Relvane.map"
check "document reads the user's own mappings" 0 "$cli" document "$work/alone/juchu.mdb" --without-links --map "E:=$work" --out "$work/mapped2"
holds "$work/err" "not a mapping of the user"
if grep -q "E:" "$XDG_DATA_HOME/relvane/Relvane.map"; then echo "FAILED: a private copy keeps a mapping"; failed=1; fi
rm "$XDG_DATA_HOME/relvane/Relvane.map"

# Pictures of forms.
check "a picture" 0 "$cli" image "$work/受注 97.mdb" 受注入力 "$work/form.png"
check "a picture of the design" 0 "$cli" image "$work/受注 97.mdb" 受注入力 "$work/form.BMP" --design --quiet
[ "$(head -c 4 "$work/form.png" | tail -c 3)" = PNG ] || { echo "FAILED: form.png is no picture"; failed=1; }
[ "$(head -c 2 "$work/form.BMP")" = BM ] || { echo "FAILED: form.BMP is no bitmap"; failed=1; }
check "a picture of a form that is not there" 1 "$cli" image "$work/受注 97.mdb" 無い "$work/none.png"
holds "$work/err" "2102"
check "a picture of another kind" 2 "$cli" image "$work/受注 97.mdb" 受注入力 "$work/form.jpg"
check "a picture into a folder that is not there" 1 "$cli" image "$work/受注 97.mdb" 受注入力 "$work/none/form.png"
holds "$work/err" "76"
check "document with pictures" 0 "$cli" document "$work/受注 97.mdb" --without-links --formats csv --images --quiet --out "$work/pictured"
[ "$(ls "$work/pictured/images" | wc -l)" -ge 10 ] || { echo "FAILED: not a picture of every form"; ls "$work/pictured/images"; failed=1; }

# The same application as Access 2000 keeps it: the same files to the byte.
cp "$samples/juchu2000.mdb" "$work/受注 2000.mdb"
check "the same in a later format" 0 "$cli" document "$work/受注 2000.mdb" --without-links --formats csv --images --quiet --out "$work/later"
diff -r "$work/pictured" "$work/later" || { echo "FAILED: lists or pictures differ between the formats"; failed=1; }
check "a picture taken in the window" 0 "$cli" press "$work/受注 97.mdb" cboFmImage=受注入力 txtCapTime=1 cmdFmImage \
    frmCapture.m4 "file=$work/taken.bmp" frmCapture.m5 m1z --quiet
[ "$(head -c 2 "$work/taken.bmp")" = BM ] || { echo "FAILED: the viewer saved no bitmap"; failed=1; }

# The workbook needs LibreOffice; without it an export says so.
if [ -e "$(dirname "$cli")/../lib/relvane/spreadsheet.so" ]; then
    check "a workbook" 0 "$cli" document "$work/受注 97.mdb" --without-links --formats xls --quiet --out "$work/book"
    [ "$(ls "$work/book")" = "受注 97.xls" ] || { echo "FAILED: not one workbook:"; ls -A "$work/book"; failed=1; }
else
    check "a workbook without LibreOffice" 1 "$cli" document "$work/受注 97.mdb" --without-links --formats xls --quiet --out "$work/book"
    holds "$work/err" "エラーNO:429"
fi

# Passwords.
printf 'ﾋﾐﾂno97\r\nsecond line\n' >"$work/password.txt"
check "a target with a password, and none given" 1 "$cli" inspect "$samples/password.mdb"
holds "$work/err" "3031"
check "a password from a file" 0 "$cli" inspect "$samples/password.mdb" --password-file "$work/password.txt"
holds "$work/out" '"hasPassword": true'
grep -q 'ﾋﾐﾂno97' "$work/out" "$work/err" && { echo "FAILED: the password is printed"; failed=1; }
check "a folder of paper with a password" 0 "$cli" document "$samples/password.mdb" --password-file "$work/password.txt" --quiet --out "$work/locked"
[ -s "$work/locked/R_RvTblTable.pdf" ] || { echo "FAILED: no list of tables behind a password"; failed=1; }
grep -rq 'ﾋﾐﾂno97' "$work/locked" && { echo "FAILED: the password is in the folder of paper"; failed=1; }
printf 'wrong' >"$work/wrong.txt"
check "a wrong password" 1 "$cli" document "$samples/password.mdb" --password-file "$work/wrong.txt" --out "$work/locked"
holds "$work/err" "ｴﾗｰNo:3031"
grep -q 'wrong' "$work/err" && { echo "FAILED: the wrong password is told"; failed=1; }
check "a password that no target asks for" 0 "$cli" inspect "$samples/zaiko.mdb" --password-file "$work/password.txt"
check "a password file that is not there" 2 "$cli" inspect "$samples/password.mdb" --password-file "$work/none.txt"
check "a folder as password file" 2 "$cli" inspect "$samples/password.mdb" --password-file "$work"
printf '\377\376x' >"$work/no-utf8.txt"
check "a password that is not UTF-8" 2 "$cli" inspect "$samples/password.mdb" --password-file "$work/no-utf8.txt"

check "inspect" 0 "$cli" inspect "$work/受注 97.mdb"
holds "$work/out" "受注"
check "inspect what is no database" 1 "$cli" inspect "$work/text.mdb"

[ "$before" = "$(sha256sum <"$work/受注 97.mdb")" ] || { echo "FAILED: the target has changed"; failed=1; }
[ "$(ls "$work"/*.ldb 2>/dev/null)" = "" ] || { echo "FAILED: something was left beside the target"; failed=1; }
exit $failed
