#include "form_pictures.h"

#include <iostream>
#include <set>

#include "arguments.h"
#include "formview/picture_files.h"
#include "platform/bitmap_file.h"
#include "platform/native_path.h"
#include "report_output.h"

namespace relvane::cli {
namespace {

namespace fs = std::filesystem;

constexpr int needsAnotherForm = 2450;

struct PictureFormat {
    std::string_view extension;
    Bytes (*encode)(const Picture& picture);
};
constexpr PictureFormat pictureFormats[] = {{".png", formview::pngFile}, {".bmp", bitmapFile}};

const PictureFormat& formatOf(const fs::path& file) {
    for (const PictureFormat& format : pictureFormats) {
        if (equalsIgnoringCase(fromUtf8(file.extension().string()), fromUtf8(format.extension))) {
            return format;
        }
    }
    throw UsageError("a picture is a .png or a .bmp: " + file.string());
}

// A name of Access as one of a file: it may hold what stands between folders, and begin with a dot.
std::string fileNameOf(const Text& form, std::set<Text>& taken) {
    Text name;
    for (const char16_t unit : form) {
        name += unit == u'/' || unit == u'\\' || unit < u' ' ? u'_' : unit;
    }
    if (name.starts_with(u'.')) {
        name[0] = u'_';
    }
    while (!taken.insert(upperCase(name)).second) {
        name += u'_';
    }
    return toUtf8(name) + ".png";
}

void say(const Text& form, const RunTimeError& error, std::string_view consequence) {
    std::cerr << "relvane-cli: " << toUtf8(form) << ": ｴﾗｰNo:" << error.number() << " "
              << toUtf8(error.description()) << consequence << '\n';
}

} // namespace

Picture pictureOf(Session& session, const Text& form, const PictureChoice& choice) {
    access::Application& application = need(session.desk.context.TargetApp);
    application.DoCmd().OpenForm(form, choice.design ? access::acViewDesign : access::acViewNormal);
    Picture picture = application.Forms(form).picture(choice.wholeWindow);
    application.DoCmd().Close(access::acForm, form, access::acSaveNo);
    return picture;
}

void requirePictureFile(const fs::path& file) {
    formatOf(file);
}

void writePicture(const Picture& picture, const fs::path& file) {
    LinuxFiles().write(textOfNativePath(file.string()), formatOf(file).encode(picture));
}

bool writePicturesOfForms(Session& session, const fs::path& folder,
                          const std::function<void(const fs::path&)>& written) {
    bool well = true;
    std::set<Text> taken;
    for (const Text& form : session.desk.frmRelvane.cboFmImage.List()) {
        const fs::path file = folder / fileNameOf(form, taken);
        makeFolder(folder);
        try {
            Picture picture;
            try {
                picture = pictureOf(session, form, {});
            } catch (const RunTimeError& error) {
                if (error.number() != needsAnotherForm) {
                    throw;
                }
                say(form, error, "; drawn as it is designed");
                picture = pictureOf(session, form, {.design = true});
            }
            writePicture(picture, file);
            written(file);
        } catch (const RunTimeError& error) {
            say(form, error, "");
            well = false;
        }
    }
    return well;
}

} // namespace relvane::cli
