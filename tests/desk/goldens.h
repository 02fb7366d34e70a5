// What independent decoders read from real files, and where those files are.
#pragma once

#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "platform/value.h"
#include "support/samples.h"

namespace relvane::test {

using Json = nlohmann::json;

inline Text textOf(const Json& value) {
    return fromUtf8(value.get<std::string>());
}

inline Value dateOf(const Json& value) {
    return DateTime::fromText(textOf(value)).value();
}

// The goldens lie beside the folder of samples, each named for its file; empty when there are none.
inline std::vector<Json> goldens() {
    std::vector<Json> all;
    const auto samples = realSamples();
    const auto folder = samples ? samples->parent_path() / "goldens" : std::filesystem::path();
    for (const char* name : {"nwind", "testV1997", "delColTestV1997", "indexTestV1997", "queryTestV1997",
                             "queryTestV2000", "testIndexPropertiesV2000"}) {
        if (std::ifstream file(folder / (name + std::string("-objects.json"))); file) {
            all.push_back(Json::parse(file));
        } else if (samples) {
            std::cout << "No golden of " << name << ".\n";
        }
    }
    return all;
}

inline std::filesystem::path sampleOf(const Json& golden) {
    const std::string name = golden.at("file");
    for (const char* folder : {"access97", "later"}) {
        if (const auto path = *realSamples() / folder / name; std::filesystem::exists(path)) {
            return path;
        }
    }
    throw std::runtime_error("no sample " + name);
}

// Every database among the samples, of any version.
inline std::vector<std::filesystem::path> sampleDatabases() {
    std::vector<std::filesystem::path> all;
    if (const auto samples = realSamples()) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(*samples)) {
            if (entry.path().extension() == ".mdb" || entry.path().extension() == ".accdb") {
                all.push_back(entry.path());
            }
        }
    }
    return all;
}

} // namespace relvane::test
