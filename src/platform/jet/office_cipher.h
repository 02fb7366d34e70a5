// The encryptions of Access 2007 and later, which are those of Office documents: a key is made from the password by
// hashing, a known value encrypted with it tells whether the password is the right one, and each page has a key or an
// initial vector of its own.
#pragma once

#include "jet/byte_span.h"
#include "jet/page_cipher.h"

namespace relvane::jet {

// For a header that is encryptedByAce; errors as openPageCipher.
std::unique_ptr<PageCipher> openOfficeCipher(const FileHeader& header, TextView password);

// The kind whose parameters are XML: Access 2010 and later.
std::unique_ptr<PageCipher> openAgileCipher(const ByteSpan& xml, std::uint32_t fileKey,
                                            const SecretBytes& password);

[[noreturn]] void failUnknownEncryption();

} // namespace relvane::jet
