// Where Access 2000 and later keep what they add to a database: designs, macros and the VBA project, in one tree of
// storages and streams. Access 2000 keeps it as a compound file that is cut into the rows of a table, later versions as
// a table with a row for each storage and stream.
#pragma once

#include <map>
#include <utility>

#include "access/compound_file.h"
#include "jet/jet_file.h"

namespace relvane::access {

enum class StoreTable { MSysAccessStorage, MSysAccessObjects };
TextView nameOf(StoreTable table);

// A path is names with "/" between them, from the root on, without regard to case: "VBA/VBAProject/PROJECT". The empty
// one is the root's.
class AccessStore {
public:
    struct Entry {
        Text name;
        bool isStorage = false; // or a stream
    };
    struct Object {
        Text name;
        Text path; // of its storage
    };

    // Nothing when the file does not have the table. Error 3049 when the compound file, its directory or the table itself
    // is damaged; a row that cannot be read counts as missing. `file` must outlive the store.
    static std::optional<AccessStore> open(const jet::JetFile& file, StoreTable table);

    // Empty when there is no such storage.
    std::vector<Entry> children(TextView path) const;
    // Nothing when there is no such stream, error 3049 when it is damaged.
    std::optional<Bytes> stream(TextView path) const;
    // The objects of "Forms", "Reports", "Modules" or "Scripts", as the list beside their storages names them. Error
    // 3049 when the list is damaged.
    std::vector<Object> objects(TextView path) const;

private:
    struct Node {
        Entry entry;
        std::uint32_t id = 0;
        jet::RowPointer row{}; // in MSysAccessStorage
    };

    AccessStore() = default;
    void readRows(const jet::Table& table);
    void readCompoundFile(Bytes bytes);
    void add(std::uint32_t storage, Node node);
    const Node* find(TextView path) const;

    std::uint32_t root_ = 0;
    std::map<std::pair<std::uint32_t, Text>, Node>
        nodes_;                        // by the id of the storage and the name in capitals
    const jet::Table* rows_ = nullptr; // the streams lie here, or else in the compound file
    std::optional<CompoundFile> compound_;
};

} // namespace relvane::access
