#include "jet/links.h"

#include <algorithm>

#include "platform/native_path.h"

namespace relvane::jet {
namespace {

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

std::string resolveLink(const Link& link, const LinkResolver& resolver, const Text& folder) {
    if (link.isOdbc) {
        // The source's name alone: the connect text may hold a password.
        throw RunTimeError(ErrorNumber::OdbcFailed, connectValue(link.source, u"DSN"));
    }
    if (!link.isJet()) {
        throw RunTimeError(ErrorNumber::IsamMissing, link.path);
    }
    if (!resolver || link.path.empty()) {
        throw RunTimeError(ErrorNumber::DatabasePathInvalid, link.path);
    }
    try {
        return nativePath(resolver(link.path, folder));
    } catch (const RunTimeError& error) {
        if (error.is(ErrorNumber::FileNotFound)) {
            throw RunTimeError(ErrorNumber::DatabaseNotFound, link.path);
        }
        if (error.is(ErrorNumber::PathNotFound)) {
            throw RunTimeError(ErrorNumber::DatabasePathInvalid, link.path);
        }
        throw;
    }
}

} // namespace relvane::jet
