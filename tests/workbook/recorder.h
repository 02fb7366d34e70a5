// A spreadsheet application that writes down what it is told, and fails where a test wants it to.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/spreadsheet.h"

namespace relvane::test {

struct SpreadsheetLog {
    std::vector<Text> calls;
    std::map<Text, int> failing; // by the first word of a call: its error
    bool running = false;        // an instance that GetObject finds
    int alive = 0;               // applications
};

class RecordingSpreadsheet : public spreadsheet::Application {
public:
    explicit RecordingSpreadsheet(SpreadsheetLog& log) : log_(log) { ++log_.alive; }
    ~RecordingSpreadsheet() override { --log_.alive; }
    RecordingSpreadsheet(const RecordingSpreadsheet&) = delete;
    RecordingSpreadsheet& operator=(const RecordingSpreadsheet&) = delete;

    void GetObject() override {
        record({u"GetObject"});
        if (!log_.running) {
            throw RunTimeError(spreadsheet::cannotCreateObject, u"なし");
        }
    }
    void CreateObject() override { record({u"CreateObject"}); }
    void Open(const Text& fileName) override { record({u"Open", fileName}); }
    void Activate(const Text& sheet) override { record({u"Activate", sheet}); }
    void ClearContents(const Text& range) override { record({u"ClearContents", range}); }
    void Goto(std::int32_t row, std::int32_t column) override {
        record({u"Goto", number(row), number(column)});
    }
    void setActiveCellValue(const Value& value) override { record({u"Value", toText(value)}); }
    void CopyFromRecordset(Recordset& rows) override {
        int count = 0;
        for (; !rows.EOF_(); rows.MoveNext()) {
            ++count;
        }
        record({u"CopyFromRecordset", number(count), number(rows.FieldCount())});
    }
    void Select(const Text& range) override { record({u"Select", range}); }
    void setLineStyle(spreadsheet::BorderKind kind, spreadsheet::LineStyle style) override {
        record({u"LineStyle", number(kind), number(style)});
    }
    void setWeight(spreadsheet::BorderKind kind, spreadsheet::BorderWeight weight) override {
        record({u"Weight", number(kind), number(weight)});
    }
    void setColorIndex(spreadsheet::BorderKind kind, spreadsheet::ColorIndex color) override {
        record({u"ColorIndex", number(kind), number(color)});
    }
    void AutoFilter(const Text& range) override { record({u"AutoFilter", range}); }
    void AutoFitRows(const Text& rows) override { record({u"AutoFitRows", rows}); }
    void AutoFitColumns(const Text& columns) override { record({u"AutoFitColumns", columns}); }
    void PivotTableWizard(spreadsheet::PivotSource type, const Text& source, const Text& destination,
                          const Text& table) override {
        record({u"PivotTableWizard", number(type), source, u"'" + destination + u"'", table});
    }
    void AddFields(const Text& table, const Text& rowField, const Text& columnField) override {
        record({u"AddFields", table, rowField, columnField});
    }
    void setOrientation(const Text& table, const Text& field,
                        spreadsheet::PivotOrientation orientation) override {
        record({u"Orientation", table, field, number(orientation)});
    }
    void setVisible(bool visible) override { record({u"Visible", number(visible)}); }
    void PrintPreview(const Text& sheet) override { record({u"PrintPreview", sheet}); }
    void setDisplayAlerts(bool alerts) override { record({u"DisplayAlerts", number(alerts)}); }
    void Save() override { record({u"Save"}); }
    void Quit() override { record({u"Quit"}); }

private:
    static Text number(long long value) { return toText(value); }
    void record(const std::vector<Text>& words) {
        Text call;
        for (const Text& word : words) {
            call += (call.empty() ? u"" : u" ") + word;
        }
        log_.calls.push_back(call);
        if (const auto failing = log_.failing.find(words[0]); failing != log_.failing.end()) {
            throw RunTimeError(failing->second, u"説明");
        }
    }

    SpreadsheetLog& log_;
};

} // namespace relvane::test
