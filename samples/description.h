// A database written down as text, in UTF-8, one statement a line: the source of the project's sample.
//
// A line is a row of words with blanks between them; indentation and empty lines mean nothing, "#" where a word could
// begin makes the rest a comment. A word that has blanks, or that could be taken for something else, stands in
// double quotes: "" in it is one quote, ↵ a line end, ␉ a tab (so with all pictures of control characters), and
// "ab"*100 is the text a hundred times.
//
// The first word says what the line is. An object begins with its line; what follows belongs to it.
//
//   database                             facts of the file; always the first
//     code-page 932    sort-order 0x0411    created DATE (of all objects without one)
//     access-version 07.53 | none    password TEXT    encoding-key NUMBER
//     property NAME TYPE VALUE          of the database      summary NAME VALUE    user-defined NAME TYPE VALUE
//   table NAME                          also: import-specs, import-columns, the tables of import specifications
//     column NAME TYPE [SIZE] [auto] [hyperlink] [variable] [fixed] [inline] [one-page] [chain]
//                             [ordinal N] [deleted]
//       and of the column: description TEXT, caption TEXT, default TEXT, required, zero-length, format TEXT,
//       input-mask TEXT, rule TEXT TEXT (condition and message), column-property NAME TYPE VALUE
//     index NAME [primary] [unique] [ignore-nulls] [required] COLUMN [descending] ...
//     row VALUE ...      moved-row VALUE ...      deleted-row
//     flags NUMBER (catalogue: 2 of Access, 0x80000000 of the engine)    row-count NUMBER (a stale one)
//     page-map bitmap|pages (which kind, whatever the size)
//   link NAME access|odbc|isam DATABASE CONNECT SOURCE-TABLE ["-" for none]
//     password-saved   exclusive
//   relation NAME PRIMARY-TABLE FOREIGN-TABLE [not-enforced] [one-to-one] [cascade-updates] [cascade-deletes]
//                                             [left-join] [right-join]
//     fields COLUMN-OF-PRIMARY COLUMN-OF-FOREIGN
//   query NAME select|crosstab|delete|update|append|make-table|definition|pass-through|union|embedded
//     parameter NAME TYPE    options [all-fields] [distinct] [owner-access] [distinctrow] [top N] [percent]
//     target TABLE [DATABASE [CONNECT]]    connect TEXT    sql TEXT    in DATABASE [CONNECT]
//     from TABLE [ALIAS]    from-query SQL ALIAS    union-part SQL
//     field EXPRESSION [as ALIAS] [into FIELD] [row-heading|column-heading|value|values]
//     join inner|left|right TABLE TABLE CONDITION    where CONDITION    having CONDITION
//     group EXPRESSION [row-heading|column-heading]    order EXPRESSION [descending]
//   form NAME    report NAME
//     the design, in the order in which it is stored; PROPERTY VALUE may repeat, and before or between them stand
//     "at LEFT TOP" and "size WIDTH HEIGHT", in twips:
//     set PROPERTY VALUE                  of the form itself
//     printer NAME DRIVER PORT [landscape] [margins LEFT TOP RIGHT BOTTOM] [columns N WIDTH HEIGHT [down]]
//     default TYPE PROPERTY VALUE         the default block of a type of control
//     BreakLevel EXPRESSION PROPERTY VALUE       a group level
//     TYPE NAME PROPERTY VALUE            a section (FormHeader, Section, BreakFooter ...) or a control in it
//     > TYPE NAME PROPERTY VALUE          a control in that one: a choice, a page; >> one in that, and so on
//     label CAPTION PROPERTY VALUE        a label attached to the control before, whose name it takes
//     with PROPERTY VALUE                 more of the object before
//     Flags are yes or no, data bitmap:WIDTHxHEIGHTxBITS (ground: the same, paler), metafile:WIDTHxHEIGHT,
//     palette:COLOURS, object:BYTES (an embedded one with a presentation of so many bytes) or hexadecimal bytes.
//
//   form NAME    report NAME    module NAME
//     code                                a form or report has a module; two Option lines, when no source follows
//     class    empty                      a class module; without a line
//     |SOURCE                             a line of the module, from behind the bar to its end as it stands
//     compiled BYTES    no-offset         what stands before the text; the directory does not know where it begins
//     not-stored | not-in-project | cut-off      what is damaged
//   macro NAME
//     [below N] [name NAME] [condition CONDITION] [comment TEXT] [action ACTION ARGUMENT ...]
//       a row, below N empty ones; the arguments as macro_actions.h has them, - for a blank one, yes and no, other
//       enumerations by number
//     no-version    lost N                as early files have it; bytes that are missing at the end
//
//   and of every object: description TEXT, property NAME TYPE VALUE, created DATE, updated DATE, hidden
//   (of a table its description stands before its columns, since a column has one too)
//
// TYPE is boolean, byte, integer, long, currency, single, double, date, binary, text, ole, memo or guid; SIZE is bytes.
// Values: yes and no, numbers, 1998-04-01 or 1998-04-01T09:30:00, hexadecimal bytes (also A0FF*100),
// {00112233-4455-6677-8899-AABBCCDDEEFF}, texts; - is Null.
#pragma once

#include <filesystem>
#include <string_view>

#include "sample_builder/database_spec.h"

namespace relvane::samples {

// Both throw std::invalid_argument that names the line.
DatabaseSpec parseDescription(std::string_view utf8);
DatabaseSpec readDescription(const std::filesystem::path& path);

} // namespace relvane::samples
