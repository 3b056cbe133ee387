#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariantList>

#include "desktop/desk/desk.h"

namespace tessary {

/// Of a tag as "#RRGGBB"; empty when it has none, or none that can be read.
[[nodiscard]] QString tagColor(const std::map<std::string, std::string>& colors, const std::string& tag);

/// The tags of the whole library and their colours.
class PageTags : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    /// Maps of "color", as "#RRGGBB", and "name".
    Q_PROPERTY(QVariantList palette READ palette CONSTANT)

public:
    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] QVariantList palette() const;

    /// Maps of "name", "color" and "pages", by name. One pass over all pages.
    Q_INVOKABLE [[nodiscard]] QVariantList all() const;
    /// Tags that begin with `text`, then those that hold it, those of `taken` left out; a few.
    Q_INVOKABLE [[nodiscard]] QStringList offers(const QString& text, const QStringList& taken) const;
    Q_INVOKABLE [[nodiscard]] QString colorOf(const QString& tag) const;
    /// Empty takes the colour away.
    Q_INVOKABLE void setColor(const QString& tag, const QString& color);

Q_SIGNALS:
    void deskChanged();

private:
    /// How many pages have each, archived ones included.
    [[nodiscard]] std::map<std::string, int> counts() const;

    Desk* desk_ = nullptr;
};

}  // namespace tessary
