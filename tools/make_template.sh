#!/bin/sh
# Makes resources/Template.xls, the workbook that the lists are written into: a sheet a list, with its heading rows.
# It is kept in the repository, so that a build needs no spreadsheet program. Run this after a change of the tables
# below (needs libreoffice-calc), look at the sheets, and commit both.
set -eu
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# One line a column: its heading, its width in centimetres, and the style of its cells.
columns_of() {
    case $1 in
        Object) cat <<'COLUMNS' ;;
分類 2.4 text
ﾃｰﾌﾞﾙの種類 3.0 text
オブジェクト名 6.6 text
説明 8.0 text
更新日 3.5 date
作成日 3.5 date
COLUMNS
        Table) cat <<'COLUMNS' ;;
テーブル名 5.6 text
フィールド名 5.6 text
主キー 1.9 mark
属性 3.6 text
サイズ 2.0 number
説明 8.3 text
COLUMNS
        Query) cat <<'COLUMNS' ;;
クエリー名 5.6 text
ｸｴﾘｰの種類 3.4 text
フィールド名 5.6 text
属性 3.4 text
サイズ 2.0 number
説明 7.0 text
COLUMNS
    esac
}

widths() {
    for sheet in Object Table Query; do columns_of $sheet; done | cut -d' ' -f2 | sort -u | while read -r width; do
        echo "<style:style style:name=\"w$width\" style:family=\"table-column\"><style:table-column-properties style:column-width=\"${width}cm\"/></style:style>"
    done
}

sheet() { # NAME TITLE
    echo "<table:table table:name=\"$1\" table:style-name=\"sheet\">"
    columns_of "$1" | while read -r _ width style; do
        echo "<table:table-column table:style-name=\"w$width\" table:default-cell-style-name=\"$style\"/>"
    done
    echo "<table:table-header-rows>"
    echo "<table:table-row table:style-name=\"high\"><table:table-cell table:style-name=\"title\" table:number-columns-spanned=\"6\" office:value-type=\"string\"><text:p>$2</text:p></table:table-cell></table:table-row>"
    echo "<table:table-row table:style-name=\"low\"><table:table-cell table:style-name=\"rule\" table:number-columns-repeated=\"6\"/></table:table-row>"
    echo "<table:table-row table:style-name=\"middle\">"
    columns_of "$1" | while read -r heading _ _; do
        echo "<table:table-cell table:style-name=\"heading\" office:value-type=\"string\"><text:p>$heading</text:p></table:table-cell>"
    done
    echo "</table:table-row></table:table-header-rows>"
    # Every cell below is of its column's style: then the file keeps it once a column.
    echo "<table:table-row table:number-rows-repeated=\"65533\"><table:table-cell table:number-columns-repeated=\"6\"/></table:table-row>"
    echo "</table:table>"
}

frozen() { # NAME: the heading rows stay when one scrolls
    cat <<XML
<config:config-item-map-entry config:name="$1">
<config:config-item config:name="CursorPositionX" config:type="int">0</config:config-item>
<config:config-item config:name="CursorPositionY" config:type="int">3</config:config-item>
<config:config-item config:name="VerticalSplitMode" config:type="short">2</config:config-item>
<config:config-item config:name="VerticalSplitPosition" config:type="int">3</config:config-item>
<config:config-item config:name="ActiveSplitRange" config:type="short">2</config:config-item>
<config:config-item config:name="PositionTop" config:type="int">0</config:config-item>
<config:config-item config:name="PositionBottom" config:type="int">3</config:config-item>
</config:config-item-map-entry>
XML
}

cat >"$work/Template.fods" <<XML
<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
    xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0"
    xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
    xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
    xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
    xmlns:number="urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0"
    xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0"
    xmlns:config="urn:oasis:names:tc:opendocument:xmlns:config:1.0"
    office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
<office:settings>
<config:config-item-set config:name="ooo:view-settings" xmlns:ooo="http://openoffice.org/2004/office">
<config:config-item-map-indexed config:name="Views"><config:config-item-map-entry>
<config:config-item config:name="ViewId" config:type="string">view1</config:config-item>
<config:config-item-map-named config:name="Tables">
$(frozen Object)
$(frozen Table)
$(frozen Query)
</config:config-item-map-named>
<config:config-item config:name="ActiveTable" config:type="string">Object</config:config-item>
</config:config-item-map-entry></config:config-item-map-indexed>
</config:config-item-set>
</office:settings>
<office:font-face-decls>
<style:font-face style:name="gothic" svg:font-family="'ＭＳ Ｐゴシック'" style:font-family-generic="swiss" style:font-pitch="variable"/>
</office:font-face-decls>
<office:styles>
<style:style style:name="Default" style:family="table-cell">
<style:paragraph-properties/>
<style:text-properties style:font-name="gothic" style:font-name-asian="gothic" fo:font-size="10pt" style:font-size-asian="10pt" fo:language="ja" fo:country="JP" style:language-asian="ja" style:country-asian="JP"/>
</style:style>
</office:styles>
<office:automatic-styles>
<number:date-style style:name="moment"><number:year number:style="long"/><number:text>/</number:text><number:month number:style="long"/><number:text>/</number:text><number:day number:style="long"/><number:text> </number:text><number:hours number:style="long"/><number:text>:</number:text><number:minutes number:style="long"/></number:date-style>
<style:style style:name="text" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties fo:wrap-option="wrap" style:vertical-align="top"/></style:style>
<style:style style:name="number" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties style:vertical-align="top" style:text-align-source="fix"/><style:paragraph-properties fo:text-align="end"/></style:style>
<style:style style:name="date" style:family="table-cell" style:parent-style-name="Default" style:data-style-name="moment"><style:table-cell-properties style:vertical-align="top" style:text-align-source="fix"/><style:paragraph-properties fo:text-align="center"/></style:style>
<style:style style:name="mark" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties style:vertical-align="top" style:text-align-source="fix"/><style:paragraph-properties fo:text-align="center"/></style:style>
<style:style style:name="title" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties style:vertical-align="middle"/><style:text-properties fo:font-size="16pt" style:font-size-asian="16pt" fo:font-weight="bold" style:font-weight-asian="bold" fo:color="#1f3864"/></style:style>
<style:style style:name="rule" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties fo:border-top="1.5pt solid #1f3864"/></style:style>
<style:style style:name="heading" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties fo:background-color="#1f3864" fo:border="0.5pt solid #808080" style:vertical-align="middle" style:text-align-source="fix"/><style:paragraph-properties fo:text-align="center"/><style:text-properties fo:color="#ffffff" fo:font-weight="bold" style:font-weight-asian="bold"/></style:style>
<style:style style:name="high" style:family="table-row"><style:table-row-properties style:row-height="0.95cm" style:use-optimal-row-height="false"/></style:style>
<style:style style:name="low" style:family="table-row"><style:table-row-properties style:row-height="0.25cm" style:use-optimal-row-height="false"/></style:style>
<style:style style:name="middle" style:family="table-row"><style:table-row-properties style:row-height="0.65cm" style:use-optimal-row-height="false"/></style:style>
<style:style style:name="sheet" style:family="table" style:master-page-name="Default"><style:table-properties table:display="true"/></style:style>
$(widths)
<style:page-layout style:name="landscape">
<style:page-layout-properties fo:page-width="29.7cm" fo:page-height="21cm" style:print-orientation="landscape" fo:margin-top="1.5cm" fo:margin-bottom="1.2cm" fo:margin-left="1.2cm" fo:margin-right="1.2cm" style:scale-to-X="1" style:scale-to-Y="0"/>
<style:header-style/>
<style:footer-style><style:header-footer-properties fo:min-height="0.6cm" fo:margin-top="0.3cm"/></style:footer-style>
</style:page-layout>
</office:automatic-styles>
<office:master-styles>
<style:master-page style:name="Default" style:page-layout-name="landscape">
<style:header style:display="false"/>
<style:footer><text:p><text:sheet-name>?</text:sheet-name>　<text:page-number>1</text:page-number> / <text:page-count>1</text:page-count></text:p></style:footer>
</style:master-page>
</office:master-styles>
<office:body><office:spreadsheet>
$(sheet Object オブジェクト一覧)
$(sheet Table テーブル一覧)
$(sheet Query クエリー一覧)
</office:spreadsheet></office:body>
</office:document>
XML
soffice "-env:UserInstallation=file://$work/settings" --headless --convert-to "xls:MS Excel 97" \
    --outdir resources "$work/Template.fods" >/dev/null
ls -l resources/Template.xls
