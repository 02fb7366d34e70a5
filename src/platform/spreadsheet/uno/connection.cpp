#include "uno/connection.h"

#include <condition_variable>
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

using namespace std::chrono_literals;

constexpr auto limit = 60s; // for one call, or a few that belong together

// Does something when it is still there after the limit.
class TimeLimit {
public:
    explicit TimeLimit(std::function<void()> onExpiry)
        : watch_([this, onExpiry = std::move(onExpiry)] {
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

std::unique_ptr<Connection> Connection::open(const std::string& pipe) {
    // Once for the program: it would be made anew by every call.
    static const css::uno::Reference<css::uno::XComponentContext> local =
        cppu::defaultBootstrap_InitialComponentContext();
    std::unique_ptr<Connection> line;
    try {
        const auto connection = css::connection::Connector::create(local)->connect(
            "pipe,name=" + OUString::createFromAscii(pipe.c_str()));
        line.reset(new Connection(
            css::bridge::BridgeFactory::create(local)->createBridge(OUString(), "urp", connection, nullptr)));
    } catch (const css::connection::NoConnectException&) {
        return nullptr;
    }
    line->call([&line = *line] {
        line.remote_.set(line.bridge_->getInstance("StarOffice.ComponentContext"), css::uno::UNO_QUERY_THROW);
        line.desktop_ = css::frame::Desktop::create(line.remote_);
    });
    return line;
}

Connection::~Connection() {
    close();
}

void Connection::call(const std::function<void()>& calls) {
    const TimeLimit watch([this] { dispose(bridge_); });
    try {
        calls();
    } catch (const css::lang::DisposedException&) {
        throw RunTimeError(serverNotAvailable, u"表計算ソフトは終了しているか、応答しません。");
    } catch (const css::uno::Exception& refusal) {
        throw RunTimeError(applicationError,
                           u"表計算ソフトで処理出来ません。 (" + textOf(refusal.Message) + u")");
    }
}

void Connection::close() {
    desktop_.clear();
    remote_.clear();
    if (bridge_.is()) {
        dispose(bridge_);
        bridge_.clear();
    }
}

} // namespace relvane::spreadsheet
