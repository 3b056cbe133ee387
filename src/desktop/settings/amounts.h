#pragma once

#include <QtCore/QLocale>
#include <QtCore/QString>
#include <cstddef>

namespace tessary {

/// "1 page", "1,106 pages".
[[nodiscard]] inline QString counted(std::size_t count, const QString& one, const QString& many) {
    const QString number = QLocale(QLocale::English).toString(static_cast<qulonglong>(count));
    return number + " " + (count == 1 ? one : many);
}

/// "0 MB", "12 kB", "3.4 MB".
[[nodiscard]] inline QString sizeText(quint64 bytes) {
    return QLocale(QLocale::English).formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeSIFormat);
}

}  // namespace tessary
