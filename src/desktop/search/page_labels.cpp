#include "desktop/search/page_labels.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QVariantMap>

namespace tessary {
namespace {

QString tr(const char* text) { return QCoreApplication::translate("Search", text); }

qsizetype utf16Length(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).size();
}

}  // namespace

QString placeOf(const JournalEntry& page) {
    if (page.isArchived) return "archive";
    return page.notebookID ? toQml(*page.notebookID) : "loose";
}

QString titleOf(const JournalEntry& page) { return page.title.empty() ? tr("Untitled") : toQml(page.title); }

QString pathOf(const JournalEntry& page, const JournalStore& library) {
    constexpr qsizetype kDeepest = 20;  // ends a loop of parents, too
    QStringList path;
    const JournalEntry* step = &page;
    while (step->parentID && path.size() < kDeepest) {
        step = library.entries().find(*step->parentID);
        if (step == nullptr) break;
        path.prepend(titleOf(*step));
    }
    const Notebook* const notebook = page.notebookID ? library.notebooks().find(*page.notebookID) : nullptr;
    path.prepend(notebook == nullptr ? tr("Loose pages") : toQml(notebook->name));
    if (page.isArchived) path.prepend(tr("Archive"));
    return path.join(" › ");
}

QString colorOf(const JournalEntry& page, const JournalStore& library) {
    const Notebook* const notebook = page.notebookID ? library.notebooks().find(*page.notebookID) : nullptr;
    return notebook == nullptr ? QString() : "#" + toQml(notebook->colorHex);
}

QVariantList toQml(const std::vector<TextSpan>& spans, std::string_view text) {
    QVariantList list;
    for (const TextSpan& span : spans) {
        list.append(QVariantMap{{"start", utf16Length(text.substr(0, span.start))},
                                {"length", utf16Length(text.substr(span.start, span.length))}});
    }
    return list;
}

}  // namespace tessary
