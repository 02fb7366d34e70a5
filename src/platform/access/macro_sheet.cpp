#include "access/macro_sheet.h"

#include <algorithm>

#include "access/design_bytes.h"
#include "platform/codepage.h"

namespace relvane::access {
namespace {

enum Slot : std::size_t { Reserved, Comment, Condition, Name, FirstArgument };
constexpr std::size_t slotCount = FirstArgument + MacroRow::argumentCount;
constexpr std::uint16_t emptySlot = 0xFFFF;

// The second number of the version says how texts are kept: this one in UTF-16, those before in the code page.
constexpr int utf16Version = 3;

// So begins the comment of a row that holds a piece of the macro as XML.
constexpr TextView pieceOfXml = u"_AXL:";

Text& textOf(MacroRow& row, std::size_t slot) {
    switch (slot) {
    case Reserved:
        return row.reserved;
    case Comment:
        return row.comment;
    case Condition:
        return row.condition;
    case Name:
        return row.name;
    default:
        return row.arguments[slot - FirstArgument];
    }
}

class SheetReader {
public:
    SheetReader(std::span<const std::uint8_t> stream, int codePage, TextView owner)
        : bytes_(stream, owner, u"シート"), codePage_(codePage) {}

    MacroSheet read() {
        MacroSheet sheet;
        readHeader(sheet);
        std::uint16_t last = 0;
        while (!bytes_.atEnd()) {
            MacroRow row;
            readRecord(row);
            if (row.number <= last) {
                bytes_.fail(row.offset, u"行番号の順序が正しくありません");
            }
            last = row.number;
            if (row.hasAction() || !row.comment.starts_with(pieceOfXml)) {
                sheet.rows.push_back(std::move(row));
            }
        }
        return sheet;
    }

private:
    void readHeader(MacroSheet& sheet) {
        MacroRow header;
        readRecord(header);
        sheet.shownColumns = header.actionNumber;
        const Text& first = header.arguments[0];
        const Text& second = header.arguments[1];
        int filled = 0;
        for (std::size_t slot = 0; slot < slotCount; ++slot) {
            filled += textOf(header, slot).empty() ? 0 : 1;
        }
        const auto expected = (first.empty() ? 0 : 1) + (second.empty() ? 0 : 1);
        if (header.number != 0 || first.empty() != second.empty() || filled != expected) {
            bytes_.fail(0, u"見出しが正しくありません");
        }
        if (first.empty()) {
            return;
        }
        sheet.version = MacroVersion{numberOf(first), numberOf(second)};
        isUtf16_ = sheet.version->second == utf16Version;
        if (sheet.version->second > utf16Version) {
            throw RunTimeError(ErrorNumber::UnrecognizedFormat,
                               Text(bytes_.owner()) + u" のシートのバージョン " + first + u"." + second);
        }
    }

    int numberOf(TextView digits) const {
        constexpr std::size_t longest = 4;
        int number = 0;
        for (const char16_t digit : digits) {
            if (digit < u'0' || digit > u'9' || digits.size() > longest) {
                bytes_.fail(0, u"見出しのバージョンが正しくありません");
            }
            number = number * 10 + (digit - u'0');
        }
        return number;
    }

    void readRecord(MacroRow& row) {
        row.offset = bytes_.offset();
        row.actionNumber = bytes_.u16();
        row.number = bytes_.u16();
        std::array<std::uint16_t, slotCount> slots{};
        for (std::uint16_t& slot : slots) {
            slot = bytes_.u16();
        }
        readTexts(row, slots);
        const std::size_t end = bytes_.offset();
        if (bytes_.u16() != 0) {
            bytes_.fail(end, u"行の終わりが正しくありません");
        }
    }

    // String by string in the order of the text, whatever slots they are for: each must begin where the one before
    // it ended.
    void readTexts(MacroRow& row, const std::array<std::uint16_t, slotCount>& slots) {
        const std::size_t length = bytes_.u16();
        const std::size_t start = bytes_.offset();
        std::array<std::size_t, slotCount> order{};
        std::size_t count = 0;
        for (std::size_t slot = 0; slot < slotCount; ++slot) {
            if (slots[slot] != emptySlot) {
                order[count++] = slot;
            }
        }
        const std::span filled(order.data(), count);
        std::ranges::sort(filled, {}, [&](std::size_t slot) { return slots[slot]; });
        for (const std::size_t slot : filled) {
            const std::size_t at = bytes_.offset();
            if (slots[slot] != at - start) {
                bytes_.fail(at, u"文字列の位置が正しくありません");
            }
            textOf(row, slot) = isUtf16_ ? textOfUtf16(bytes_.zeroTerminatedUtf16())
                                         : decode(bytes_.zeroTerminated(), codePage_);
        }
        if (bytes_.offset() - start != length) {
            bytes_.fail(bytes_.offset(), u"文字列の長さが正しくありません");
        }
    }

    DesignBytes bytes_;
    int codePage_;
    bool isUtf16_ = false; // from behind the header on
};

} // namespace

std::vector<MacroMember> membersOf(const MacroSheet& sheet) {
    std::vector<MacroMember> members;
    const std::span<const MacroRow> rows = sheet.rows;
    std::size_t start = 0;
    for (std::size_t next = 1; next <= rows.size(); ++next) {
        if (next == rows.size() || !rows[next].name.empty()) {
            members.push_back({rows[start].name, rows.subspan(start, next - start)});
            start = next;
        }
    }
    return members;
}

MacroSheet readMacroSheet(std::span<const std::uint8_t> stream, int codePage, TextView owner) {
    return SheetReader(stream, codePage, owner).read();
}

} // namespace relvane::access
