#include "core/file_name_parts.h"

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

Text withSeparator(TextView folder) {
    Text result(folder);
    const std::size_t last = lastSeparator(folder);
    if (folder.empty() || last != folder.size() - 1) {
        result += last == TextView::npos ? u'\\' : folder[last];
    }
    return result;
}

} // namespace relvane
