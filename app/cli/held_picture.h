// The clipboard of a program without a desktop: nobody else sees what it holds.
#pragma once

#include "platform/clipboard.h"

namespace relvane::cli {

class HeldPicture final : public Clipboard {
public:
    void Clear() override { picture_ = {}; }
    void SetData(const Picture& picture) override { picture_ = picture; }
    Picture GetData() override { return picture_; }

private:
    Picture picture_;
};

} // namespace relvane::cli
