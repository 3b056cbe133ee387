#include "desktop/review/card_face.h"

#include <algorithm>

#include "base/text.h"
#include "desktop/desk/desk.h"

namespace tessary {
namespace {

constexpr std::string_view kBlank = "_____";
// No text of a card holds it; it survives the escaping.
constexpr std::string_view kBlankMark = "\x01";

QString kindName(FlashcardKind kind) {
    switch (kind) {
        case FlashcardKind::basic: return QObject::tr("Basic");
        case FlashcardKind::cloze: return QObject::tr("Cloze");
        case FlashcardKind::multipleChoice: break;
    }
    return QObject::tr("Multiple choice");
}

QString escaped(const std::string& text) { return toQml(text).toHtmlEscaped().replace('\n', "<br>"); }

/// The sentence with each mark replaced by the next of `fillings`, or by the only one.
QString filled(const std::string& front, const QStringList& fillings) {
    const QStringList pieces =
        escaped(clozeWithBlanks(replacedAll(front, kBlankMark, ""), kBlankMark)).split(QChar(kBlankMark.front()));
    QString rich = pieces.front();
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        rich += "<u>" + fillings.value(std::min(i, fillings.size()) - 1) + "</u>" + pieces[i];
    }
    return rich;
}

void faceCloze(CardFace& face, const std::string& front) {
    const std::vector<std::string> terms = clozeTerms(front);
    QStringList shown;
    for (const std::string& term : terms) shown.append(escaped(term));
    face.front = toQml(clozeWithBlanks(front, kBlank));
    face.back = toQml(clozeRevealed(front));
    face.frontRich = filled(front, {QString(8, QChar::Nbsp)});
    face.backRich = filled(front, shown);
    face.blanks = std::max(1, static_cast<int>(terms.size()));
}

void faceChoices(CardFace& face, const Flashcard& card) {
    for (const std::string& option : card.options) face.options.append(toQml(option));
    face.correctIndex = static_cast<int>(card.correctIndex.value_or(-1));
    if (face.correctIndex >= 0 && face.correctIndex < face.options.size()) face.back = face.options[face.correctIndex];
}

void takeChoices(CardContent& content, const QVariantMap& draft) {
    content.options.clear();
    for (const QString& option : draft["options"].toStringList()) {
        content.options.push_back(option.trimmed().toStdString());
    }
    content.correctIndex = draft["correctIndex"].toInt();
    if (!contentProblem(content)) content.back = content.options[static_cast<std::size_t>(*content.correctIndex)];
}

void placeFace(CardFace& face, const Flashcard& card, const JournalStore& library) {
    const JournalEntry* const page = library.entries().find(card.pageID);
    if (page == nullptr) return;
    const Notebook* const notebook = page->notebookID ? library.notebooks().find(*page->notebookID) : nullptr;
    const QString title = trimmed(page->title).empty() ? QObject::tr("Untitled") : toQml(page->title).simplified();
    if (notebook != nullptr) {
        face.notebook = toQml(notebook->name).simplified();
        face.notebookColor = "#" + toQml(notebook->colorHex);
    }
    face.pageId = toQml(page->id);
    face.place = notebook == nullptr ? title : face.notebook + " › " + title;
    face.source = card.sourcePage ? QObject::tr("%1, page %2").arg(title).arg(*card.sourcePage) : title;
}

}  // namespace

CardFace faceOf(const Flashcard& card, const JournalStore& library) {
    CardFace face;
    face.kind = QString::fromLatin1(enumName(card.kind));
    face.kindName = kindName(card.kind);
    face.front = toQml(card.front);
    face.back = toQml(card.back);
    face.explanation = toQml(card.explanation.value_or(""));
    face.flagged = card.flagged;
    if (card.kind == FlashcardKind::cloze) faceCloze(face, card.front);
    if (card.kind == FlashcardKind::multipleChoice) faceChoices(face, card);
    placeFace(face, card, library);
    return face;
}

QVariantMap draftOf(const CardContent& content) {
    QStringList options;
    for (const std::string& option : content.options) options.append(toQml(option));
    return {{"kind", QString::fromLatin1(enumName(content.kind))},
            {"front", toQml(content.front)},
            {"back", toQml(content.back)},
            {"options", options},
            {"correctIndex", static_cast<int>(content.correctIndex.value_or(-1))},
            {"explanation", toQml(content.explanation.value_or(""))}};
}

CardContent withDraft(CardContent content, const QVariantMap& draft) {
    const auto text = [&](const char* key) { return draft[key].toString().trimmed().toStdString(); };
    content.front = text("front");
    content.explanation = text("explanation").empty() ? std::nullopt : std::optional(text("explanation"));
    switch (content.kind) {
        case FlashcardKind::basic: content.back = text("back"); break;
        case FlashcardKind::cloze: content.back = joined(clozeTerms(content.front), kClozeTermSeparator); break;
        case FlashcardKind::multipleChoice: takeChoices(content, draft); break;
    }
    return content;
}

}  // namespace tessary
