#include "access/vba_project.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

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
    StreamNameInUtf16 = 0x32,
    ModuleNameInUtf16 = 0x47,
};

// The length of a version record is 4, but 6 bytes follow.
constexpr std::size_t versionSize = 6;

// UTF-16, up to a zero where it has one.
Text utf16Text(std::span<const std::uint8_t> bytes) {
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
            if (module.name.empty()) { // Access 97 writes the code page alone
                module.name = decode(module.storedName, project_.codePage);
            }
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
        case Record::ModuleNameInUtf16:
            module(at).name = utf16Text(data.bytes());
            break;
        case Record::StreamNameInUtf16:
            module(at).streamName = utf16Text(data.bytes());
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
        const Text found = utf16Text(bytes.take(bytes.u8()));
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

// A line is "Module=", "Class=" or "DocClass=" and the name in the code page, which is compared as it is stored. Behind the
// first empty line other things follow.
void markOrdinaryClasses(VbaProject& project, std::span<const std::uint8_t> text) {
    constexpr std::string_view lineEnd = "\r\n", key = "Class=";
    std::string_view rest(reinterpret_cast<const char*>(text.data()), text.size());
    std::set<std::string_view> classes;
    while (!rest.empty() && !rest.starts_with(lineEnd)) {
        const std::size_t end = rest.find(lineEnd);
        const std::string_view line = rest.substr(0, end);
        if (line.starts_with(key)) {
            classes.insert(line.substr(key.size()));
        }
        rest.remove_prefix(end == rest.npos ? rest.size() : end + lineEnd.size());
    }
    for (VbaModule& module : project.modules) {
        const std::string_view name(reinterpret_cast<const char*>(module.storedName.data()),
                                    module.storedName.size());
        module.isOrdinaryClass = module.isClass && classes.contains(name);
    }
}

} // namespace relvane::access
