#include "desktop/search/text_marks.h"

#include <QtCore/QVariantMap>
#include <QtGui/QTextLayout>

namespace tessary {

QList<QRectF> TextMarks::boxes() const {
    if (marks_.isEmpty()) return {};
    QTextLayout layout(text_, font_);
    QTextOption option;
    option.setWrapMode(wrapWidth_ > 0 ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine())
        line.setLineWidth(wrapWidth_ > 0 ? wrapWidth_ : 100'000);
    layout.endLayout();

    QList<QRectF> boxes;
    for (const QVariant& mark : marks_) {
        const int start = mark.toMap()["start"].toInt();
        const int end = start + mark.toMap()["length"].toInt();
        for (int i = 0; i < layout.lineCount(); ++i) {
            const QTextLine line = layout.lineAt(i);
            const int from = std::max(start, line.textStart());
            const int to = std::min(end, line.textStart() + line.textLength());
            if (from >= to) continue;
            const qreal left = line.cursorToX(from);
            const qreal right = line.cursorToX(to);
            boxes.append({std::min(left, right), i * lineHeight_, std::abs(right - left), lineHeight_});
        }
    }
    return boxes;
}

}  // namespace tessary
