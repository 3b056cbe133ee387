#pragma once

#include <QtGui/QSyntaxHighlighter>

namespace tessary {

/// Draws headings, marked terms and what is found, as the text is laid out.
class PageMarks final : public QSyntaxHighlighter {
public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

    void setColors(const QColor& faint, const QColor& highlight);
    void setWanted(const QString& wanted);

protected:
    void highlightBlock(const QString& text) override;

private:
    void drawHeading(const QString& text);
    void drawTerms(const QString& text);
    void drawFound(const QString& text);

    QColor faint_;
    QColor highlight_;
    QString wanted_;
};

}  // namespace tessary
