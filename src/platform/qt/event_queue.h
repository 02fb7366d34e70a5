// The road of every event from a window to the logic: one at a time, through the program's dispatcher.
#pragma once

#include <deque>
#include <functional>

namespace relvane::qt {

// Runs a handler of the logic and deals with what it throws; false when the program has ended.
using Dispatch = std::function<bool(const std::function<void()>&)>;

// An event that arises while a handler runs (a timer that falls due, the focus that the handler moved) waits until
// that handler has returned, as a handler never yields. One queue serves all windows of a program.
class EventQueue {
public:
    explicit EventQueue(Dispatch dispatch);
    EventQueue(const EventQueue&) = delete;
    EventQueue& operator=(const EventQueue&) = delete;

    // At once, or behind the handler that runs. Nothing happens once the program has ended.
    void fire(std::function<void()> event);

    // Does `action` now, or when the running handler and the events behind it are done.
    void whenIdle(std::function<void()> action);

    bool isBusy() const { return busy_; }
    bool hasEnded() const { return ended_; }

private:
    void drain();

    Dispatch dispatch_;
    std::deque<std::function<void()>> events_, idle_;
    bool busy_ = false, ended_ = false;
};

} // namespace relvane::qt
