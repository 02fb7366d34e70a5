#include "access/vba_project.h"

#include <algorithm>
#include <array>

#include "access/design_bytes.h"
#include "platform/codepage.h"

namespace relvane::access {
namespace {

constexpr TextView containerPart = u"ソース", directoryPart = u"プロジェクト";

constexpr std::array<std::uint8_t, 8> containerHeader = {0x69, 0x12, 4, 0, 1, 0, 0, 0};

enum class Record : std::uint16_t {
    CodePage = 0x03,
    Version = 0x09,
    End = 0x10,
    ModuleName = 0x19,
    StandardModule = 0x21,
    OtherModule = 0x22,
    ModuleEnd = 0x2B,
    TextOffset = 0x31,
};

// The length of a version record is 4, but 6 bytes follow.
constexpr std::size_t versionSize = 6;

// UTF-16 with a zero at its end.
Text streamName(std::span<const std::uint8_t> bytes) {
    const jet::ByteSpan units(bytes, 0);
    Text name;
    for (std::size_t at = 0; at + 1 < bytes.size() && units.u16(at) != 0; at += 2) {
        name += static_cast<char16_t>(units.u16(at));
    }
    return name;
}

class DirectoryReader {
public:
    DirectoryReader(std::span<const std::uint8_t> directory, TextView owner)
        : bytes_(directory, owner, directoryPart) {}

    VbaProject read() {
        while (readRecord()) {
        }
        if (inModule_) {
            bytes_.fail(bytes_.offset(), u"モジュールの終わりがありません");
        }
        if (project_.codePage == 0) {
            bytes_.fail(bytes_.offset(), u"コード ページがありません");
        }
        for (VbaModule& module : project_.modules) {
            module.name = decode(module.storedName, project_.codePage);
        }
        return std::move(project_);
    }

private:
    // False for the end record.
    bool readRecord() {
        const std::size_t at = bytes_.offset();
        const auto id = static_cast<Record>(bytes_.u16());
        const std::size_t size = bytes_.u32();
        const jet::ByteSpan data(bytes_.take(id == Record::Version ? versionSize : size), 0);
        const auto require = [&](std::size_t length) {
            if (data.size() != length) {
                bytes_.fail(at, u"長さが正しくありません");
            }
        };
        switch (id) {
        case Record::CodePage:
            require(2);
            project_.codePage = data.u16(0);
            break;
        case Record::ModuleName:
            inModule_ = true;
            project_.modules.emplace_back().storedName = data.copy();
            break;
        case Record::TextOffset:
            require(4);
            module(at).textOffset = data.u32(0);
            break;
        case Record::StandardModule:
        case Record::OtherModule:
            module(at).isClass = id == Record::OtherModule;
            break;
        case Record::ModuleEnd:
            module(at);
            inModule_ = false;
            break;
        case Record::End:
            return false;
        case Record::Version:
        default:
            break;
        }
        return true;
    }

    VbaModule& module(std::size_t at) {
        if (!inModule_) {
            bytes_.fail(at, u"モジュールの名前がありません");
        }
        return project_.modules.back();
    }

    DesignBytes bytes_;
    VbaProject project_;
    bool inModule_ = false;
};

} // namespace

std::span<const std::uint8_t> vbaStream(std::span<const std::uint8_t> container, TextView name,
                                        TextView owner) {
    DesignBytes bytes(container, owner, containerPart);
    if (!std::ranges::equal(bytes.take(containerHeader.size()), containerHeader)) {
        bytes.fail(0, u"見出しが正しくありません");
    }
    while (!bytes.atEnd()) {
        const Text found = streamName(bytes.take(bytes.u8()));
        const auto stream = bytes.take(bytes.u32());
        if (equalsIgnoringCase(found, name)) {
            return stream;
        }
    }
    Text reason(name);
    reason += u" がありません";
    bytes.fail(bytes.offset(), reason);
}

VbaProject readVbaProject(std::span<const std::uint8_t> directory, TextView owner) {
    return DirectoryReader(directory, owner).read();
}

} // namespace relvane::access
