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
    // The one line of this program to the instance that listens on that pipe: a second one would be given the objects
    // of the first, which end with it. Nothing when no instance listens.
    static std::shared_ptr<Connection> open(const std::string& pipe, std::chrono::milliseconds patience);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Runs calls into the instance. Its exceptions become run-time errors: 462 when the instance has gone or does not
    // answer in time, 1004 for what it refuses.
    void call(const std::function<void()>& calls);

    const css::uno::Reference<css::frame::XDesktop2>& desktop() const { return desktop_; }
    const css::uno::Reference<css::uno::XComponentContext>& remote() const { return remote_; }

private:
    Connection(css::uno::Reference<css::bridge::XBridge> bridge, std::chrono::milliseconds patience)
        : bridge_(std::move(bridge)), patience_(patience) {}
    static std::shared_ptr<Connection> openNew(const std::string& pipe, std::chrono::milliseconds patience);
    bool answers();

    css::uno::Reference<css::bridge::XBridge> bridge_;
    const std::chrono::milliseconds patience_; // for the calls of one conversation
    css::uno::Reference<css::uno::XComponentContext> remote_;
    css::uno::Reference<css::frame::XDesktop2> desktop_;
};

} // namespace relvane::spreadsheet
