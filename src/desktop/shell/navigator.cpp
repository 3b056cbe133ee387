#include "desktop/shell/navigator.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessary {
namespace {

constexpr std::size_t kLongestWayBack = 100;
constexpr std::array kLastingScreens{"today", "shelf", "pages", "study", "deck", "trash"};

bool lasts(const QString& screen) {
    return std::ranges::any_of(kLastingScreens, [&](const char* name) { return screen == name; });
}

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

Navigator::Spot Navigator::lasting() const {
    if (lasts(spot_.screen)) return spot_;
    const auto before = std::find_if(earlier_.rbegin(), earlier_.rend(), [](const Spot& s) { return lasts(s.screen); });
    return before == earlier_.rend() ? Spot{.screen = "today", .place = {}, .page = {}} : *before;
}

void Navigator::resume(Spot spot) {
    const bool hasPlace = spot.screen == "pages" || spot.screen == "deck";
    if (!lasts(spot.screen) || hasPlace == spot.place.isEmpty()) return;
    earlier_.clear();
    spot_ = std::move(spot);
    Q_EMIT moved();
}

void Navigator::goBack() {
    if (earlier_.empty()) return;
    spot_ = std::move(earlier_.back());
    earlier_.pop_back();
    Q_EMIT moved();
}

}  // namespace tessary
