#include "core/windows_name.h"

namespace relvane {

Text GetWindowsName(const SystemVersion& version) {
    struct Known {
        int minor;
        TextView name;
    };
    static constexpr Known known[] = {{0, u"Win95"}, {10, u"Win98"}, {90, u"WinMe"}};
    if (version.platform == 1 && version.major == 4) {
        for (const Known& system : known) {
            if (system.minor == version.minor) {
                return Text(system.name);
            }
        }
    }
    return Text(unknownWindows);
}

} // namespace relvane
