#include "desktop/pages/page_marks.h"

#include <QtCore/QRegularExpression>

namespace tessary {
namespace {

constexpr int kHeadingSize = 18;       // pixels
constexpr int kSubheadingSize = 16;
constexpr qsizetype kHighestLevel = 2;  // the levels of the larger headings

}  // namespace

void PageMarks::setColors(const QColor& faint, const QColor& highlight) {
    faint_ = faint;
    highlight_ = highlight;
    rehighlight();
}

void PageMarks::setWanted(const QString& wanted) {
    wanted_ = wanted;
    rehighlight();
}

void PageMarks::highlightBlock(const QString& text) {
    drawHeading(text);
    drawTerms(text);
    drawFound(text);
}

void PageMarks::drawHeading(const QString& text) {
    static const QRegularExpression heading("^ {0,3}(#{1,6})[ \\t]+\\S");
    const QRegularExpressionMatch match = heading.match(text);
    if (!match.hasMatch()) return;
    QTextCharFormat format;
    format.setFontWeight(QFont::DemiBold);
    format.setProperty(QTextFormat::FontPixelSize,
                       match.capturedLength(1) <= kHighestLevel ? kHeadingSize : kSubheadingSize);
    setFormat(0, static_cast<int>(text.size()), format);
    format.setForeground(faint_);
    setFormat(0, static_cast<int>(match.capturedEnd(1)), format);
}

void PageMarks::drawTerms(const QString& text) {
    static const QRegularExpression term("==(?=\\S)([^=]+?)(?<=\\S)==");
    for (auto matches = term.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const auto begin = static_cast<int>(match.capturedStart());
        const auto length = static_cast<int>(match.capturedLength());
        QTextCharFormat shown = format(begin);
        shown.setBackground(highlight_);
        setFormat(begin, length, shown);
        shown.setForeground(faint_);
        setFormat(begin, 2, shown);
        setFormat(begin + length - 2, 2, shown);
    }
}

void PageMarks::drawFound(const QString& text) {
    if (wanted_.isEmpty()) return;
    for (qsizetype at = text.indexOf(wanted_, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(wanted_, at + wanted_.size(), Qt::CaseInsensitive)) {
        QTextCharFormat shown = format(static_cast<int>(at));
        shown.setBackground(highlight_);
        shown.setFontUnderline(true);
        setFormat(static_cast<int>(at), static_cast<int>(wanted_.size()), shown);
    }
}

}  // namespace tessary
