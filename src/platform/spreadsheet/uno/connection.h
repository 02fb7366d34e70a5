// The line to a running LibreOffice: found by the name of its pipe, and cut when an answer takes too long.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include <com/sun/star/bridge/XBridge.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace relvane::spreadsheet {

class Connection {
public:
    // Nothing when no instance listens on that pipe.
    static std::unique_ptr<Connection> open(const std::string& pipe);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Runs calls into the instance. Its exceptions become run-time errors: 462 when the instance has gone or does not
    // answer within the limit, 1004 for what it refuses.
    void call(const std::function<void()>& calls);
    void close();

    const css::uno::Reference<css::frame::XDesktop2>& desktop() const { return desktop_; }
    const css::uno::Reference<css::uno::XComponentContext>& remote() const { return remote_; }

private:
    explicit Connection(css::uno::Reference<css::bridge::XBridge> bridge) : bridge_(std::move(bridge)) {}

    css::uno::Reference<css::bridge::XBridge> bridge_;
    css::uno::Reference<css::uno::XComponentContext> remote_;
    css::uno::Reference<css::frame::XDesktop2> desktop_;
};

} // namespace relvane::spreadsheet
