// The clipboard of the desktop, as far as pictures go.
#pragma once

#include "platform/picture.h"

namespace relvane {

class Clipboard {
public:
    virtual ~Clipboard() = default;

    // Errors of all three: 520 and 521 while another program holds the clipboard.
    virtual void Clear() = 0;
    virtual void SetData(const Picture& picture) = 0; // other programs can paste it
    virtual Picture GetData() = 0;                    // empty when it holds no picture
};

} // namespace relvane
