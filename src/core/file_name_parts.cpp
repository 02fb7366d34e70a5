#include "core/file_name_parts.h"

#include <algorithm>

#include "core/text_functions.h"
#include "platform/files.h"

namespace relvane {

Text GetFileNamePart(TextView path) {
    return Text(path.substr(lastSeparator(path) + 1)); // npos + 1 is 0
}

Text GetFolderPart(TextView path) {
    return Text(path.substr(0, lastSeparator(path) + 1));
}

Text GetValuePart(TextView line) {
    const std::int32_t equals = InStr(line, u"=");
    return equals == 0 ? Text() : Trim(Mid(line, equals + 1, 255));
}

Text withExtension(TextView path, TextView extension) {
    const auto length = static_cast<std::int64_t>(extension.size());
    const bool typed = UCase(Right(path, length - 1)) == UCase(Mid(extension, 2));
    return (typed ? Left(path, static_cast<std::int64_t>(path.size()) - length) : Text(path)) +
           Text(extension);
}

std::span<const TextView> databaseExtensions() {
    static constexpr TextView extensions[] = {u".mdb", u".accdb", u".mde", u".accde", u".accdr", u".mda"};
    return extensions;
}

namespace {

// Of the extension that the path ends in; 0 for none.
std::size_t extensionLength(TextView path) {
    for (const TextView extension : databaseExtensions()) {
        if (path.size() >= extension.size() &&
            equalsIgnoringCase(path.substr(path.size() - extension.size()), extension)) {
            return extension.size();
        }
    }
    return 0;
}

} // namespace

bool isDatabaseFile(TextView path) {
    return extensionLength(path) != 0;
}

Text withoutDatabaseExtension(TextView path) {
    constexpr std::size_t usualLength = 4;
    const std::size_t length = extensionLength(path);
    return Text(path.substr(0, path.size() - std::min(length == 0 ? usualLength : length, path.size())));
}

Text withSeparator(TextView folder) {
    Text result(folder);
    const std::size_t last = lastSeparator(folder);
    if (folder.empty() || last != folder.size() - 1) {
        result += last == TextView::npos ? u'\\' : folder[last];
    }
    return result;
}

} // namespace relvane
