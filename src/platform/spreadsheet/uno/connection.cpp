#include "uno/connection.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include <com/sun/star/bridge/BridgeFactory.hpp>
#include <com/sun/star/connection/Connector.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <cppuhelper/bootstrap.hxx>

#include "platform/runtime_error.h"
#include "platform/spreadsheet.h"
#include "uno/texts.h"

namespace relvane::spreadsheet {
namespace {

// Does something when it is still there after the limit.
class TimeLimit {
public:
    TimeLimit(std::chrono::milliseconds limit, std::function<void()> onExpiry)
        : watch_([this, limit, onExpiry = std::move(onExpiry)] {
              std::unique_lock lock(mutex_);
              if (!changed_.wait_for(lock, limit, [this] { return over_; })) {
                  onExpiry();
              }
          }) {}
    ~TimeLimit() {
        {
            const std::lock_guard lock(mutex_);
            over_ = true;
        }
        changed_.notify_one();
        watch_.join();
    }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool over_ = false;
    std::thread watch_; // begins when the rest is there
};

void dispose(const css::uno::Reference<css::bridge::XBridge>& bridge) {
    try {
        css::uno::Reference<css::lang::XComponent>(bridge, css::uno::UNO_QUERY_THROW)->dispose();
    } catch (const css::uno::Exception&) { // it has gone already
    }
}

} // namespace

std::shared_ptr<Connection> Connection::open(const std::string& pipe, std::chrono::milliseconds patience) {
    static std::map<std::string, std::weak_ptr<Connection>> lines;
    if (auto line = lines[pipe].lock(); line && line->answers()) {
        return line;
    }
    auto line = openNew(pipe, patience);
    lines[pipe] = line;
    return line;
}

std::shared_ptr<Connection> Connection::openNew(const std::string& pipe, std::chrono::milliseconds patience) {
    // Once for the program: it would be made anew by every call.
    static const css::uno::Reference<css::uno::XComponentContext> local =
        cppu::defaultBootstrap_InitialComponentContext();
    css::uno::Reference<css::connection::XConnection> connection;
    try {
        connection = css::connection::Connector::create(local)->connect(
            "pipe,name=" + OUString::createFromAscii(pipe.c_str()));
    } catch (const css::connection::NoConnectException&) {
        return nullptr;
    }
    const std::shared_ptr<Connection> line(new Connection(
        css::bridge::BridgeFactory::create(local)->createBridge(OUString(), "urp", connection, nullptr),
        patience));
    // One that is just ending takes a call yet and answers no more: it is gone too.
    const int failed = skipErrors([&line] {
        line->call([&line = *line] {
            line.remote_.set(line.bridge_->getInstance("StarOffice.ComponentContext"),
                             css::uno::UNO_QUERY_THROW);
            line.desktop_ = css::frame::Desktop::create(line.remote_);
        });
    });
    return failed == 0 ? line : nullptr;
}

Connection::~Connection() {
    desktop_.clear();
    remote_.clear();
    dispose(bridge_);
}

bool Connection::answers() {
    return skipErrors([this] { call([this] { desktop_->getComponents(); }); }) == 0;
}

void Connection::call(const std::function<void()>& calls) {
    const TimeLimit watch(patience_, [this] { dispose(bridge_); });
    try {
        calls();
    } catch (const css::lang::DisposedException&) {
        throw RunTimeError(serverNotAvailable, u"表計算ソフトは終了しているか、応答しません。");
    } catch (const css::uno::Exception& refusal) {
        throw RunTimeError(applicationError,
                           u"表計算ソフトで処理出来ません。 (" + textOf(refusal.Message) + u")");
    }
}

} // namespace relvane::spreadsheet
