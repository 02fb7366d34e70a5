// The words of a command line: options and the rest, read by one list of options per command.
#pragma once

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace relvane::cli {

// The person called the program in a way it does not know: exit 2, with the sentence and the command's usage.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Option {
    std::string_view name;      // "--out"
    std::string_view valueName; // "DIR"; empty for an option without a value
    std::string_view help;
    bool repeatable = false; // may be given more than once
};

// Options may stand anywhere, "--name value" or "--name=value"; behind "--" all words are positional.
class Arguments {
public:
    // Throws UsageError for an option that is not in `known`, one without its value, one given twice that is not
    // repeatable.
    Arguments(std::span<const std::string> words, std::span<const Option> known);

    const std::vector<std::string>& positional() const { return positional_; }
    bool has(std::string_view option) const { return value(option).has_value(); }
    std::optional<std::string> value(std::string_view option) const; // "" for an option without a value
    std::vector<std::string> values(std::string_view option) const;  // of a repeatable option, as given

private:
    struct Given {
        std::string name, value;
    };
    std::vector<std::string> positional_;
    std::vector<Given> given_;
};

} // namespace relvane::cli
