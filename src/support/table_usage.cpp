#include "support/table_usage.h"

#include "core/error_report.h"
#include "core/text_functions.h"
#include "core/vocabulary.h"
#include "objects/design_walk.h"
#include "objects/object_text.h"
#include "output/report_show.h"
#include "support/support_run.h"

namespace relvane {
namespace {

constexpr std::int64_t nameLength = 150;

// What becomes of an error. Nobody takes care of one until the SQL of a first query is read, which has to go on behind a
// query that does not tell it; the walk stays in the state that the last such reading left.
enum class Errors {
    Unhandled, // ends the program
    Skipped,   // behind a query that told its SQL: the next statement runs
    Reported,  // behind one with ambiguous outer joins
};

struct DesignUsage {
    const DesignKind& kind;
    TextView message, word;
};

const DesignUsage designUsages[] = {
    {formKind, u"テーブル参照情報(フォーム検索中...)", u"フォーム"},
    {reportKind, u"テーブル参照情報(レポート検索中...)", u"レポート"},
};

// The property of a control that can name a table. Whatever the control, its SourceObject is asked for first.
struct SourceProperty {
    TextView kind, property, label;
};

constexpr SourceProperty sourceProperties[] = {
    {u"Subform", u"SourceObject", u"ｿｰｽｵﾌﾞｼﾞｪｸﾄ"},
    {u"ComboBox", u"RowSource", u"値集合ｿｰｽ"},
    {u"ListBox", u"RowSource", u"値集合ｿｰｽ"},
};

const SourceProperty* sourceOf(TextView kind) {
    for (const SourceProperty& source : sourceProperties) {
        if (source.kind == kind) {
            return &source;
        }
    }
    return nullptr;
}

class TableUsage {
public:
    explicit TableUsage(FrmSien& sien) : sien_(sien), context_(sien.context) {}

    void run() {
        context_.WorkDb = context_.platform.openWorkStore(context_.WorkDbPath);
        context_.WorkRs1 = context_.WorkDb->OpenRecordset(u"T_RvLinkObject");
        beginRun(sien_);
        showMessage(sien_.gauge, u"テーブル参照情報(クエリ検索中...)");
        context_.WorkDb->Execute(u"delete * from T_RvLinkObject;");
        table_ = sien_.cboTable.Text();
        readQueries();
        for (const DesignUsage& usage : designUsages) {
            showMessage(sien_.gauge, usage.message);
            step([&] { readDesigns(usage); });
        }
        step([&] { need(context_.WorkRs1).Close(); });
        endRun(sien_);
        ShowReport(context_, u"R_RvLinkTable", previewMode);
    }

    bool reportsErrors() const { return errors_ == Errors::Reported; }

private:
    void step(const std::function<void()>& statement) {
        if (errors_ == Errors::Skipped) {
            skipErrors(statement);
        } else {
            statement();
        }
    }

    // A test that fails lets the statement behind it run, as one that holds does.
    bool passes(const std::function<bool()>& test) {
        bool passed = true;
        step([&] { passed = test(); });
        return passed;
    }

    void readQueries() {
        for (const auto& query : need(context_.TargetDb).QueryDefs()) {
            context_.CurQueryDef = query.get();
            readQuery(*query);
        }
    }

    void readQuery(dao::QueryDef& query) {
        step([&] { queryType_ = GetQueryTypeName(toText(static_cast<long long>(query.Type()))); });
        step([&] { objectName_ = query.Name(); });
        if (queryType_ == systemQueryWord || objectName_.starts_with(u"~sq_")) {
            return;
        }
        count();
        errors_ = Errors::Skipped;
        const int error = skipErrors([&] { text_ = query.SQL(); });
        if (error == static_cast<int>(ErrorNumber::AmbiguousOuterJoins)) {
            errors_ = Errors::Reported;
        } else {
            addRowOnMatch(u"クエリ", queryType_, {});
        }
    }

    void readDesigns(const DesignUsage& usage) {
        context_.CurContainer = &need(context_.TargetDb).Containers().Item(usage.kind.container);
        for (const auto& document : context_.CurContainer->Documents()) {
            context_.CurDocument = document.get();
            readDesign(usage, document->Name());
        }
    }

    // One that cannot be opened is counted all the same, if the walk goes on.
    void readDesign(const DesignUsage& usage, const Text& name) {
        objectName_ = cutText(name, nameLength);
        bool isOpen = false;
        step([&] {
            withDesign(context_, usage.kind, name, [&] {
                isOpen = true;
                count();
                readOpenDesign(usage);
            });
        });
        if (!isOpen) {
            count();
        }
    }

    void readOpenDesign(const DesignUsage& usage) {
        const access::Designed& design = need(context_.CurDesign);
        step([&] { text_ = toText(design(u"RecordSource")); });
        addRowOnMatch(usage.word, {}, u"ﾚｺｰﾄﾞｿｰｽ");
        for (const auto& control : design.Controls()) {
            readControl(usage, *control);
        }
    }

    void readControl(const DesignUsage& usage, const access::Control& control) {
        const Text kind = GetControlTypeName(toText(static_cast<long long>(control.ControlType())));
        const SourceProperty* source = sourceOf(kind);
        if (source != nullptr && passes([&] { return isNotEmptyText(control(u"SourceObject")); })) {
            step([&] { text_ = toText(control(source->property)); });
            addRowOnMatch(usage.word, cutText(control.Name(), nameLength), source->label);
        }
    }

    void count() {
        step([&] { increment(context_.ObjectNo); });
    }

    // What is empty is not written.
    void addRowOnMatch(TextView word, const Text& controlName, TextView property) {
        if (InStr(text_, table_) == 0) {
            return;
        }
        const std::pair<TextView, Value> fields[] = {
            {u"objectNo", std::int64_t{context_.ObjectNo}},
            {u"ObjectName", objectName_},
            {u"Bunrui", Text(word)},
            {u"ControlName", controlName},
            {u"PropertyName", Text(property)},
            {u"MotoName", table_},
        };
        Recordset& row = need(context_.WorkRs1);
        step([&] { row.AddNew(); });
        for (const auto& field : fields) {
            if (!isEmptyText(field.second)) {
                step([&] { row.Collect(field.first, field.second); });
            }
        }
        step([&] { row.Update(); });
    }

    FrmSien& sien_;
    AnalysisContext& context_;
    Errors errors_ = Errors::Unhandled;
    Text table_;
    // Of the object in hand. A reading that fails leaves what was read before.
    Text objectName_, queryType_;
    Text text_; // in which the name is looked for
};

} // namespace

void cmdLinkTable_Click(FrmSien& sien) {
    TableUsage usage(sien);
    try {
        usage.run();
    } catch (const RunTimeError& error) {
        if (!usage.reportsErrors()) {
            throw;
        }
        reportError(sien.context, places::tableUsage, error, sien);
    }
}

} // namespace relvane
