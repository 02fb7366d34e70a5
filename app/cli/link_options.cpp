#include "link_options.h"

#include <iostream>

#include "system/link_map_file.h"

namespace relvane::cli {
namespace {

std::string sentence(const MappingFault& fault) {
    switch (fault.kind) {
    case MappingFault::Kind::NoMapping:
        return "\"" + fault.text + "\" is not PREFIX=DIR";
    case MappingFault::Kind::NoUtf8:
        return "this is not UTF-8";
    case MappingFault::Kind::FolderMissing:
        return "the folder of \"" + fault.text + "\" does not exist";
    case MappingFault::Kind::Unreadable:
        return fault.text;
    }
    return {};
}

} // namespace

std::vector<LinkMapping> givenMappings(const Arguments& arguments) {
    std::vector<LinkMapping> mappings;
    for (const std::string& word : arguments.values(mapOption.name)) {
        auto read = parseLinkMapping(word, std::filesystem::current_path());
        if (const auto* fault = std::get_if<MappingFault>(&read)) {
            throw UsageError(std::string(mapOption.name) + ": " + sentence(*fault));
        }
        mappings.push_back(std::get<LinkMapping>(std::move(read)));
    }
    return mappings;
}

std::vector<LinkMapping> withKeptMappings(std::vector<LinkMapping> given,
                                          const std::filesystem::path& programFolder) {
    LinkMap kept = readLinkMap(programFolder);
    for (const MappingFault& fault : kept.faults) {
        std::cerr << "relvane-cli: " << (programFolder / linkMapFile).string();
        if (fault.line != 0) {
            std::cerr << ", line " << fault.line;
        }
        std::cerr << ": " << sentence(fault) << '\n';
    }
    given.insert(given.end(), kept.mappings.begin(), kept.mappings.end());
    return given;
}

} // namespace relvane::cli
