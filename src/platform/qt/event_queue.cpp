#include "qt/event_queue.h"

#include <utility>

namespace relvane::qt {
namespace {

std::function<void()> takeFirst(std::deque<std::function<void()>>& queue) {
    auto first = std::move(queue.front());
    queue.pop_front();
    return first;
}

} // namespace

EventQueue::EventQueue(Dispatch dispatch) : dispatch_(std::move(dispatch)) {}

void EventQueue::fire(std::function<void()> event) {
    events_.push_back(std::move(event));
    drain();
}

void EventQueue::whenIdle(std::function<void()> action) {
    idle_.push_back(std::move(action));
    drain();
}

void EventQueue::drain() {
    if (busy_) {
        return;
    }
    busy_ = true;
    while (!events_.empty() || !idle_.empty()) {
        if (!events_.empty()) {
            const auto event = takeFirst(events_);
            ended_ = ended_ || !dispatch_(event);
        } else {
            // Windows changing their looks may bring events; those run before the next change.
            const auto action = takeFirst(idle_);
            action();
        }
    }
    busy_ = false;
}

} // namespace relvane::qt
