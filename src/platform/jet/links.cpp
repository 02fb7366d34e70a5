#include "jet/links.h"

#include <algorithm>
#include <filesystem>

#include "platform/files.h"
#include "platform/native_path.h"

namespace relvane::jet {
namespace {

namespace fs = std::filesystem;

bool isFile(const std::string& path) {
    std::error_code ignored;
    return !path.empty() && fs::is_regular_file(path, ignored);
}

// The value of "KEY=value;" in a connect text.
Text connectValue(TextView connect, TextView key) {
    for (std::size_t start = 0; start < connect.size();) {
        const std::size_t end = std::min(connect.find(u';', start), connect.size());
        const TextView part = connect.substr(start, end - start);
        if (part.size() > key.size() && part[key.size()] == u'=' &&
            equalsIgnoringCase(part.substr(0, key.size()), key)) {
            return Text(part.substr(key.size() + 1));
        }
        start = end + 1;
    }
    return {};
}

} // namespace

bool Link::isJet() const {
    const TextView kind = TextView(source).substr(0, std::min(source.find(u';'), source.size()));
    return !isOdbc && (kind.empty() || equalsIgnoringCase(kind, u"MS Access"));
}

Link readLink(const Catalogue& catalogue, const CatalogueEntry& entry) {
    const NamedRow row = catalogue.row(entry);
    Link link;
    link.isOdbc = entry.type == ObjectType::OdbcLink;
    link.source = row.text(u"Connect").value_or(Text());
    link.path = row.text(u"Database").value_or(Text());
    link.table = row.text(u"ForeignName").value_or(Text());
    if (link.isOdbc) {
        link.connect = u"ODBC;" + link.source;
    } else {
        link.connect = link.source;
        if (link.connect.empty() || link.connect.back() != u';') {
            link.connect += u';';
        }
        link.connect += u"DATABASE=" + link.path;
        link.password = connectValue(link.source, u"PWD");
    }
    return link;
}

std::string resolveLink(const Link& link, const LinkResolver& resolver) {
    if (link.isOdbc) {
        // The source's name alone: the connect text may hold a password.
        throw RunTimeError(ErrorNumber::OdbcFailed, connectValue(link.source, u"DSN"));
    }
    if (!link.isJet()) {
        throw RunTimeError(ErrorNumber::IsamMissing, link.path);
    }
    if (const auto found = resolver(link.path)) {
        return *found;
    }
    std::error_code ignored;
    const fs::path folder = fs::path(nativePath(link.path)).parent_path();
    const bool folderExists = !link.path.empty() && (folder.empty() || fs::is_directory(folder, ignored));
    throw RunTimeError(folderExists ? ErrorNumber::DatabaseNotFound : ErrorNumber::DatabasePathInvalid,
                       link.path);
}

LinkResolver besideTheTarget(std::string folder) {
    return [folder = std::move(folder)](const Text& path) -> std::optional<std::string> {
        if (const std::string itself = nativePath(path); isFile(itself)) {
            return itself;
        }
        const std::size_t separator = lastSeparator(path);
        const TextView name = TextView(path).substr(separator == TextView::npos ? 0 : separator + 1);
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            if (equalsIgnoringCase(textOfNativePath(entry->path().filename().native()), name) &&
                isFile(entry->path().native())) {
                return entry->path().native();
            }
        }
        return std::nullopt;
    };
}

} // namespace relvane::jet
