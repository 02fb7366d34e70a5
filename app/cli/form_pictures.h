// Pictures of forms as files.
#pragma once

#include <filesystem>

#include "session.h"

namespace relvane::cli {

struct PictureChoice {
    bool design = false;      // as the designer shows the form; else in use
    bool wholeWindow = false; // with frame and title bar
};

// Of a form of the target that the session has selected. 2102, 3049; in use 2450 for a form that needs another one.
Picture pictureOf(Session& session, const Text& form, const PictureChoice& choice);

// A file as its extension says, .png or .bmp; UsageError for another. 76, 70, 61, 57.
void requirePictureFile(const std::filesystem::path& file);
void writePicture(const Picture& picture, const std::filesystem::path& file);

// Every form of the target as a .png in `folder`, in use where it opens alone, else as it is designed, which is said on
// standard error. What cannot be drawn is said too, and makes it false.
bool writePicturesOfForms(Session& session, const std::filesystem::path& folder,
                          const std::function<void(const std::filesystem::path&)>& written);

} // namespace relvane::cli
