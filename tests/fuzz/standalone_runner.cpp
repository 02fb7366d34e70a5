// Drives a fuzz target without a fuzzing engine, so that its corpus is a test like any other:
//
//     fuzz_x [--mutations N] [--seed S] [--write FILE] FILE_OR_FOLDER ...
//
// plays every file, then N mutations of them. The same arguments give the same mutations, and the number that is
// printed when one fails (on standard error, before it is played, once --verbose is given) repeats it alone:
// --only NUMBER. --write keeps that mutation as a file for the corpus.

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;
using Input = std::vector<std::uint8_t>;

struct Options {
    std::uint64_t mutations = 0, seed = 1;
    std::optional<std::uint64_t> only;
    std::string write;
    bool verbose = false;
    std::vector<fs::path> paths;
};

std::uint64_t numberOf(std::string_view text) {
    std::uint64_t number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc()) {
        throw std::invalid_argument("not a number: " + std::string(text));
    }
    return number;
}

Options parse(int count, char** arguments) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        const auto next = [&] {
            if (++i == count) {
                throw std::invalid_argument("a value is missing behind " + std::string(argument));
            }
            return std::string_view(arguments[i]);
        };
        if (argument == "--mutations") {
            options.mutations = numberOf(next());
        } else if (argument == "--seed") {
            options.seed = numberOf(next());
        } else if (argument == "--only") {
            options.only = numberOf(next());
        } else if (argument == "--write") {
            options.write = next();
        } else if (argument == "--verbose") {
            options.verbose = true;
        } else {
            options.paths.emplace_back(argument);
        }
    }
    return options;
}

std::vector<Input> load(const std::vector<fs::path>& paths) {
    std::vector<fs::path> files;
    for (const fs::path& path : paths) {
        if (fs::is_directory(path)) {
            for (const auto& entry : fs::directory_iterator(path)) {
                files.push_back(entry.path());
            }
        } else if (fs::exists(path)) {
            files.push_back(path);
        }
    }
    std::ranges::sort(files);
    std::vector<Input> inputs;
    for (const fs::path& file : files) {
        if (fs::is_regular_file(file) && file.filename().string().front() != '.') {
            std::ifstream stream(file, std::ios::binary);
            inputs.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
        }
    }
    return inputs;
}

// Changes a few places of the input: single bits and bytes, numbers that are often wrong, blocks from elsewhere.
// Half of the places lie in the first bytes of a block of 1 KB, where the records of many formats have their heads.
class Mutator {
public:
    explicit Mutator(std::uint64_t seed) : random_(seed) {}

    void mutate(Input& input) {
        if (input.empty()) {
            input.push_back(0);
        }
        for (std::uint64_t changes = 1 + below(6); changes > 0; --changes) {
            change(input);
        }
        if (below(50) == 0) {
            input.resize(below(input.size()) + 1);
        }
    }

private:
    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }

    std::size_t place(const Input& input) {
        std::uint64_t at = below(input.size());
        if (below(2) == 0) {
            at = at / 1024 * 1024 + below(64);
        }
        return std::min<std::size_t>(at, input.size() - 1);
    }

    void change(Input& input) {
        static constexpr std::uint32_t numbers[] = {
            0,      1,       2,        0x7F,   0x80,   0xFF,   0x100,      0x7FFF,     0x8000,
            0xFFFF, 0x10000, 0xFFFFFF, 0x4000, 0xC000, 0x1FFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        const std::size_t at = place(input);
        switch (below(5)) {
        case 0:
            input[at] ^= static_cast<std::uint8_t>(1u << below(8));
            break;
        case 1:
            input[at] = static_cast<std::uint8_t>(below(256));
            break;
        case 2: {
            const std::uint32_t number = numbers[below(std::size(numbers))];
            const std::size_t bytes = std::size_t{1} << below(3);
            for (std::size_t i = 0; i < bytes && at + i < input.size(); ++i) {
                input[at + i] = static_cast<std::uint8_t>(number >> 8 * i);
            }
            break;
        }
        case 3: {
            const std::size_t from = place(input);
            const std::size_t length =
                std::min({std::size_t{1} << below(8), input.size() - at, input.size() - from});
            std::vector<std::uint8_t> block(input.begin() + static_cast<std::ptrdiff_t>(from),
                                            input.begin() + static_cast<std::ptrdiff_t>(from + length));
            std::ranges::copy(block, input.begin() + static_cast<std::ptrdiff_t>(at));
            break;
        }
        default:
            input[at] = static_cast<std::uint8_t>(input[at] + (below(2) == 0 ? 1 : -1));
        }
    }

    std::mt19937_64 random_;
};

int run(const Options& options) {
    const std::vector<Input> inputs = load(options.paths);
    if (inputs.empty()) {
        std::cerr << "no input found\n";
        return 2;
    }
    if (!options.only) {
        for (const Input& input : inputs) {
            LLVMFuzzerTestOneInput(input.data(), input.size());
        }
    }
    const std::uint64_t first = options.only.value_or(0);
    const std::uint64_t end = options.only ? first + 1 : options.mutations;
    for (std::uint64_t number = first; number < end; ++number) {
        if (options.verbose) {
            std::cerr << number << "\n";
        }
        Input input = inputs[number % inputs.size()];
        Mutator(options.seed * 1000003 + number).mutate(input);
        if (!options.write.empty()) {
            std::ofstream(options.write, std::ios::binary)
                .write(reinterpret_cast<const char*>(input.data()),
                       static_cast<std::streamsize>(input.size()));
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::cout << inputs.size() << " inputs and " << end - first << " mutations played\n";
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    try {
        return run(parse(count, arguments));
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 2;
    }
}
