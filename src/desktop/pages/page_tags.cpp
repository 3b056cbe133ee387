#include "desktop/pages/page_tags.h"

#include <QtGui/QColor>
#include <algorithm>
#include <array>

namespace tessary {
namespace {

struct TagColor {
    const char* hex;
    const char* name;
};

constexpr std::array kPalette{
    TagColor{"#C79C00", QT_TRANSLATE_NOOP("PageTags", "Yellow")},
    TagColor{"#C8692B", QT_TRANSLATE_NOOP("PageTags", "Orange")},
    TagColor{"#BC4A3C", QT_TRANSLATE_NOOP("PageTags", "Red")},
    TagColor{"#B05A86", QT_TRANSLATE_NOOP("PageTags", "Rose")},
    TagColor{"#7A5AA8", QT_TRANSLATE_NOOP("PageTags", "Purple")},
    TagColor{"#3A6EA5", QT_TRANSLATE_NOOP("PageTags", "Blue")},
    TagColor{"#2F7F83", QT_TRANSLATE_NOOP("PageTags", "Teal")},
    TagColor{"#4F7F57", QT_TRANSLATE_NOOP("PageTags", "Green")},
};

constexpr qsizetype kMostOffers = 6;

}  // namespace

QString tagColor(const std::map<std::string, std::string>& colors, const std::string& tag) {
    const auto found = colors.find(tag);
    if (found == colors.end()) return {};
    QString hex = toQml(found->second);
    if (!hex.startsWith('#')) hex.prepend('#');
    const QColor color(hex);
    return color.isValid() ? color.name().toUpper() : QString();
}

void PageTags::setDesk(Desk* desk) {
    if (desk == desk_) return;
    desk_ = desk;
    Q_EMIT deskChanged();
}

QVariantList PageTags::palette() const {
    QVariantList palette;
    for (const TagColor& each : kPalette) {
        palette.append(QVariantMap{{"color", QString::fromLatin1(each.hex)}, {"name", tr(each.name)}});
    }
    return palette;
}

std::map<std::string, int> PageTags::counts() const {
    std::map<std::string, int> counts;
    if (desk_ == nullptr) return counts;
    for (const JournalEntry& page : desk_->library().entries()) {
        for (const std::string& tag : page.tags) ++counts[tag];
    }
    return counts;
}

QVariantList PageTags::all() const {
    if (desk_ == nullptr) return {};
    const auto colors = desk_->library().tagColors();
    std::vector<std::pair<std::string, QVariantMap>> tags;
    for (const auto& [tag, pages] : counts()) {
        QVariantMap map{{"name", toQml(tag)}, {"color", tagColor(colors, tag)}, {"pages", pages}};
        tags.emplace_back(desk_->ports().text.folded(tag), std::move(map));
    }
    std::ranges::stable_sort(tags, {}, [](const auto& each) { return each.first; });
    QVariantList list;
    for (auto& [folded, map] : tags) list.append(std::move(map));
    return list;
}

QStringList PageTags::offers(const QString& text, const QStringList& taken) const {
    if (desk_ == nullptr) return {};
    const TextServices& services = desk_->ports().text;
    const std::string wanted = services.folded(text.trimmed().toStdString());
    QStringList first;
    QStringList second;
    for (const auto& [tag, pages] : counts()) {
        const QString name = toQml(tag);
        const std::string folded = services.folded(tag);
        if (taken.contains(name) || folded == wanted) continue;
        if (folded.starts_with(wanted)) {
            first.append(name);
        } else if (folded.contains(wanted)) {
            second.append(name);
        }
    }
    return (first + second).mid(0, kMostOffers);
}

QString PageTags::colorOf(const QString& tag) const {
    return desk_ == nullptr ? QString() : tagColor(desk_->library().tagColors(), tag.toStdString());
}

void PageTags::setColor(const QString& tag, const QString& color) {
    const std::string hex = color.mid(1).toUpper().toStdString();
    const auto chosen = color.isEmpty() ? std::nullopt : std::optional(hex);
    const auto stored = desk_->library().setTagColor(tag.toStdString(), chosen);
    if (!stored) return desk_->refuse(stored.error());
    desk_->listingChanged();
}

}  // namespace tessary
