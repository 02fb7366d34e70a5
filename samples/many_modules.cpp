#include "sample_builder/many_modules.h"

#include <array>
#include <fstream>
#include <stdexcept>

#include "sample_builder/column_value.h"

namespace relvane::samples {

namespace {

constexpr int declarationLines = 10, headAndEnd = 4;

Text number(int value) {
    return fromUtf8(std::to_string(value));
}

// "#" in a line stands for a number that differs from statement to statement.
struct Statement {
    std::array<const char16_t*, 3> lines;
};

constexpr Statement statements[] = {
    {{u"    Dim strName# As String, lngCount# As Long"}},
    {{u"    ' 単価と数量から金額を求める(#)"}},
    {{u"    lngTotal = lngTotal + Nz(rst!数量, 0) * #"}},
    {{u"    Call 記録する(\"処理#\", lngTotal)"}},
    {{u"    If lngTotal > # Then", u"        lngTotal = 0 ' 最初から", u"    End If"}},
    {{u""}},
    {{u"    strText = \"受注番号 \" & # & \" を \" & _", u"        \"処理しました。\""}},
    {{u"    For i = 1 To #", u"        計算結果 = 計算結果 + i", u"    Next i"}},
    {{u"    DoCmd.OpenForm \"受注入力\", acNormal, , \"受注番号=#\""}},
    {{u"    Set rst = CurrentDb.OpenRecordset(\"SELECT * FROM 受注 WHERE 番号=#\")"}},
    {{u"    Select Case 区分", u"    Case #: lngTotal = lngTotal + 1", u"    End Select"}},
    {{u"    MsgBox \"処理件数は \" & lngTotal & \" 件です。\", vbInformation, \"#\""}},
    {{u"    Rem 古い処理 #"}},
    {{u"    With rst", u"        .Fields(#).Value = lngTotal: .Update", u"    End With"}},
};

// Writes the lines of one module; all the counts are kept exactly.
class SourceWriter {
public:
    SourceWriter(int module, bool isClass) : module_(module), isClass_(isClass) {}

    Text write(int lines, int procedures) {
        declarations();
        const int left = lines - declarationLines;
        for (int i = 0; i < procedures; ++i) {
            procedure(i, left / procedures + (i < left % procedures ? 1 : 0));
        }
        for (int i = 0; procedures == 0 && i < left; ++i) {
            add(u"' 注 " + number(i));
        }
        return std::move(source_);
    }

private:
    void add(const Text& line) { source_.append(line).append(u"\r\n"); }

    void declarations() {
        add(u"Option Compare Database");
        add(u"Option Explicit");
        add(u"");
        add(u"' 受注処理 " + number(module_));
        add(u"Private Const 最大件数 As Long = " + number(1000 + module_));
        add(u"Private lngTotal As Long, 計算結果 As Double, 区分 As Integer");
        add(u"Private rst As Recordset, strText As String");
        add(u"Private Declare Function GetTickCount Lib \"kernel32\" () As Long");
        add(u"Private Declare Sub Sleep Lib \"kernel32\" _");
        add(u"    (ByVal dwMilliseconds As Long)");
    }

    // A blank line and a comment, the header, the statements, the end.
    void procedure(int index, int lines) {
        struct Kind {
            const char16_t *header, *arguments, *end;
        };
        static constexpr Kind kinds[] = {
            {u"Public Sub 処理", u"(ByVal lngKey As Long, Optional varText As Variant)", u"End Sub"},
            {u"Public Function 計算", u"(ByVal lngKey As Long) As Long", u"End Function"}};
        static constexpr Kind properties[] = {
            {u"Public Property Get 値", u"() As Long", u"End Property"},
            {u"Public Property Let 値", u"(ByVal lngNew As Long)", u"End Property"}};
        const Kind& kind = (isClass_ ? properties : kinds)[index % 2];
        const int named = isClass_ ? index / 2 : index; // both properties of a pair have one name
        add(u"");
        add(u"' 手続き " + number(index) + u" の説明");
        add(kind.header + number(module_) + u"_" + number(named) + kind.arguments);
        statementsOf(lines - headAndEnd);
        add(kind.end);
    }

    void statementsOf(int lines) {
        constexpr std::size_t blank = 5;
        while (lines > 0) {
            const Statement* next = &statements[static_cast<std::size_t>(number_++) % std::size(statements)];
            int length = 0;
            for (const char16_t* line : next->lines) {
                length += line == nullptr ? 0 : 1;
            }
            if (length > lines) {
                next = &statements[blank];
                length = 1;
            }
            for (int i = 0; i < length; ++i) {
                addNumbered(next->lines[static_cast<std::size_t>(i)]);
            }
            lines -= length;
        }
    }

    void addNumbered(TextView line) {
        Text numbered;
        for (const char16_t unit : line) {
            numbered += unit == u'#' ? number(number_) : Text(1, unit);
        }
        add(numbered);
    }

    int module_;
    bool isClass_;
    int number_ = 0;
    Text source_;
};

int share(int all, int parts, int index) {
    return all / parts + (index < all % parts ? 1 : 0);
}

} // namespace

DatabaseSpec manyModules(int modules, int lines, int procedures) {
    constexpr int leastOfAProcedure = 8;
    DatabaseSpec spec;
    for (int i = 0; i < modules; ++i) {
        const int linesOfIt = share(lines, modules, i), proceduresOfIt = share(procedures, modules, i);
        if (linesOfIt < declarationLines + proceduresOfIt * leastOfAProcedure) {
            throw std::invalid_argument("too few lines for so many modules and procedures");
        }
        const bool isClass = i % 4 == 3;
        DocumentSpec& module = spec.modules.emplace_back();
        module.name = (isClass ? u"cls部品" : u"mod処理") + number(i + 1);
        module.module = ModuleSpec{.source = SourceWriter(i + 1, isClass).write(linesOfIt, proceduresOfIt),
                                   .isClass = isClass};
    }
    return spec;
}

void exportModules(const DatabaseSpec& spec, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const DocumentSpec& document : spec.modules) {
        const ModuleSpec module = document.module.value_or(ModuleSpec());
        const auto path = folder / (toUtf8(document.name) + (module.isClass ? ".cls" : ".bas"));
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out << encodeText(u"Attribute VB_Name = \"" + document.name + u"\"\r\n" + module.source,
                          spec.codePage);
        out.close();
        if (!out) {
            throw std::runtime_error("cannot write " + path.string());
        }
    }
}

} // namespace relvane::samples
