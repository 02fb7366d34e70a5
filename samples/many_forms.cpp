#include "sample_builder/many_forms.h"

#include <array>

#include "sample_builder/design_data_writer.h"

namespace relvane::samples {

namespace {

using enum DesignType;
using Properties = std::vector<DesignPropertySpec>;

Text numbered(const char16_t* name, int number) {
    return name + fromUtf8(std::to_string(number));
}

// Fills the detail section of one form.
class FormBuilder {
public:
    FormBuilder(DesignObjectSpec& section, int controls) : section_(section), left_(controls) {}

    void build() {
        using Step = void (FormBuilder::*)();
        constexpr std::array<Step, 12> steps = {
            &FormBuilder::textBox, &FormBuilder::comboBox, &FormBuilder::textBox,     &FormBuilder::checkBox,
            &FormBuilder::listBox, &FormBuilder::textBox,  &FormBuilder::optionGroup, &FormBuilder::button,
            &FormBuilder::subform, &FormBuilder::textBox,  &FormBuilder::image,       &FormBuilder::lines};
        constexpr int mostControlsOfAStep = 6;
        for (std::size_t step = 0; left_ > 0; ++step) {
            if (left_ >= mostControlsOfAStep) {
                (this->*steps[step % steps.size()])();
            } else {
                freeLabel();
            }
        }
    }

private:
    // Rows of four columns.
    DesignObjectSpec& add(std::vector<DesignObjectSpec>& siblings, DesignType type, const char16_t* name,
                          Properties more) {
        const std::int64_t left = 113 + place_ % 4 * 2835, top = 113 + place_ / 4 % 60 * 397;
        DesignObjectSpec& object = siblings.emplace_back(DesignObjectSpec{.type = type});
        object.properties = {{u"Name", numbered(name, ++number_)}, {u"Left", left}, {u"Top", top}};
        object.properties.insert(object.properties.end(), more.begin(), more.end());
        --left_;
        return object;
    }

    DesignObjectSpec& addControl(DesignType type, const char16_t* name, Properties more) {
        ++place_;
        return add(section_.children, type, name, std::move(more));
    }

    void label(DesignObjectSpec& owner, const char16_t* caption) {
        add(owner.children, Label, u"ﾗﾍﾞﾙ",
            {{u"Width", std::int64_t{1134}}, {u"Height", std::int64_t{240}}, {u"Caption", Text(caption)}});
    }

    void freeLabel() {
        addControl(Label, u"見出し",
                   {{u"Width", std::int64_t{1134}}, {u"Height", std::int64_t{240}}, {u"Caption", u"見出し"}});
    }

    void textBox() {
        label(addControl(TextBox, u"文字",
                         {{u"ControlSource", u"項目１"},
                          {u"Format", u"#,##0"},
                          {u"InputMask", u"999,999"},
                          {u"IMEMode", std::int64_t{2}},
                          {u"DefaultValue", u"0"},
                          {u"ValidationRule", u">=0"},
                          {u"ValidationText", u"0以上です。"},
                          {u"StatusBarText", u"数を入れます"},
                          {u"ControlTipText", u"入力欄"},
                          {u"TabIndex", std::int64_t{place_ % 200}},
                          {u"BeforeUpdate", u"検査.数"},
                          {u"AfterUpdate", u"=再計算()"}}),
              u"数(&N)");
    }

    void comboBox() {
        label(addControl(ComboBox, u"選択",
                         {{u"ControlSource", u"項目２"},
                          {u"RowSourceType", u"Table/Query"},
                          {u"RowSource", u"SELECT 番号, 項目２ FROM 表 ORDER BY 項目２;"},
                          {u"ColumnCount", std::int64_t{2}},
                          {u"LimitToList", true},
                          {u"OnChange", u"=変更()"}}),
              u"選択");
    }

    void listBox() {
        label(addControl(ListBox, u"一覧",
                         {{u"RowSourceType", u"Value List"},
                          {u"RowSource", u"1;大;2;中;3;小"},
                          {u"ColumnCount", std::int64_t{2}},
                          {u"OnDblClick", u"一覧.開く"}}),
              u"一覧");
    }

    void checkBox() {
        label(addControl(CheckBox, u"印", {{u"ControlSource", u"項目３"}, {u"Locked", true}}), u"済");
    }

    void optionGroup() {
        DesignObjectSpec& group = addControl(OptionGroup, u"組", {{u"AfterUpdate", u"=組の値()"}});
        label(group, u"区分");
        for (const std::int64_t choice : {1, 2}) {
            label(add(group.children, OptionButton, u"丸", {{u"OptionValue", choice}}), u"区分の値");
        }
    }

    void button() {
        addControl(CommandButton, u"釦",
                   {{u"Caption", u"実行(&X)"}, {u"OnClick", u"=実行()"}, {u"ControlTipText", u"実行します"}});
    }

    void subform() {
        addControl(Subform, u"明細",
                   {{u"SourceObject", u"Form.画面1"},
                    {u"LinkChildFields", u"番号"},
                    {u"LinkMasterFields", u"番号"}});
    }

    void image() {
        addControl(Image, u"絵",
                   {{u"Picture", u"C:\\業務\\絵.bmp"}, {u"PictureData", bitmapPicture(16, 16, 4)}});
    }

    void lines() {
        addControl(Line, u"線", {{u"BorderWidth", std::int64_t{1}}});
        addControl(Rectangle, u"枠", {{u"OldBorderStyle", std::int64_t{2}}});
    }

    DesignObjectSpec& section_;
    int left_;
    std::int64_t place_ = 0;
    int number_ = 0;
};

} // namespace

DatabaseSpec manyForms(int forms, int controlsEach) {
    DatabaseSpec spec;
    spec.tables.push_back({.name = u"表",
                           .columns = {{.name = u"番号", .type = ColumnType::Long, .autoNumber = true},
                                       {.name = u"項目１", .type = ColumnType::Long},
                                       {.name = u"項目２", .type = ColumnType::Text, .size = 40},
                                       {.name = u"項目３", .type = ColumnType::Boolean}},
                           .indexes = {{.name = u"PrimaryKey", .columns = {{u"番号"}}, .primary = true}}});
    for (int number = 1; number <= forms; ++number) {
        DocumentSpec form{.name = numbered(u"画面", number)};
        DesignSpec& design = form.design.emplace();
        if (number % 3 == 0) {
            form.module.emplace();
        }
        design.root.type = Form;
        design.root.properties = {{u"RecordSource", u"表"},
                                  {u"Caption", numbered(u"画面 その", number)},
                                  {u"DefaultView", std::int64_t{0}},
                                  {u"OnOpen", form.module ? u"[Event Procedure]" : u"画面.開く"}};
        DesignObjectSpec& detail = design.root.children.emplace_back(DesignObjectSpec{.type = Section});
        detail.properties = {{u"Name", u"詳細"}, {u"Height", std::int64_t{24'000}}};
        FormBuilder(detail, controlsEach).build();
        spec.forms.push_back(std::move(form));
    }
    return spec;
}

} // namespace relvane::samples
