// Page 0 of a database file: its version, text encoding, password and page key.
#pragma once

#include <cstdint>

#include "jet/byte_source.h"
#include "jet/jet_format.h"
#include "platform/text.h"

namespace relvane::jet {

struct FileHeader {
    const JetFormat* format = nullptr;
    int version = 0; // 0 Jet 3, 1 Jet 4, 2 and up ACE
    int codePage = 1252;
    int statedCodePage = 1252;   // as the file says, which may be a page that nobody knows
    std::int32_t sortOrder = 0;  // locale id
    std::uint32_t pageKey = 0;   // 0: the pages are plain
    Text password;               // empty: none, or one that the file does not tell (encryptedByAce)
    bool isBeforeJet3 = false;   // Access 2.0 and older: nothing else of the header is read
    bool encryptedByAce = false; // by Access 2007 and later, with a key made from the password
    Bytes encryption;            // how, as office_cipher.h reads it

    bool isJet3() const { return version == 0; }
    bool hasPassword() const { return encryptedByAce || !password.empty(); }
};

// Error 3343 when the file is no Jet database.
FileHeader readFileHeader(const ByteSource& source);

} // namespace relvane::jet
