#include "qt/preview_search.h"

#include <QElapsedTimer>

#include "platform/runtime_error.h"

namespace relvane::qt {

PreviewSearch::PreviewSearch(const reports::ReportDocument& document, QObject* parent)
    : QObject(parent), document_(document), pages_(static_cast<std::size_t>(document.pageCount())) {
    connect(&timer_, &QTimer::timeout, this, &PreviewSearch::work);
}

void PreviewSearch::find(const Text& text, int page) {
    text_ = text;
    pages_.assign(pages_.size(), {});
    searched_ = count_ = 0;
    page_ = nextToSearch_ = page;
    hit_ = -1;
    wanted_ = 0;
    if (text.empty()) {
        timer_.stop();
        searched_ = static_cast<int>(pages_.size());
        emit changed();
        return;
    }
    timer_.start(0);
    go(1);
}

void PreviewSearch::next() {
    go(1);
}

void PreviewSearch::previous() {
    go(-1);
}

void PreviewSearch::go(int step) {
    if (text_.empty()) {
        return;
    }
    wanted_ = step;
    walked_ = 0;
    walkPage_ = page_;
    tryToGo();
}

// Walks on from the hit in hand over the pages looked through. False when the walk ends at one that is not: work()
// goes on when there are more.
bool PreviewSearch::tryToGo() {
    const int pages = static_cast<int>(pages_.size());
    while (wanted_ != 0 && walked_ <= pages) {
        const Page& page = pages_[static_cast<std::size_t>(walkPage_)];
        if (!page.searched) {
            return false;
        }
        const int hits = static_cast<int>(page.hits.size());
        // The page in hand is met first behind the hit in hand, and once more, whole, when all others are through.
        int candidate = wanted_ > 0 ? 0 : hits - 1;
        if (walked_ == 0) {
            candidate = hit_ + wanted_;
        }
        if (candidate >= 0 && candidate < hits) {
            page_ = walkPage_;
            hit_ = candidate;
            wanted_ = 0;
            emit arrived();
            return true;
        }
        walkPage_ = (walkPage_ + wanted_ + pages) % pages;
        ++walked_;
    }
    wanted_ = 0; // there is none
    return true;
}

PreviewSearch::Page& PreviewSearch::look(int number) {
    Page& page = pages_[static_cast<std::size_t>(number)];
    if (!page.searched && !text_.empty()) {
        page.searched = true; // also when it cannot be read: its painting says why
        skipErrors([&] { page.hits = document_.search(text_, number, 1); });
        ++searched_;
        count_ += static_cast<int>(page.hits.size());
    }
    return page;
}

const std::vector<reports::Hit>& PreviewSearch::hitsOn(int page) {
    return look(page).hits;
}

void PreviewSearch::work() {
    constexpr int atOnce = 25; // milliseconds
    QElapsedTimer clock;
    clock.start();
    const int pages = static_cast<int>(pages_.size());
    while (!isComplete() && clock.elapsed() < atOnce) {
        // A walk backwards needs the pages before.
        int number = wanted_ < 0 ? walkPage_ : nextToSearch_;
        if (pages_[static_cast<std::size_t>(number)].searched) {
            nextToSearch_ = (nextToSearch_ + 1) % pages;
            number = nextToSearch_;
        }
        look(number);
        tryToGo();
    }
    if (isComplete()) {
        timer_.stop();
    }
    emit changed();
}

const reports::Hit* PreviewSearch::inHand() const {
    if (text_.empty() || hit_ < 0) {
        return nullptr;
    }
    const Page& page = pages_[static_cast<std::size_t>(page_)];
    return hit_ < static_cast<int>(page.hits.size()) ? &page.hits[static_cast<std::size_t>(hit_)] : nullptr;
}

int PreviewSearch::numberInHand() const {
    if (!isComplete() || inHand() == nullptr) {
        return 0;
    }
    int number = hit_ + 1;
    for (int page = 0; page < page_; ++page) {
        number += static_cast<int>(pages_[static_cast<std::size_t>(page)].hits.size());
    }
    return number;
}

} // namespace relvane::qt
