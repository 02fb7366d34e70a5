#include "formview/enhanced_metafile.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QPainter>
#include <QSvgRenderer>

#include <emf2svg.h>

namespace relvane::formview {
namespace {

constexpr std::size_t shortestMetafile = 88; // its header alone
constexpr qsizetype longestSvg = 64 * 1024 * 1024;

// In the child: writes the SVG and ends, with 0 when all of it went out.
[[noreturn]] void convertInto(int end, access::ByteView metafile) {
    constexpr rlimit seconds{5, 5};
    ::setrlimit(RLIMIT_CPU, &seconds);
    const int nowhere = ::open("/dev/null", O_WRONLY);
    ::dup2(nowhere, STDERR_FILENO);
    std::vector<char> bytes(metafile.begin(), metafile.end()); // the library wants to write there
    generatorOptions options{};
    options.svgDelimiter = true;
    options.emfplus = true;
    char* svg = nullptr;
    std::size_t length = 0;
    if (emf2svg(bytes.data(), bytes.size(), &svg, &length, &options) == 0 || svg == nullptr) {
        ::_exit(EXIT_FAILURE);
    }
    for (std::size_t at = 0; at < length;) {
        const ssize_t written = ::write(end, svg + at, length - at);
        if (written <= 0) {
            ::_exit(EXIT_FAILURE);
        }
        at += static_cast<std::size_t>(written);
    }
    ::_exit(EXIT_SUCCESS);
}

QByteArray readAll(int end) {
    QByteArray all;
    char part[65536];
    for (;;) {
        const ssize_t got = ::read(end, part, sizeof part);
        if (got > 0 && all.size() < longestSvg) {
            all.append(part, static_cast<qsizetype>(got));
        } else if (got >= 0 || errno != EINTR) {
            return all;
        }
    }
}

// The metafile as SVG; empty when it cannot be read. The library is at home with whole files: what damaged ones do to it
// stays in a process of its own.
QByteArray svgOf(access::ByteView metafile) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return {};
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        convertInto(ends[1], metafile);
    }
    ::close(ends[1]);
    const QByteArray svg = child > 0 ? readAll(ends[0]) : QByteArray();
    ::close(ends[0]);
    int status = EXIT_FAILURE;
    while (child > 0 && ::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status == 0 ? svg : QByteArray();
}

} // namespace

std::optional<QImage> enhancedMetafileImage(access::ByteView metafile, QSize size) {
    if (metafile.size() < shortestMetafile || metafile.size() > longestMetafile || size.isEmpty()) {
        return std::nullopt;
    }
    QSvgRenderer renderer;
    const QByteArray svg = svgOf(metafile);
    if (svg.isEmpty() || !renderer.load(svg)) {
        return std::nullopt;
    }
    renderer.setAspectRatioMode(Qt::IgnoreAspectRatio);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    return image;
}

} // namespace relvane::formview
