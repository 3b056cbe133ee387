#include "desktop/pages/page_listing.h"

namespace tessary {
namespace {

constexpr const char* kModeKey = "entrySortMode";
constexpr const char* kOrderKey = "sortOrder";
constexpr const char* kPanelKey = "tessary.panel";

}  // namespace

void PageListing::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    Q_EMIT changed();
}

void PageListing::store(const char* key, const QString& value) {
    if (desk_ == nullptr) return;
    if (const auto stored = desk_->settings().setText(key, value.toStdString()); !stored)
        return desk_->refuse(stored.error());
    Q_EMIT changed();
    if (key != kPanelKey) desk_->listingChanged();
}

QString PageListing::sortMode() const {
    if (desk_ == nullptr) return "created";
    return toQml(std::string(enumName(desk_->library().sortMode())));
}

void PageListing::setSortMode(const QString& mode) {
    if (mode != sortMode()) store(kModeKey, mode);
}

bool PageListing::newestFirst() const { return desk_ == nullptr || desk_->library().sortOrder() == SortOrder::newest; }

void PageListing::setNewestFirst(bool newest) {
    if (newest != newestFirst()) store(kOrderKey, newest ? "newest" : "oldest");
}

QString PageListing::panel() const {
    const QString stored = desk_ == nullptr ? QString() : toQml(desk_->settings().text(kPanelKey).value_or(""));
    return stored == "outline" || stored == "hidden" ? stored : "cards";
}

void PageListing::setPanel(const QString& panel) {
    if (panel != this->panel()) store(kPanelKey, panel);
}

}  // namespace tessary
