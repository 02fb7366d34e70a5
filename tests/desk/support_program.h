// The developer support of the whole program on a real file.
#pragma once

#include "real_program.h"
#include "support/frm_sien.h"
#include "support/preparation.h"
#include "support/table_usage.h"

namespace relvane::test {

struct SupportProgram : RealProgram {
    using RealProgram::RealProgram;

    FrmSien sien{desk->context};

    // False when the program ended by it.
    bool run(void (*command)(FrmSien& sien)) {
        return desk->dispatch([&] { command(sien); });
    }
    // The preparation, without its box.
    void prepare() {
        run(cmdSyoki_Click);
        dialogs.boxes.clear();
    }
    // Where the table is used. False when the program ended by it.
    bool findUsage(const Text& table) {
        sien.cboTable.Clear();
        sien.cboTable.AddItem(table);
        sien.cboTable.ListIndex = 0;
        return run(cmdLinkTable_Click);
    }
    // The rows of the table, a line each.
    std::vector<Text> listed(TextView table, std::initializer_list<TextView> fields,
                             TextView between = u" | ") {
        std::vector<Text> all;
        for (const StoredRow& row : rows(table)) {
            Text joined;
            for (const TextView field : fields) {
                joined += (field == *fields.begin() ? Text() : Text(between)) + toText(row.at(Text(field)));
            }
            all.push_back(std::move(joined));
        }
        return all;
    }
};

} // namespace relvane::test
