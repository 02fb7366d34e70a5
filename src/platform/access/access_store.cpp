#include "access/access_store.h"

#include <algorithm>
#include <set>

#include "access/design_bytes.h"

namespace relvane::access {
namespace {

// Of MSysAccessStorage. The row of a root lies in itself; there is another one for what is not saved yet.
constexpr std::uint32_t rootRow = 1;
constexpr std::int32_t storageRow = 1, streamRow = 2;

// Of MSysAccessObjects: row 0 is a header with the length of the whole, each other one a piece of the file. A piece that
// has no row was never written: it lies between the end of a stream and that of its last sector. The length can be
// short of the last sector. What a row says that cannot be is passed over: the streams that need it are damaged then.
Bytes joinPieces(const jet::JetFile& file, const jet::Table& table) {
    constexpr std::size_t lengthInHeader = 4;
    const jet::Column* column = table.definition().find(u"Data");
    const std::uint64_t step = column == nullptr ? 0 : column->length;
    Bytes whole;
    const auto makeRoom = [&](const jet::ByteSpan& row, std::uint64_t length) {
        row.require(length <= file.pages().size(), u"複合ファイルがファイルより長くなっています");
        whole.resize(std::max(whole.size(), static_cast<std::size_t>(length)));
    };
    jet::RowCursor cursor(table);
    while (const auto pointer = cursor.next()) {
        skipErrors([&] {
            const jet::NamedRow row(table, *pointer);
            const auto id = row.number(u"ID");
            const Bytes bytes = row.bytes(u"Data");
            const jet::ByteSpan piece(bytes, pointer->page);
            if (id == 0) {
                makeRoom(piece, piece.u32(lengthInHeader));
            } else if (id > 0) {
                const std::uint64_t at = (static_cast<std::uint64_t>(*id) - 1) * step;
                makeRoom(piece, at + piece.size());
                std::ranges::copy(bytes, whole.begin() + static_cast<std::ptrdiff_t>(at));
            }
        });
    }
    return whole;
}

} // namespace

TextView nameOf(StoreTable table) {
    return table == StoreTable::MSysAccessStorage ? u"MSysAccessStorage" : u"MSysAccessObjects";
}

std::optional<AccessStore> AccessStore::open(const jet::JetFile& file, StoreTable table) {
    const jet::Table* found = file.findTable(nameOf(table));
    if (found == nullptr) {
        return std::nullopt;
    }
    AccessStore store;
    if (table == StoreTable::MSysAccessStorage) {
        store.readRows(*found);
    } else if (Bytes bytes = joinPieces(file, *found); !bytes.empty()) {
        store.readCompoundFile(std::move(bytes));
    }
    return store;
}

// A number that comes twice counts once, so that no storage can lie in itself.
void AccessStore::readRows(const jet::Table& table) {
    rows_ = &table;
    root_ = rootRow;
    std::set<std::int32_t> seen{static_cast<std::int32_t>(rootRow)};
    jet::RowCursor cursor(table);
    while (const auto pointer = cursor.next()) {
        skipErrors([&] {
            const jet::NamedRow row(table, *pointer);
            const auto id = row.number(u"Id"), storage = row.number(u"ParentId"), type = row.number(u"Type");
            auto name = row.text(u"Name");
            if (id && storage && name && id != storage && (type == storageRow || type == streamRow) &&
                seen.insert(*id).second) {
                add(static_cast<std::uint32_t>(*storage),
                    {{std::move(*name), type == storageRow}, static_cast<std::uint32_t>(*id), *pointer});
            }
        });
    }
}

void AccessStore::readCompoundFile(Bytes bytes) {
    compound_.emplace(std::move(bytes), nameOf(StoreTable::MSysAccessObjects));
    root_ = CompoundFile::root;
    for (const CompoundEntry& entry : compound_->entries()) {
        add(entry.storage, {{entry.name, entry.isStorage}, entry.id});
    }
}

// No path leads to a name that is empty or has a "/", which none of Access has.
void AccessStore::add(std::uint32_t storage, Node node) {
    if (node.entry.name.empty() || node.entry.name.find(u'/') != Text::npos) {
        return;
    }
    std::pair key(storage, upperCase(node.entry.name));
    nodes_.emplace(std::move(key), std::move(node));
}

const AccessStore::Node* AccessStore::find(TextView path) const {
    std::uint32_t storage = root_;
    for (;;) {
        const std::size_t end = path.find(u'/');
        const auto found = nodes_.find({storage, upperCase(path.substr(0, end))});
        if (found == nodes_.end() || end == TextView::npos) {
            return found == nodes_.end() ? nullptr : &found->second;
        }
        storage = found->second.id; // nothing lies in a stream
        path.remove_prefix(end + 1);
    }
}

std::vector<AccessStore::Entry> AccessStore::children(TextView path) const {
    const Node* node = path.empty() ? nullptr : find(path);
    std::vector<Entry> found;
    if (!path.empty() && node == nullptr) {
        return found;
    }
    const std::uint32_t storage = node == nullptr ? root_ : node->id;
    for (auto at = nodes_.lower_bound({storage, Text()}); at != nodes_.end() && at->first.first == storage;
         ++at) {
        found.push_back(at->second.entry);
    }
    return found;
}

std::optional<Bytes> AccessStore::stream(TextView path) const {
    const Node* node = find(path);
    if (node == nullptr || node->entry.isStorage) {
        return std::nullopt;
    }
    return compound_ ? compound_->stream(node->id) : jet::NamedRow(*rows_, node->row).bytes(u"Lv");
}

// The list is four bytes, then for each object a 4, the length of the rest, the name in UTF-16 and the number that its
// storage has as a name.
std::vector<AccessStore::Object> AccessStore::objects(TextView path) const {
    constexpr TextView listName = u"\u0003DirData";
    constexpr std::size_t numberSize = 4;
    Text folder(path);
    folder += u'/';
    const Bytes list = stream(folder + Text(listName)).value_or(Bytes());
    std::vector<Object> found;
    if (list.empty()) {
        return found;
    }
    DesignBytes bytes(list, path, u"一覧");
    bytes.u32();
    while (!bytes.atEnd()) {
        const std::size_t at = bytes.offset();
        const unsigned kind = bytes.u8();
        const jet::ByteSpan item(bytes.take(bytes.u8()), 0);
        if (kind != 4 || item.size() < numberSize || item.size() % 2 != 0) {
            bytes.fail(at, u"項目が正しくありません");
        }
        Object object;
        const std::size_t nameSize = item.size() - numberSize;
        object.name = textOfUtf16(item.part(0, nameSize).bytes());
        object.path = folder + toText(static_cast<long long>(item.u32(nameSize)));
        found.push_back(std::move(object));
    }
    return found;
}

} // namespace relvane::access
