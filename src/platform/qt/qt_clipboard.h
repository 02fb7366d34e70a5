// The clipboard of the desktop.
#pragma once

#include "platform/clipboard.h"

namespace relvane::qt {

// What is put there goes with the program, unless the desktop keeps it. The desktop waits for others by itself, so none
// of the calls fails.
class QtClipboard final : public Clipboard {
public:
    void Clear() override;
    void SetData(const Picture& picture) override;
    Picture GetData() override;
};

} // namespace relvane::qt
