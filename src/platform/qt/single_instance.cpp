#include "qt/single_instance.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <unistd.h>
#include <utility>

namespace relvane::qt {
namespace {

constexpr int patience = 1000; // milliseconds
constexpr char knock = 's';

} // namespace

SingleInstance::SingleInstance(const QString& programFolder) : server_(std::make_unique<QLocalServer>()) {
    const QString real = QFileInfo(programFolder).canonicalFilePath();
    const QByteArray place = (real.isEmpty() ? programFolder : real).toUtf8();
    const QByteArray digest = QCryptographicHash::hash(place, QCryptographicHash::Sha1).toHex().left(16);
    name_ = QStringLiteral("relvane-%1-%2").arg(::getuid()).arg(QLatin1String(digest));
    server_->setSocketOptions(QLocalServer::UserAccessOption);
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::listen(std::function<void()> asked) {
    QLocalServer::removeServer(name_);
    QObject::connect(
        server_.get(), &QLocalServer::newConnection, server_.get(), [this, asked = std::move(asked)] {
            while (QLocalSocket* const visitor = server_->nextPendingConnection()) {
                QObject::connect(visitor, &QLocalSocket::disconnected, visitor, &QObject::deleteLater);
                asked();
            }
        });
    server_->listen(name_);
}

bool SingleInstance::askFirstToShow() {
    QLocalSocket socket;
    socket.connectToServer(name_);
    if (!socket.waitForConnected(patience)) {
        return false;
    }
    socket.write(&knock, 1);
    socket.waitForBytesWritten(patience);
    socket.disconnectFromServer();
    return true;
}

} // namespace relvane::qt
