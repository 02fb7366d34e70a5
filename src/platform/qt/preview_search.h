// Looks for a text in a report while the window stays usable: page by page, from the page in sight onwards.
#pragma once

#include <QObject>
#include <QTimer>
#include <vector>

#include "reports/report_document.h"

namespace relvane::qt {

class PreviewSearch : public QObject {
    Q_OBJECT

public:
    // The document outlives the search.
    explicit PreviewSearch(const reports::ReportDocument& document, QObject* parent = nullptr);

    // Begins a new search at `page` and goes to its first hit; an empty text ends the search.
    void find(const Text& text, int page);
    const Text& text() const { return text_; }
    void next();
    void previous();

    const std::vector<reports::Hit>& hitsOn(int page); // looks the page through when that is still to be done
    const reports::Hit* inHand() const;

    int count() const { return count_; } // hits found so far
    bool isComplete() const { return searched_ == static_cast<int>(pages_.size()); }
    int numberInHand() const; // from 1, once the search is complete; else 0

signals:
    void arrived(); // another hit is in hand
    void changed(); // more pages were looked through

private:
    struct Page {
        bool searched = false;
        std::vector<reports::Hit> hits;
    };
    Page& look(int page);
    void work();
    void go(int step);
    bool tryToGo();

    const reports::ReportDocument& document_;
    Text text_;
    std::vector<Page> pages_;
    int searched_ = 0, count_ = 0;
    int nextToSearch_ = 0;
    int page_ = 0, hit_ = -1; // in hand; hit_ -1 stands before the page's first
    int wanted_ = 0;          // 1 the next hit, -1 the one before, 0 none
    int walked_ = 0;          // pages passed on the way to it
    int walkPage_ = 0;
    QTimer timer_;
};

} // namespace relvane::qt
