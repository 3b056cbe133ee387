#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include "library/journal_store.h"
#include "study/flashcard.h"

namespace tessary {

/// What the review shows of one card.
struct CardFace {
    Q_GADGET
    QML_VALUE_TYPE(cardFace)

    /// "basic", "cloze", "multipleChoice", or empty when there is no card.
    Q_PROPERTY(QString kind MEMBER kind)
    Q_PROPERTY(QString kindName MEMBER kindName)
    /// Plain text; of a cloze the sentence with "_____" for each blank.
    Q_PROPERTY(QString front MEMBER front)
    /// Plain text; of a cloze the whole sentence, of a multiple choice the right option.
    Q_PROPERTY(QString back MEMBER back)
    /// Rich text of a cloze, else empty: blanks, or the terms in them, are "u" elements, which the view gives a look.
    Q_PROPERTY(QString frontRich MEMBER frontRich)
    Q_PROPERTY(QString backRich MEMBER backRich)
    Q_PROPERTY(QStringList options MEMBER options)
    Q_PROPERTY(int correctIndex MEMBER correctIndex)
    /// Fields to type an answer into, at least one.
    Q_PROPERTY(int blanks MEMBER blanks)
    Q_PROPERTY(QString explanation MEMBER explanation)
    Q_PROPERTY(QString notebook MEMBER notebook)
    Q_PROPERTY(QString notebookColor MEMBER notebookColor)
    /// "Modern History › The Estates-General"
    Q_PROPERTY(QString place MEMBER place)
    /// "The Estates-General, page 12"
    Q_PROPERTY(QString source MEMBER source)
    Q_PROPERTY(QString pageId MEMBER pageId)
    Q_PROPERTY(bool flagged MEMBER flagged)

public:
    QString kind;
    QString kindName;
    QString front;
    QString back;
    QString frontRich;
    QString backRich;
    QStringList options;
    int correctIndex = -1;
    int blanks = 1;
    QString explanation;
    QString notebook;
    QString notebookColor;
    QString place;
    QString source;
    QString pageId;
    bool flagged = false;

    friend bool operator==(const CardFace&, const CardFace&) = default;
};

[[nodiscard]] CardFace faceOf(const Flashcard& card, const JournalStore& library);

/// What an edit sheet shows and gives back: "kind", "front", "back", "options", "correctIndex", "explanation".
[[nodiscard]] QVariantMap draftOf(const CardContent& content);
/// `content` with a draft's changes. The back of a cloze and of a multiple choice follows from the rest.
[[nodiscard]] CardContent withDraft(CardContent content, const QVariantMap& draft);

}  // namespace tessary
