#include "sample_builder/index_tree.h"

#include <algorithm>

#include "sample_builder/byte_writer.h"

namespace relvane::samples {

namespace {

constexpr auto& layout = format.indexPage;
constexpr std::size_t room = pageSize - layout.firstEntry;
constexpr std::size_t rowPointerSize = 4;

using Entries = std::span<const Bytes>;

// The pages of a level: as many entries on each as fit without sharing a prefix.
std::vector<Entries> distribute(Entries entries, std::size_t entriesPerPage) {
    std::vector<Entries> pages;
    std::size_t start = 0, used = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::size_t size = entries[i].size();
        if (i > start && (used + size > room || i - start == entriesPerPage)) {
            pages.push_back(entries.subspan(start, i - start));
            start = i;
            used = 0;
        }
        used += size;
    }
    pages.push_back(entries.subspan(start));
    return pages;
}

std::size_t sharedPrefix(Entries entries) {
    if (entries.size() < 2) {
        return 0;
    }
    // Sorted, so what the first and the last share, all share. The row pointers stay whole.
    const Bytes &first = entries.front(), &last = entries.back();
    const auto shortest =
        std::ranges::min(entries, {}, [](const Bytes& entry) { return entry.size(); }).size();
    const auto differ = std::mismatch(first.begin(), first.end(), last.begin(), last.end()).first;
    return std::min(
        {static_cast<std::size_t>(differ - first.begin()), shortest - rowPointerSize, std::size_t{255}});
}

void writePage(std::span<std::uint8_t> page, jet::PageKind kind, PageNumber definition, unsigned level,
               const std::vector<Bytes>& entries, std::size_t prefix) {
    page[0] = static_cast<std::uint8_t>(kind);
    page[1] = 1;
    putAt(page, layout.owner, definition, 4);
    page[layout.prefixLength] = static_cast<std::uint8_t>(prefix);
    page[layout.prefixLength + 1] = static_cast<std::uint8_t>(level);
    std::size_t end = 0;
    for (const Bytes& entry : entries) {
        const auto part = std::span(entry).subspan(end == 0 ? 0 : prefix);
        std::ranges::copy(part, page.begin() + static_cast<std::ptrdiff_t>(layout.firstEntry + end));
        end += part.size();
        std::uint8_t& mask = page[layout.mask + end / 8];
        mask = static_cast<std::uint8_t>(mask | 1 << end % 8);
    }
    putAt(page, layout.freeBytes, room - end, 2);
}

struct Child {
    PageNumber page;
    Bytes lastEntry;
};

void link(PageFile& file, const std::vector<PageNumber>& level) {
    for (std::size_t i = 0; i < level.size(); ++i) {
        putAt(file.page(level[i]), layout.previous, i == 0 ? 0 : level[i - 1], 4);
        putAt(file.page(level[i]), layout.next, i + 1 == level.size() ? 0 : level[i + 1], 4);
    }
}

std::vector<Child> writeLeaves(PageFile& file, PageNumber definition, Entries entries, std::size_t perPage,
                               std::vector<PageNumber>& level) {
    std::vector<Child> children;
    for (const Entries part : distribute(entries, perPage)) {
        level.push_back(file.allocate());
        writePage(file.page(level.back()), jet::PageKind::LeafIndex, definition, 0,
                  {part.begin(), part.end()}, sharedPrefix(part));
        children.push_back({level.back(), part.empty() ? Bytes{} : part.back()});
    }
    return children;
}

// An inner page has, for each of its children, the child's last entry and page. The last child of the whole level
// has no entry: it is the tail page, so that the tree can grow at its end.
std::vector<Child> writeInner(PageFile& file, PageNumber definition, const std::vector<Child>& children,
                              std::size_t perPage, unsigned height, std::vector<PageNumber>& level) {
    std::vector<Bytes> entries;
    for (const Child& child : children) {
        ByteWriter entry;
        entry.bytes(child.lastEntry);
        for (const int shift : {24, 16, 8, 0}) {
            entry.u8(child.page >> shift & 0xFF);
        }
        entries.push_back(entry.data());
    }
    const Bytes tailEntry = children.back().lastEntry;
    entries.pop_back();

    std::vector<Child> parents;
    std::size_t used = 0;
    for (const Entries part : distribute(entries, perPage)) {
        level.push_back(file.allocate());
        used += part.size();
        writePage(file.page(level.back()), jet::PageKind::InnerIndex, definition, height,
                  {part.begin(), part.end()}, 0);
        parents.push_back({level.back(), children[used - 1].lastEntry});
    }
    putAt(file.page(level.back()), layout.tail, children.back().page, 4);
    parents.back().lastEntry = tailEntry;
    return parents;
}

} // namespace

IndexTree writeIndexTree(PageFile& file, PageNumber definition, const std::vector<Bytes>& entries,
                         std::size_t entriesPerPage) {
    // An inner page needs two children to be of use.
    const std::size_t perPage = entriesPerPage == 0 ? room : std::max<std::size_t>(2, entriesPerPage);
    IndexTree tree;
    std::vector<PageNumber> level;
    std::vector<Child> children = writeLeaves(file, definition, entries, perPage, level);
    for (unsigned height = 1; true; ++height) {
        link(file, level);
        tree.pages.insert(tree.pages.end(), level.begin(), level.end());
        if (children.size() == 1) {
            tree.root = children.front().page;
            return tree;
        }
        level.clear();
        children = writeInner(file, definition, children, perPage, height, level);
    }
}

} // namespace relvane::samples
