#pragma once

#include <QtCore/QAbstractListModel>

#include "desktop/desk/desk.h"
#include "study/study_statistics.h"

namespace tessary {

/// The decks of the library, those with the most due cards first. Filled by `StudyModel`.
class StudyDecksModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Part of StudyModel.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        PlaceRole = Qt::UserRole,
        NameRole,
        ColorRole,
        CardsRole,
        DueRole,
        NewRole,
        RecallRole,    ///< 0 to 1; negative when no card was reviewed yet
        ExamRole,      ///< "in 9 days"; empty without an exam to come
        ExamSoonRole,
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }

    /// Rows stay where they are unless decks have come, gone or changed places.
    void show(const Desk& desk, const StudyStatistics& statistics);

Q_SIGNALS:
    void countChanged();

private:
    struct Row {
        QString place;
        QString name;
        QString color;
        FlashcardDeckStats stats;
        int examDays = -1;  ///< until the next exam; -1 without one

        friend bool operator==(const Row&, const Row&) = default;
    };

    std::vector<Row> rows_;
};

}  // namespace tessary
