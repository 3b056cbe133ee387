#include "desktop/shell/navigator.h"

#include <utility>

namespace tessary {
namespace {

constexpr std::size_t kLongestWayBack = 100;

}  // namespace

void Navigator::go(Spot spot) {
    if (spot == spot_) return;
    if (earlier_.size() == kLongestWayBack) earlier_.erase(earlier_.begin());
    // A review is over once it is left: the way back does not lead into it.
    if (spot_.screen != "review") earlier_.push_back(spot_);
    spot_ = std::move(spot);
    Q_EMIT moved();
}

void Navigator::showPage(const QString& page) {
    if (page == spot_.page) return;
    spot_.page = page;
    Q_EMIT moved();
}

void Navigator::goBack() {
    if (earlier_.empty()) return;
    spot_ = std::move(earlier_.back());
    earlier_.pop_back();
    Q_EMIT moved();
}

}  // namespace tessary
