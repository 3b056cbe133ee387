#include "platform/adapters/poppler/page_words.h"

#include <algorithm>

#include "base/text.h"

namespace tessary {
namespace {

/// Whether the middle of one range lies in the other.
bool meet(double aStart, double aEnd, double bStart, double bEnd) {
    const double a = (aStart + aEnd) / 2;
    const double b = (bStart + bEnd) / 2;
    return (bStart <= a && a <= bEnd) || (aStart <= b && b <= aEnd);
}

/// Middles decide, because boxes reach into the lines and letters next to them; and either one's, because some programs
/// write only a thin stroke for a line of text.
bool covers(const QRectF& box, const QRectF& letter) {
    return meet(box.left(), box.right(), letter.left(), letter.right()) &&
           meet(box.top(), box.bottom(), letter.top(), letter.bottom());
}

}  // namespace

std::string plainText(const QString& text) {
    const std::string lines = replacedAll(replacedAll(text.toStdString(), "\r\n", "\n"), "\r", "\n");
    return std::string(trimmed(lines));
}

PageWords::PageWords(const Poppler::Page& page) : words_(page.textList()) {}

std::string PageWords::text() const {
    QString text;
    for (const auto& word : words_) {
        text += word->text();
        if (word->nextWord() == nullptr) {
            text += u'\n';
        } else if (word->hasSpaceAfter()) {
            text += u' ';
        }
    }
    return plainText(text);
}

std::string PageWords::textIn(const std::vector<QRectF>& boxes) const {
    std::string text;
    const char* gap = "";  // what separates the last letter taken from the next one
    for (const auto& word : words_) {
        int index = 0;
        for (const char32_t letter : word->text().toUcs4()) {
            const QRectF place = word->charBoundingBox(index++);
            if (std::ranges::any_of(boxes, [&](const QRectF& box) { return covers(box, place); })) {
                if (!text.empty()) text += gap;
                appendUtf8(text, letter);
                gap = "";
            } else if (*gap == '\0') {
                gap = " ";
            }
        }
        if (word->nextWord() == nullptr) {
            gap = "\n";
        } else if (word->hasSpaceAfter() && *gap == '\0') {
            gap = " ";
        }
    }
    return std::string(trimmed(text));
}

}  // namespace tessary
