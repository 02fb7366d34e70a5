// The lists of forms and reports and the control counts on real files: what they leave in the work database against
// what an independent decoder read from the designs, and every sample walked through with every option.
#include <gtest/gtest.h>

#include "core/vocabulary.h"
#include "goldens.h"
#include "real_program.h"

namespace relvane {
namespace {

using test::Json;
using test::RealProgram;
using test::StoredRow;
using test::textOf;

Text numberText(long long number) {
    return toText(number);
}

// Twips as centimetres: to four places, then, halves up, to three. No length is a half of the fourth place.
Text measure(long long twips) {
    const long long fourPlaces = (twips * 10000 * 2 + 567) / (567 * 2);
    return toText(Value(static_cast<double>((fourPlaces + 5) / 10) / 1000)) + u"cm";
}

// One control as the decoder read it: what it has by default, and what is stored.
class GoldenControl {
public:
    GoldenControl(const Json& json, bool inGroup) : json_(json), inGroup_(inGroup) {}

    Text name() const { return textOf(json_.at("name")); }
    int type() const { return json_.at("controlType"); }
    bool inGroup() const { return inGroup_; }
    Text text(const char* property) const {
        const Json value = valueOf(property);
        return value.is_string() ? textOf(value)
               : value.is_null() ? Text()
                                 : numberText(value.get<long long>());
    }
    bool flag(const char* property) const { return valueOf(property).get<bool>(); }
    long long number(const char* property) const { return valueOf(property).get<long long>(); }
    bool has(const char* property) const { return !valueOf(property).is_null(); }

private:
    Json valueOf(const char* property) const {
        if (const Json& effective = json_.at("effective"); effective.contains(property)) {
            return effective.at(property);
        }
        for (const Json& stored : json_.at("properties")) {
            if (stored.at("name") == property) {
                return stored.value("value", Json());
            }
        }
        return {};
    }

    const Json& json_;
    bool inGroup_;
};

void collect(const Json& controls, bool inGroup, std::vector<GoldenControl>& all) {
    for (const Json& control : controls) {
        all.emplace_back(control, inGroup);
        if (control.contains("children")) {
            collect(control.at("children"), control.at("type") == "OptionGroup", all);
        }
    }
}

// Of the whole form or report, in the order of its sections.
std::vector<GoldenControl> controlsOf(const Json& design) {
    std::vector<GoldenControl> all;
    for (const Json& section : design.at("sections")) {
        collect(section.at("controls"), false, all);
    }
    return all;
}

enum TypeNumber {
    label = 100,
    rectangle = 101,
    line = 102,
    image = 103,
    commandButton = 104,
    optionButton = 105,
    checkBox = 106,
    optionGroup = 107,
    boundObjectFrame = 108,
    textBox = 109,
    listBox = 110,
    comboBox = 111,
    subform = 112,
    objectFrame = 114,
    pageBreak = 118,
    toggleButton = 122,
    tabControl = 123,
    page = 124,
};

// What a control should be listed with: its head, and its rows as group, label and text.
struct Listed {
    Text name, type, visible, measures;
    std::vector<std::array<Text, 3>> rows;
    bool operator==(const Listed&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Listed& listed) {
    out << toUtf8(listed.name + u" [" + listed.type + u"] " + listed.visible + u" " + listed.measures);
    for (const auto& [group, title, text] : listed.rows) {
        out << "\n    " << toUtf8(group + u" | " + title + u" | " + text);
    }
    return out;
}

const char* const controlEvents[] = {"BeforeUpdate", "AfterUpdate", "OnChange",    "OnNotInList", "OnUpdated",
                                     "OnEnter",      "OnExit",      "OnGotFocus",  "OnLostFocus", "OnClick",
                                     "OnDblClick",   "OnMouseDown", "OnMouseMove", "OnMouseUp",   "OnKeyDown",
                                     "OnKeyUp",      "OnKeyPress"};

bool isOneOf(int type, std::initializer_list<int> types) {
    return std::ranges::find(types, type) != types.end();
}

// The rows of one control, reasoned from what a reader of the list is to find.
class Expectation {
public:
    Expectation(const GoldenControl& control, bool ofForm, bool full)
        : control_(control), ofForm_(ofForm), full_(full), fullForm_(ofForm && full) {}

    Listed listed() {
        const Text word = GetControlTypeName(numberText(control_.type()));
        Text measures = measure(control_.number("Top")) + u"・" + measure(control_.number("Left"));
        if (control_.type() != pageBreak) {
            measures +=
                u"・" + measure(control_.number("Width")) + u"・" + measure(control_.number("Height"));
        }
        const bool visible = !control_.has("Visible") || control_.flag("Visible");
        describe();
        return {control_.name(), GetControlTypeLabel(word), visible ? u"True" : u"False", measures, rows_};
    }

private:
    Text text(const char* property) const { return control_.text(property); }
    static Text yesNo(bool yes) { return yes ? u"はい" : u"いいえ"; }

    void row(TextView group, TextView title, Text text) {
        rows_.push_back({Text(group), Text(title), std::move(text)});
    }
    void rowOf(TextView group, TextView title, const char* property) {
        if (!text(property).empty()) {
            row(group, title, text(property));
        }
    }
    void tabOrder() {
        if (control_.flag("TabStop")) {
            row(u"その他", u"ﾀﾌﾞｽﾄｯﾌﾟ・移動順", u"はい・" + text("TabIndex"));
        }
    }
    void lockRow(const char* property) {
        if (!control_.flag("Locked")) {
            row(u"ﾃﾞｰﾀ", u"規定値・編集ﾛｯｸ", text(property) + u"・いいえ");
        }
    }
    void validation() {
        if (!text("ValidationRule").empty()) {
            row(u"ﾃﾞｰﾀ", u"入力規則(ﾒｯｾｰｼﾞ)", text("ValidationRule") + u"(" + text("ValidationText") + u")");
        } else if (control_.type() == comboBox && control_.flag("LimitToList")) {
            row(u"ﾃﾞｰﾀ", u"入力ﾁｪｯｸ(ﾒｯｾｰｼﾞ)", u"はい(" + text("ValidationText") + u")");
        }
    }
    void events() {
        for (const char* event : controlEvents) {
            rowOf(u"ｲﾍﾞﾝﾄ", GetEventLabel(fromUtf8(event)), event);
        }
    }

    void describe() {
        switch (control_.type()) {
        case label:
        case page:
            return row(u"書式", u"標題", text("Caption"));
        case rectangle:
        case line:
            return row(u"書式", u"線種・線幅",
                       GetLineStyleName(text("BorderStyle")) + u"・" + text("BorderWidth"));
        case objectFrame:
            return row(u"書式", u"OLEｻｲｽﾞ・OLEｸﾗｽ",
                       GetSizeModeName(text("SizeMode")) + u"・" + text("OLEClass"));
        case tabControl:
            return ofForm_ ? row(u"その他", u"ﾀﾌﾞｽﾄｯﾌﾟ・移動順",
                                 yesNo(control_.flag("TabStop")) + u"・" + text("TabIndex"))
                           : row(u"", u"", u"");
        case pageBreak:
            return row(u"", u"", u"");
        case image:
            return describeImage();
        case subform:
            return describeSubform();
        case checkBox:
        case optionButton:
        case toggleButton:
        case commandButton:
            return control_.inGroup() ? describeMember() : describeButton();
        default:
            return describeBound();
        }
    }
    void describeImage() {
        picture();
        if (full_ && !text("Picture").empty()) {
            row(u"書式", u"OLEｻｲｽﾞ・配置",
                GetSizeModeName(text("SizeMode")) + u"・" + text("PictureAlignment"));
        }
        if (fullForm_) {
            events();
        }
    }
    void picture() {
        if (!text("Picture").empty()) {
            row(u"書式", u"ﾋﾟｸﾁｬ・ﾀｲﾌﾟ", text("Picture") + u"・" + GetOleTypeName(text("PictureType")));
        }
    }
    void describeSubform() {
        rowOf(u"ﾃﾞｰﾀ", u"ｿｰｽｵﾌﾞｼﾞｪｸﾄ", "SourceObject");
        if (full_) {
            rowOf(u"ﾃﾞｰﾀ", u"ﾘﾝｸ子ﾌｨｰﾙﾄﾞ", "LinkChildFields");
            rowOf(u"ﾃﾞｰﾀ", u"ﾘﾝｸ親ﾌｨｰﾙﾄﾞ", "LinkMasterFields");
        }
        if (fullForm_) {
            if (!control_.flag("Locked")) {
                row(u"ﾃﾞｰﾀ", u"編集ﾛｯｸ", u"いいえ");
            }
            tabOrder();
            events();
        }
    }
    void describeMember() {
        if (!control_.flag("Locked")) {
            ofForm_ ? row(u"ﾃﾞｰﾀ", u"ｵﾌﾟｼｮﾝ値・編集ﾛｯｸ", text("OptionValue") + u"・いいえ")
                    : row(u"ﾃﾞｰﾀ", u"ｵﾌﾟｼｮﾝ値", text("OptionValue"));
        }
        if (fullForm_) {
            rowOf(u"その他", u"ﾋﾝﾄﾃｷｽﾄ", "ControlTipText");
        }
    }
    void describeButton() {
        const bool isCommand = control_.type() == commandButton;
        if (!isCommand) {
            rowOf(u"ﾃﾞｰﾀ", u"ｺﾝﾄﾛｰﾙｿｰｽ", "ControlSource");
            if (fullForm_) {
                lockRow("DefaultValue");
                validation();
            }
        }
        if (isCommand || (control_.type() == toggleButton && full_)) {
            rowOf(u"書式", u"標題", "Caption");
        }
        if (full_ && isOneOf(control_.type(), {commandButton, toggleButton})) {
            picture();
        }
        if (fullForm_) {
            tabOrder();
            rowOf(u"その他", u"ﾋﾝﾄﾃｷｽﾄ", "ControlTipText");
            events();
        }
    }
    void describeBound() {
        const bool isEdited = isOneOf(control_.type(), {comboBox, textBox});
        if (ofForm_ && text("ControlSource").empty()) {
            row(u"ﾃﾞｰﾀ", u"ｺﾝﾄﾛｰﾙｿｰｽ", u"なし");
        }
        rowOf(u"ﾃﾞｰﾀ", u"ｺﾝﾄﾛｰﾙｿｰｽ", "ControlSource");
        if (full_ && isEdited && !text("Format").empty()) {
            row(u"書式", u"書式・定型入力", text("Format") + u"・" + text("InputMask"));
        }
        if (fullForm_ && isEdited) {
            row(u"その他", u"IMEﾓｰﾄﾞ・保持",
                GetImeModeName(text("IMEMode")) + u"・" + yesNo(control_.flag("IMEHold")));
        }
        if (full_ && isOneOf(control_.type(), {comboBox, listBox}) && !text("RowSource").empty()) {
            row(u"ﾃﾞｰﾀ", u"値集合ﾀｲﾌﾟ", GetRowSourceTypeName(text("RowSourceType")));
            row(u"ﾃﾞｰﾀ", u"値集合ｿｰｽ", text("RowSource"));
            row(u"ﾃﾞｰﾀ", u"列数・連結列", text("ColumnCount") + u"・" + text("BoundColumn"));
        }
        if (!fullForm_) {
            return;
        }
        if (control_.type() != boundObjectFrame) {
            lockRow("DefaultValue");
            validation();
        }
        if (isOneOf(control_.type(), {comboBox, listBox, textBox})) {
            rowOf(u"ﾃﾞｰﾀ", u"ｽﾃｰﾀｽﾊﾞｰ", "StatusBarText");
        }
        tabOrder();
        rowOf(u"その他", u"ﾋﾝﾄﾃｷｽﾄ", "ControlTipText");
        events();
    }

    const GoldenControl& control_;
    bool ofForm_, full_, fullForm_;
    std::vector<std::array<Text, 3>> rows_;
};

// The rows of the list, control by control, of one form or report.
std::vector<Listed> listedControls(const std::vector<StoredRow>& items, const Value& objectNo) {
    std::vector<Listed> all;
    Value controlNo = Null{};
    for (const StoredRow& item : items) {
        if (item.at(u"objectNo") != objectNo) {
            continue;
        }
        const auto field = [&item](TextView name) { return toText(item.at(Text(name))); };
        if (item.at(u"ControlNo") != controlNo) {
            controlNo = item.at(u"ControlNo");
            all.push_back({field(u"Name"), field(u"ControlType"), field(u"cntlVisible"), field(u"TLWH"), {}});
        }
        all.back().rows.push_back({field(u"Bunrui"), field(u"PropertyName"), field(u"PropertyValue")});
        EXPECT_EQ(item.at(u"PropertyNo"), Value(static_cast<std::int64_t>(all.back().rows.size())));
    }
    return all;
}

std::optional<Json> designGoldens() {
    const auto samples = test::realSamples();
    std::ifstream file(samples ? samples->parent_path() / "goldens" / "nwind-designs.json"
                               : std::filesystem::path());
    return file ? std::optional(Json::parse(file)) : std::nullopt;
}

const Json& goldenOf(const Json& goldens, const char* kind, const Text& name) {
    for (const Json& design : goldens.at("objects")) {
        if (design.at("kind") == kind && textOf(design.at("name")) == name) {
            return design;
        }
    }
    throw std::runtime_error("no golden of " + toUtf8(name));
}

void run(RealProgram& program, bool ofForms, int option) {
    FrmRelvane& form = program.form();
    (ofForms ? form.optForm : form.optReport).choose(option - 1);
    EXPECT_TRUE(program.press(ofForms ? form.cmdForm : form.cmdReport));
}

void expectControls(const Json& goldens, bool ofForms, const std::vector<StoredRow>& objects,
                    const std::vector<StoredRow>& items, bool full) {
    for (const StoredRow& object : objects) {
        const Text name = toText(object.at(ofForms ? u"FormName" : u"ReportName"));
        SCOPED_TRACE(toUtf8(name));
        std::vector<Listed> expected;
        for (const GoldenControl& control :
             controlsOf(goldenOf(goldens, ofForms ? "Form" : "Report", name))) {
            if (Listed listed = Expectation(control, ofForms, full).listed(); !listed.rows.empty()) {
                expected.push_back(std::move(listed));
            }
        }
        const auto listed = listedControls(items, object.at(u"objectNo"));
        EXPECT_EQ(listed.size(), expected.size());
        for (std::size_t i = 0; i < std::min(listed.size(), expected.size()); ++i) {
            EXPECT_EQ(listed[i], expected[i]) << "control " << i + 1;
        }
    }
}

TEST(RealDesigns, ListsOfControlsEqualTheGoldens) {
    const auto goldens = designGoldens();
    if (!goldens) {
        return; // realSamples has said so
    }
    const auto target = *test::realSample("access97/nwind.mdb");
    const std::string before = test::bytesOf(target);
    RealProgram program;
    ASSERT_TRUE(program.select(target));
    for (const int option : {2, 1}) {
        SCOPED_TRACE(option);
        run(program, true, option);
        const auto forms = program.rows(u"T_RvFrmInfo");
        EXPECT_EQ(forms.size(), 21u);
        expectControls(*goldens, true, forms, program.rows(u"T_RvFrmItem"), option == 2);
        run(program, false, option);
        const auto reports = program.rows(u"T_RvRepInfo");
        EXPECT_EQ(reports.size(), 13u);
        expectControls(*goldens, false, reports, program.rows(u"T_RvRepItem"), option == 2);
    }
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    EXPECT_EQ(test::bytesOf(target), before);
}

// The stored events of a form or report in the order of its properties.
std::vector<std::pair<Text, Text>> eventsOf(const Json& design) {
    static const char* const order[] = {"OnCurrent", "BeforeUpdate", "AfterUpdate", "BeforeDelConfirm",
                                        "OnOpen",    "OnClose",      "OnNoData",    "OnError"};
    std::vector<std::pair<Text, Text>> events;
    for (const char* name : order) {
        for (const Json& stored : design.at("properties")) {
            if (stored.at("name") == name) {
                events.emplace_back(GetEventLabel(fromUtf8(name)), textOf(stored.at("value")));
            }
        }
    }
    return events;
}

TEST(RealDesigns, RowsOfFormsAndReportsEqualTheGoldens) {
    const auto goldens = designGoldens();
    if (!goldens) {
        return;
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*test::realSample("access97/nwind.mdb")));
    run(program, true, 1);
    run(program, false, 1);
    for (const bool ofForms : {true, false}) {
        for (const StoredRow& row : program.rows(ofForms ? u"T_RvFrmInfo" : u"T_RvRepInfo")) {
            const Text name = toText(row.at(ofForms ? u"FormName" : u"ReportName"));
            SCOPED_TRACE(toUtf8(name));
            const Json& design = goldenOf(*goldens, ofForms ? "Form" : "Report", name);
            const Json& effective = design.at("effective");
            const auto text = [&](const char* property) {
                return effective.contains(property) ? textOf(effective.at(property)) : Text();
            };
            EXPECT_EQ(row.at(u"RecordSource"), Value(u"ﾚｺｰﾄﾞｿｰｽ : " + text("RecordSource")));
            EXPECT_EQ(row.at(u"OrderBy"), Value(u"並べ替え : " + text("OrderBy")));
            EXPECT_EQ(row.at(u"Caption"), Value(text("Caption")));
            EXPECT_EQ(row.at(u"RecordLocks"), Value(effective.at("RecordLocks").get<std::int64_t>()));
            for (const char* property :
                 {"AllowEdits", "AllowDeletions", "AllowAdditions", "DataEntry", "PopUp", "Modal"}) {
                if (ofForms) {
                    EXPECT_EQ(row.at(fromUtf8(property)), Value(effective.at(property).get<bool>()))
                        << property;
                }
            }
            for (const char* property : {"DefaultView", "RecordsetType"}) {
                if (ofForms) {
                    EXPECT_EQ(row.at(fromUtf8(property)), Value(effective.at(property).get<std::int64_t>()));
                }
            }
            const auto events = eventsOf(design);
            ASSERT_LE(events.size(), 4u);
            for (std::size_t i = 0; i < 4; ++i) {
                const Text number = numberText(static_cast<long long>(i + 1));
                const bool isTaken = i < events.size();
                EXPECT_EQ(row.at(u"Ibent" + number), Value(isTaken ? events[i].first : Text()));
                EXPECT_EQ(row.at(u"IbentVL" + number), isTaken ? Value(events[i].second) : Value(Null{}));
            }
        }
    }
}

TEST(RealDesigns, GroupingLevelsEqualTheGoldens) {
    const auto goldens = designGoldens();
    if (!goldens) {
        return;
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*test::realSample("access97/nwind.mdb")));
    run(program, false, 1);
    std::vector<StoredRow> expected;
    for (const StoredRow& report : program.rows(u"T_RvRepInfo")) {
        std::int64_t number = 0;
        for (const Json& level :
             goldenOf(*goldens, "Report", toText(report.at(u"ReportName"))).at("groupLevels")) {
            const Json& effective = level.at("effective");
            const auto whole = [&](const char* property) {
                return Value(effective.at(property).get<std::int64_t>());
            };
            expected.push_back({{u"objectNo", report.at(u"objectNo")},
                                {u"GroupNo", number++},
                                {u"ControlSource", textOf(effective.at("ControlSource"))},
                                {u"SortOrder", std::int64_t{effective.at("SortOrder").get<bool>() ? -1 : 0}},
                                {u"GroupHeader", effective.at("GroupHeader").get<bool>()},
                                {u"GroupFooter", effective.at("GroupFooter").get<bool>()},
                                {u"GroupOn", whole("GroupOn")},
                                {u"GroupInterval", whole("GroupInterval")},
                                {u"KeepTogether", whole("KeepTogether")}});
        }
    }
    EXPECT_EQ(program.rows(u"T_RvRepGrp"), expected);
    EXPECT_FALSE(expected.empty());
}

TEST(RealDesigns, ControlCountsEqualTheGoldens) {
    const auto goldens = designGoldens();
    if (!goldens) {
        return;
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*test::realSample("access97/nwind.mdb")));
    program.form().optControl.choose(2);
    program.press(program.form().cmdControl);
    const auto rows = program.rows(u"T_RvControlCount");
    ASSERT_EQ(rows.size(), 34u);
    std::int64_t counted = 0, controls = 0;
    for (const StoredRow& row : rows) {
        const Text name = toText(row.at(u"ObjectName"));
        SCOPED_TRACE(toUtf8(name));
        std::map<Text, std::int64_t> byType;
        for (const GoldenControl& control :
             controlsOf(goldenOf(*goldens, toUtf8(toText(row.at(u"Class"))).c_str(), name))) {
            ++byType[GetControlTypeName(numberText(control.type())) + u"Count"];
            ++controls;
        }
        for (const auto& [column, value] : row) {
            if (column.ends_with(u"Count")) {
                EXPECT_EQ(value, Value(byType[column])) << toUtf8(column);
                counted += std::get<std::int64_t>(value);
            }
        }
    }
    EXPECT_EQ(counted, controls);
}

// Every sample that can be opened at all, with every option: no box but that of an object that cannot be read, and no
// byte of the target changed.
TEST(RealDesigns, EverySampleOfAccess97RunsClean) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    for (const char* name : {"nwind", "afr", "CodBarra39Etiquetas", "ListaArquivosDir", "acc97"}) {
        const auto target = *samples / "access97" / (std::string(name) + ".mdb");
        SCOPED_TRACE(name);
        const std::string before = test::bytesOf(target);
        RealProgram program;
        if (!program.select(target)) {
            continue;
        }
        program.dialogs.boxes.clear(); // a target that starts with a macro says so
        for (const int option : {1, 2}) {
            run(program, true, option);
            run(program, false, option);
            EXPECT_EQ(program.rows(u"T_RvFrmInfo").size(),
                      static_cast<std::size_t>(program.desk->context.FormCount));
            EXPECT_EQ(program.rows(u"T_RvRepInfo").size(),
                      static_cast<std::size_t>(program.desk->context.ReportCount));
        }
        for (const int option : {1, 2, 3}) {
            program.form().optControl.choose(option - 1);
            EXPECT_TRUE(program.press(program.form().cmdControl));
        }
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
        EXPECT_EQ(test::bytesOf(target), before);
    }
}

} // namespace
} // namespace relvane
