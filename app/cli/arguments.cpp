#include "arguments.h"

#include <algorithm>

namespace relvane::cli {

Arguments::Arguments(std::span<const std::string> words, std::span<const Option> known) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (optionsEnded || word.size() < 2 || !word.starts_with("--")) {
            positional_.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const auto option = std::ranges::find(known, name, &Option::name);
        if (option == known.end()) {
            throw UsageError("unknown option " + name);
        }
        if (has(name) && !option->repeatable) {
            throw UsageError(name + " is given twice");
        }
        if (option->valueName.empty()) {
            if (equals != std::string::npos) {
                throw UsageError(name + " takes no value");
            }
            given_.push_back({name, {}});
        } else if (equals != std::string::npos) {
            given_.push_back({name, word.substr(equals + 1)});
        } else if (i + 1 < words.size()) {
            given_.push_back({name, words[++i]});
        } else {
            throw UsageError(name + " needs a value: " + std::string(option->valueName));
        }
    }
}

std::optional<std::string> Arguments::value(std::string_view option) const {
    const auto found = std::ranges::find(given_, option, &Given::name);
    return found == given_.end() ? std::nullopt : std::optional(found->value);
}

std::vector<std::string> Arguments::values(std::string_view option) const {
    std::vector<std::string> all;
    for (const Given& given : given_) {
        if (given.name == option) {
            all.push_back(given.value);
        }
    }
    return all;
}

} // namespace relvane::cli
