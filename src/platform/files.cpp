#include "platform/files.h"

namespace relvane {

std::size_t lastSeparator(TextView path) {
    return path.find_last_of(u"\\/");
}

} // namespace relvane
