#include "sample_builder/macro_writer.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"

namespace relvane::samples {

namespace {

constexpr std::size_t mostArguments = 10;
constexpr std::uint16_t emptySlot = 0xFFFF;

// A row and the header are stored alike: two numbers, a slot for each text, the texts.
class RecordWriter {
public:
    explicit RecordWriter(TextCoding coding) : coding_(coding) {}

    // Its texts are bytes in every version.
    void header(std::size_t shownColumns, const MacroRowSpec& version) {
        const TextCoding ofRows = std::exchange(coding_, TextCoding(coding_.codePage));
        record(shownColumns, 0, version);
        coding_ = ofRows;
    }
    void record(std::size_t first, std::size_t number, const MacroRowSpec& row) {
        if (row.arguments.size() > mostArguments) {
            throw std::invalid_argument("a macro's action has ten arguments at most");
        }
        texts_.clear();
        // The texts stand in this order, the slots in another.
        const std::uint16_t name = slot(row.name), comment = slot(row.comment),
                            condition = slot(row.condition);
        std::array<std::uint16_t, mostArguments> arguments;
        arguments.fill(emptySlot);
        std::ranges::transform(row.arguments, arguments.begin(),
                               [&](const Text& text) { return slot(text); });

        out_.u16(first);
        out_.u16(number);
        out_.u16(emptySlot); // never used
        for (const std::uint16_t place : {comment, condition, name}) {
            out_.u16(place);
        }
        for (const std::uint16_t place : arguments) {
            out_.u16(place);
        }
        if (texts_.size() >= emptySlot) {
            throw std::invalid_argument("the texts of a macro's row are longer than 64 KB");
        }
        out_.u16(texts_.size());
        out_.text(texts_);
        out_.u16(0);
    }
    Bytes bytes() { return std::move(out_.data()); }

private:
    // Where the text goes; an empty one is not stored.
    std::uint16_t slot(const Text& text) {
        if (text.empty()) {
            return emptySlot;
        }
        const auto place = static_cast<std::uint16_t>(texts_.size());
        texts_ += encodeText(text, coding_);
        texts_.append(coding_.wide ? 2 : 1, '\0');
        return place;
    }

    TextCoding coding_;
    ByteWriter out_;
    std::string texts_;
};

} // namespace

Bytes macroSheet(const MacroSpec& macro, TextCoding coding) {
    const auto fills = [&](Text MacroRowSpec::*column) {
        return std::ranges::any_of(macro.rows,
                                   [&](const MacroRowSpec& row) { return !(row.*column).empty(); });
    };
    const bool names = macro.showsNames.value_or(fills(&MacroRowSpec::name));
    const bool conditions = macro.showsConditions.value_or(fills(&MacroRowSpec::condition));
    MacroRowSpec version;
    if (macro.hasVersion) {
        version.arguments.assign(2, coding.wide ? u"3" : u"2");
    } else {
        coding.wide = false; // only the version tells that texts are wide
    }
    RecordWriter sheet(coding);
    sheet.header((names ? 1U : 0U) | (conditions ? 2U : 0U), version);
    std::size_t number = 0;
    for (const MacroRowSpec& row : macro.rows) {
        number += row.emptyRowsBefore + 1U;
        sheet.record(row.action, number, row);
    }
    Bytes bytes = sheet.bytes();
    bytes.resize(bytes.size() - std::min(bytes.size(), macro.lostBytes));
    return bytes;
}

} // namespace relvane::samples
