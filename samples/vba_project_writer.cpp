#include "sample_builder/vba_project_writer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"
#include "sample_builder/vba_compressor.h"

namespace relvane::samples {

namespace {

// What differs from one version to the other.
struct ProjectFormat {
    std::uint8_t version;     // of Visual Basic, at the head of _VBA_PROJECT
    bool hasOwnStreams;       // each module a stream of its own, and its name in UTF-16
    bool hasGlobalNameSpace;  // an attribute of classes
    std::string_view library; // that the project refers to
};
constexpr ProjectFormat access97{0x5E, false, false,
                                 "*\\G{00025E01-0000-0000-C000-000000000046}#4.0#0#C:\\WINDOWS\\SYSTEM\\"
                                 "DAO350.DLL#Microsoft DAO 3.5 Object Library"};
constexpr ProjectFormat access2000{0x6D, true, true,
                                   "*\\G{00025E01-0000-0000-C000-000000000046}#5.0#0#C:\\Program Files\\"
                                   "Common Files\\Microsoft Shared\\DAO\\dao360.dll#Microsoft DAO 3.6 "
                                   "Object Library"};

constexpr TextView projectName = u"Project1", moduleStream = u"_VBA_MODULE";

// The stream of a module begins so where nothing is compiled.
constexpr std::array<std::uint8_t, 31> moduleHead = {
    0x01, 0x16, 0x01, 0x00, 0x06, 0xB6, 0x00, 0xFF, 0xFF, 0x01, 0x01, 0x00, 0x00, 0x00, 0x00, 0xFF,
    0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0x04, 0x00, 0xFF, 0xFF, 0x00, 0x00};

std::size_t textOffset(const ModuleSpec& module) {
    return moduleHead.size() + module.compiledCode.size();
}

void utf16(ByteWriter& out, TextView text) {
    for (const char16_t unit : text) {
        out.u16(unit);
    }
}

class ContainerWriter {
public:
    ContainerWriter() { out_.bytes(std::array<std::uint8_t, 8>{0x69, 0x12, 4, 0, 1, 0, 0, 0}); }

    void stream(TextView name, const Bytes& data) {
        out_.u8(2 * (name.size() + 1));
        utf16(out_, name);
        out_.u16(0);
        out_.u32(data.size());
        out_.bytes(data);
    }
    Bytes bytes() { return std::move(out_.data()); }

private:
    ByteWriter out_;
};

std::uint64_t hashOf(TextView name) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char16_t unit : name) {
        hash = (hash ^ unit) * 0x100000001B3;
    }
    return hash;
}

// Real ones are drawn by lot; this one is made of the name, so that the same module has the same.
std::string classId(TextView name) {
    std::uint64_t hash = hashOf(name);
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string id = "{00000000-0000-11D1-8000-00AA00440000}";
    for (const std::size_t place :
         std::array<std::size_t, 16>{1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 13, 33, 34, 35, 36}) {
        id[place] = digits[hash % 16];
        hash /= 16;
    }
    return id;
}

// The lines that Access keeps ahead of the source and never shows.
std::string attributeLines(const ProjectModule& module, const ProjectFormat& format, int codePage) {
    std::string lines;
    const auto add = [&](std::string_view name, const std::string& value) {
        lines.append("Attribute VB_").append(name).append(" = ").append(value).append("\r\n");
    };
    add("Name", '"' + encodeText(module.name, codePage) + '"');
    if (module.spec.isClass) {
        add("Base", "\"0" + classId(module.name) + '"');
        if (format.hasGlobalNameSpace) {
            add("GlobalNameSpace", "False");
        }
        for (const auto& [name, value] : {std::pair{"Creatable", "True"},
                                          {"PredeclaredId", "True"},
                                          {"Exposed", "False"},
                                          {"TemplateDerived", "False"},
                                          {"Customizable", "False"}}) {
            add(name, value);
        }
    }
    return lines;
}

// Records of an id, a size and data, in the order of real files.
class DirectoryWriter {
public:
    explicit DirectoryWriter(int codePage) : codePage_(codePage) {}

    void empty(unsigned id) { record(id, {}); }
    void u16(unsigned id, std::uint64_t number) {
        ByteWriter data;
        data.u16(number);
        record(id, data.data());
    }
    void u32(unsigned id, std::uint64_t number) {
        ByteWriter data;
        data.u32(number);
        record(id, data.data());
    }
    void text(unsigned id, TextView text) {
        const std::string encoded = encodeText(text, codePage_);
        record(id, Bytes(encoded.begin(), encoded.end()));
    }
    // In the code page, and again in UTF-16 under another id.
    void twice(unsigned id, unsigned wideId, TextView text) {
        this->text(id, text);
        ByteWriter wide;
        utf16(wide, text);
        record(wideId, wide.data());
    }
    // The one record whose size is not that of its data.
    void version() {
        out_.u16(0x09);
        out_.u32(4);
        out_.u32(1);
        out_.u16(1);
    }
    void reference(TextView name, std::string_view library) {
        twice(0x16, 0x3E, name);
        ByteWriter data;
        data.u32(library.size());
        data.text(library);
        data.zeros(6);
        record(0x0D, data.data());
    }
    std::string_view bytes() const {
        return {reinterpret_cast<const char*>(out_.data().data()), out_.size()};
    }

private:
    void record(unsigned id, const Bytes& data) {
        out_.u16(id);
        out_.u32(data.size());
        out_.bytes(data);
    }

    ByteWriter out_;
    int codePage_;
};

void writeModule(DirectoryWriter& directory, const ProjectModule& module, const ProjectFormat& format) {
    if (format.hasOwnStreams) {
        directory.twice(0x19, 0x47, module.name);
        directory.twice(0x1A, 0x32, moduleStreamName(module.name));
    } else {
        directory.text(0x19, module.name);
        directory.twice(0x1A, 0x32, moduleStream);
    }
    directory.twice(0x1C, 0x48, {}); // description
    directory.u32(0x31, module.spec.directoryKnowsOffset ? textOffset(module.spec) : 0);
    directory.u32(0x1E, 0); // help context
    directory.u16(0x2C, 0xFFFF);
    if (module.spec.isClass) {
        directory.empty(0x22);
        directory.empty(0x28); // private
    } else {
        directory.empty(0x21);
    }
    directory.empty(0x2B);
}

Bytes directoryStream(const std::vector<ProjectModule>& modules, const ProjectFormat& format, int codePage,
                      int locale) {
    const auto isListed = [](const ProjectModule& module) {
        return module.spec.damage != ModuleDamage::NotInProject;
    };
    DirectoryWriter directory(codePage);
    directory.u32(0x01, 1); // platform
    directory.u32(0x02, static_cast<unsigned>(locale));
    directory.u32(0x14, static_cast<unsigned>(locale));
    directory.u16(0x03, static_cast<unsigned>(codePage));
    directory.text(0x04, projectName);
    directory.twice(0x05, 0x40, {}); // description
    directory.twice(0x06, 0x3D, {}); // help file
    directory.u32(0x07, 0);
    directory.u32(0x08, 0);
    directory.version();
    directory.twice(0x0C, 0x3C, {}); // constants of conditional compilation
    directory.reference(u"DAO", format.library);
    directory.u16(0x0F, static_cast<std::uint64_t>(std::ranges::count_if(modules, isListed)));
    directory.u16(0x13, 0xFFFF);
    for (const ProjectModule& module : modules) {
        if (isListed(module)) {
            writeModule(directory, module, format);
        }
    }
    directory.empty(0x10);
    return compressVba(directory.bytes());
}

Bytes moduleBytes(const ProjectModule& module, const ProjectFormat& format, int codePage) {
    const std::string text =
        attributeLines(module, format, codePage) + encodeText(module.spec.source, codePage);
    Bytes compressed = compressVba(text);
    if (module.spec.damage == ModuleDamage::CutOff) {
        compressed.resize(compressed.size() - std::min(compressed.size(), std::size_t{8}));
    }
    ByteWriter stream;
    stream.bytes(moduleHead);
    stream.bytes(module.spec.compiledCode);
    stream.bytes(compressed);
    return std::move(stream.data());
}

Bytes projectHead(const ProjectFormat& format, int codePage, int locale) {
    ByteWriter head;
    head.bytes(std::array<std::uint8_t, 8>{0xCC, 0x61, format.version, 0, 0, 1, 0, 0xFF});
    head.u32(static_cast<unsigned>(locale));
    head.u32(static_cast<unsigned>(locale));
    head.u16(static_cast<unsigned>(codePage));
    return std::move(head.data());
}

// The list of the modules by their kinds. Real ones have the project's protection in it too.
Bytes projectText(const std::vector<ProjectModule>& modules, int codePage) {
    std::string text = "ID=\"" + classId(projectName) + "\"\r\n";
    for (const ProjectModule& module : modules) {
        const std::string name = encodeText(module.name, codePage);
        text += module.ofDocument     ? "DocClass=" + name + "/&H00000000\r\n"
                : module.spec.isClass ? "Class=" + name + "\r\n"
                                      : "Module=" + name + "\r\n";
    }
    text += "Name=\"" + encodeText(projectName, codePage) + "\"\r\n";
    text += "HelpContextID=\"0\"\r\n"
            "VersionCompatible32=\"393222000\"\r\n\r\n"
            "[Host Extender Info]\r\n"
            "&H00000001={3832D640-CF90-11CF-8E43-00A0C911005A};VBE;&H00000000\r\n\r\n"
            "[Workspace]\r\n";
    return {text.begin(), text.end()};
}

// The name of each module in the code page and in UTF-16.
Bytes nameMap(const std::vector<ProjectModule>& modules, int codePage) {
    ByteWriter map;
    for (const ProjectModule& module : modules) {
        map.text(encodeText(module.name, codePage));
        map.u8(0);
        utf16(map, module.name);
        map.u16(0);
    }
    map.u16(0);
    return std::move(map.data());
}

} // namespace

Bytes moduleContainer(const ProjectModule& module, int codePage) {
    ContainerWriter container;
    container.stream(moduleStream, moduleBytes(module, access97, codePage));
    return container.bytes();
}

Bytes projectContainer(const std::vector<ProjectModule>& modules, int codePage, int locale) {
    ContainerWriter container;
    container.stream(u"_VBA_PROJECT", projectHead(access97, codePage, locale));
    container.stream(u"dir", directoryStream(modules, access97, codePage, locale));
    return container.bytes();
}

Text moduleStreamName(TextView module) {
    constexpr TextView letters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ_";
    constexpr std::size_t length = 28;
    Text name;
    for (std::uint64_t hash = hashOf(module); name.size() < length; hash = hash * 0x5851F42D4C957F2D + 1) {
        name += letters[(hash >> 33) % letters.size()];
    }
    return name;
}

Streams projectStreams(const std::vector<ProjectModule>& modules, int codePage, int locale) {
    const Text folder(moduleFolder), above = u"VBA/VBAProject/";
    Streams streams{{folder + u"dir", directoryStream(modules, access2000, codePage, locale)},
                    {folder + u"_VBA_PROJECT", projectHead(access2000, codePage, locale)},
                    {above + u"PROJECT", projectText(modules, codePage)},
                    {above + u"PROJECTwm", nameMap(modules, codePage)}};
    for (const ProjectModule& module : modules) {
        if (module.spec.damage != ModuleDamage::NotStored) {
            streams.emplace_back(folder + moduleStreamName(module.name),
                                 moduleBytes(module, access2000, codePage));
        }
    }
    ByteWriter data; // beside the project
    data.u32(1);
    data.u32(1);
    data.u32(modules.size());
    streams.emplace_back(u"VBA/AcessVBAData", std::move(data.data()));
    return streams;
}

} // namespace relvane::samples
