#include "sample_builder/index_tree.h"

#include <algorithm>
#include <stdexcept>

#include "sample_builder/byte_writer.h"

namespace relvane::samples {

namespace {

constexpr std::size_t rowPointerSize = 4;

using Entries = std::span<const Bytes>;

struct Child {
    PageNumber page;
    Bytes lastEntry;
};

class TreeWriter {
public:
    // An inner page needs two children to be of use.
    TreeWriter(PageFile& file, PageNumber definition, std::size_t entriesPerPage)
        : file_(file),
          layout_(file.places().indexPage),
          room_(file.pageSize() - layout_.firstEntry),
          definition_(definition),
          perPage_(entriesPerPage == 0 ? room_ : std::max<std::size_t>(2, entriesPerPage)) {}

    IndexTree write(const std::vector<Bytes>& entries) {
        IndexTree tree;
        std::vector<Child> children = writeLeaves(entries);
        for (unsigned height = 1; true; ++height) {
            link();
            tree.pages.insert(tree.pages.end(), level_.begin(), level_.end());
            if (children.size() == 1) {
                tree.root = children.front().page;
                return tree;
            }
            level_.clear();
            children = writeInner(children, height);
        }
    }

private:
    // The pages of a level: as many entries on each as fit without sharing a prefix.
    std::vector<Entries> distribute(Entries entries) const {
        std::vector<Entries> pages;
        std::size_t start = 0, used = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const std::size_t size = entries[i].size();
            if (size > room_) {
                throw std::invalid_argument("a key does not fit a page of its index");
            }
            if (i > start && (used + size > room_ || i - start == perPage_)) {
                pages.push_back(entries.subspan(start, i - start));
                start = i;
                used = 0;
            }
            used += size;
        }
        pages.push_back(entries.subspan(start));
        return pages;
    }

    std::size_t sharedPrefix(Entries entries) const {
        if (entries.size() < 2) {
            return 0;
        }
        // Sorted, so what the first and the last share, all share. The row pointers stay whole.
        const Bytes &first = entries.front(), &last = entries.back();
        const auto shortest =
            std::ranges::min(entries, {}, [](const Bytes& entry) { return entry.size(); }).size();
        const auto differ = std::mismatch(first.begin(), first.end(), last.begin(), last.end()).first;
        const std::size_t longest = (std::size_t{1} << 8 * layout_.prefixLengthSize) - 1;
        return std::min(
            {static_cast<std::size_t>(differ - first.begin()), shortest - rowPointerSize, longest});
    }

    void writePage(jet::PageKind kind, unsigned height, Entries entries, std::size_t prefix) {
        level_.push_back(file_.allocate());
        const auto page = file_.page(level_.back());
        page[0] = static_cast<std::uint8_t>(kind);
        page[1] = 1;
        putAt(page, layout_.owner, definition_, 4);
        putAt(page, layout_.prefixLength, prefix, layout_.prefixLengthSize);
        putAt(page, layout_.prefixLength + layout_.prefixLengthSize, height, 1);
        std::size_t end = 0;
        for (const Bytes& entry : entries) {
            const auto part = std::span(entry).subspan(end == 0 ? 0 : prefix);
            std::ranges::copy(part, page.begin() + static_cast<std::ptrdiff_t>(layout_.firstEntry + end));
            end += part.size();
            std::uint8_t& mask = page[layout_.mask + end / 8];
            mask = static_cast<std::uint8_t>(mask | 1 << end % 8);
        }
        putAt(page, layout_.freeBytes, room_ - end, 2);
    }

    void link() {
        for (std::size_t i = 0; i < level_.size(); ++i) {
            putAt(file_.page(level_[i]), layout_.previous, i == 0 ? 0 : level_[i - 1], 4);
            putAt(file_.page(level_[i]), layout_.next, i + 1 == level_.size() ? 0 : level_[i + 1], 4);
        }
    }

    std::vector<Child> writeLeaves(Entries entries) {
        std::vector<Child> children;
        for (const Entries part : distribute(entries)) {
            writePage(jet::PageKind::LeafIndex, 0, part, sharedPrefix(part));
            children.push_back({level_.back(), part.empty() ? Bytes{} : part.back()});
        }
        return children;
    }

    // An inner page has, for each of its children, the child's last entry and page. The last child of the whole level
    // has no entry: it is the tail page, so that the tree can grow at its end.
    std::vector<Child> writeInner(const std::vector<Child>& children, unsigned height) {
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
        for (const Entries part : distribute(entries)) {
            used += part.size();
            writePage(jet::PageKind::InnerIndex, height, part, 0);
            parents.push_back({level_.back(), children[used - 1].lastEntry});
        }
        putAt(file_.page(level_.back()), layout_.tail, children.back().page, 4);
        parents.back().lastEntry = tailEntry;
        return parents;
    }

    PageFile& file_;
    const jet::JetFormat::IndexPage& layout_;
    std::size_t room_;
    PageNumber definition_;
    std::size_t perPage_;
    std::vector<PageNumber> level_; // the pages of the level being written
};

} // namespace

IndexTree writeIndexTree(PageFile& file, PageNumber definition, const std::vector<Bytes>& entries,
                         std::size_t entriesPerPage) {
    return TreeWriter(file, definition, entriesPerPage).write(entries);
}

} // namespace relvane::samples
