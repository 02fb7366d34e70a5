#include "system/link_paths.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

constexpr TextView separators = u"\\/";

// A path in its components, without "." and, as far as it goes, without "..".
struct LinkPath {
    std::size_t leadingSeparators = 0; // 0 relative or with a drive, 1 from the root, 2 a server's
    std::vector<Text> parts;
};

bool isDrive(TextView part) {
    return part.size() == 2 && part[1] == u':';
}

void addPart(LinkPath& path, TextView part) {
    std::vector<Text>& parts = path.parts;
    if (part.empty() || part == u".") {
        return;
    }
    if (part != u"..") {
        parts.emplace_back(part);
    } else if (!parts.empty() && parts.back() != u"..") {
        if (parts.size() > 1 || !isDrive(parts.front())) { // above a drive there is nothing
            parts.pop_back();
        }
    } else if (path.leadingSeparators == 0) {
        parts.emplace_back(part);
    }
}

LinkPath parse(TextView path) {
    LinkPath parsed;
    parsed.leadingSeparators =
        std::min<std::size_t>(std::min(path.find_first_not_of(separators), path.size()), 2);
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find_first_of(separators, start), path.size());
        addPart(parsed, path.substr(start, end - start));
        start = end + 1;
    }
    return parsed;
}

bool beginsWith(const LinkPath& path, const LinkPath& prefix) {
    return path.leadingSeparators == prefix.leadingSeparators && path.parts.size() >= prefix.parts.size() &&
           std::equal(prefix.parts.begin(), prefix.parts.end(), path.parts.begin(),
                      [](const Text& left, const Text& right) { return equalsIgnoringCase(left, right); });
}

// Where to look: these components below this folder.
struct Place {
    fs::path folder;
    std::span<const Text> parts;
};

std::vector<Place> mappedPlaces(const LinkPath& path, std::span<const LinkMapping> mappings) {
    std::vector<Place> places;
    for (const LinkMapping& mapping : mappings) {
        const LinkPath prefix = parse(mapping.prefix);
        if (beginsWith(path, prefix) && path.parts.size() > prefix.parts.size()) {
            places.push_back({mapping.folder, std::span(path.parts).subspan(prefix.parts.size())});
        }
    }
    std::ranges::stable_sort(places, {}, [](const Place& place) { return place.parts.size(); });
    return places;
}

bool isFile(const fs::path& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

bool isFolder(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

// The entries of that name: the one of exactly this spelling, then the others by name.
std::vector<fs::path> namesakes(const fs::path& folder, const Text& name) {
    const fs::path exact = nativePath(name);
    std::vector<fs::path> others;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const fs::path entryName = entry->path().filename();
        if (entryName != exact && equalsIgnoringCase(textOfNativePath(entryName.native()), name)) {
            others.push_back(entry->path());
        }
    }
    std::ranges::sort(others);
    others.insert(others.begin(), folder / exact); // there or not: "." and ".." are no entries
    return others;
}

using Test = bool (*)(const fs::path&);

std::optional<fs::path> find(const Place& place, Test isWanted) {
    fs::path asSpelt = place.folder;
    for (const Text& part : place.parts) {
        asSpelt /= nativePath(part);
    }
    if (isWanted(asSpelt)) {
        return asSpelt;
    }
    // One level after the other, each folder once however many ways lead there: links between folders may go round.
    std::vector<fs::path> level{place.folder};
    for (const Text& part : place.parts) {
        std::vector<fs::path> next;
        std::set<fs::path> seen;
        for (const fs::path& folder : level) {
            for (fs::path& entry : namesakes(folder, part)) {
                std::error_code error;
                const fs::path canonical = fs::canonical(entry, error);
                if (!error && seen.insert(canonical).second) {
                    next.push_back(std::move(entry));
                }
            }
        }
        level = std::move(next);
    }
    const auto found = std::ranges::find_if(level, isWanted);
    return found == level.end() ? std::nullopt : std::optional(*found);
}

} // namespace

bool isSamePrefix(TextView left, TextView right) {
    const LinkPath a = parse(left), b = parse(right);
    return a.parts.size() == b.parts.size() && beginsWith(a, b);
}

Text resolveLinkPath(const Text& path, const Text& folder, std::span<const LinkMapping> mappings) {
    const LinkPath link = parse(path);
    const bool namesFile = !link.parts.empty() && lastSeparator(path) != path.size() - 1;
    if (!namesFile || path.find(u'\0') != Text::npos) {
        throw RunTimeError(ErrorNumber::FileNotFound, path);
    }
    const fs::path beside = nativePath(folder);
    std::vector<Place> places = mappedPlaces(link, mappings);
    places.push_back({link.leadingSeparators == 0 ? beside : fs::path("/"), link.parts});
    for (const Place& place : places) {
        if (const auto found = find(place, isFile)) {
            return textOfNativePath(found->native());
        }
    }
    if (const auto found = find({beside, std::span(link.parts).last(1)}, isFile)) {
        return textOfNativePath(found->native());
    }
    const bool folderExists = std::ranges::any_of(places, [](const Place& place) {
        return find({place.folder, place.parts.first(place.parts.size() - 1)}, isFolder).has_value();
    });
    throw RunTimeError(folderExists ? ErrorNumber::FileNotFound : ErrorNumber::PathNotFound, path);
}

} // namespace relvane
