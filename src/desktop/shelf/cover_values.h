#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

namespace tessary {

/// The six upper-case hex digits of a colour, as the library's files have them, of "#RRGGBB" or "RRGGBB"; empty for
/// anything else.
[[nodiscard]] inline QString coverColorHex(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^\\s*#?([0-9A-Fa-f]{6})\\s*$"));
    return form.match(text).captured(1).toUpper();
}

}  // namespace tessary
