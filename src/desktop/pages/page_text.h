#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QColor>
#include <QtQuick/QQuickTextDocument>
#include <memory>
#include <vector>

namespace tessary {

class PageMarks;

/// How the text of a page looks in its editor, and what is found in it. Neither touches what is saved, nor what can be
/// undone.
class PageText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument* document READ document WRITE setDocument NOTIFY documentChanged)
    /// Pixels from line to line.
    Q_PROPERTY(qreal lineHeight MEMBER lineHeight_)
    /// Of the signs that mark headings and terms.
    Q_PROPERTY(QColor faint READ faint WRITE setFaint NOTIFY lookChanged)
    /// Behind marked terms and what is found.
    Q_PROPERTY(QColor highlight READ highlight WRITE setHighlight NOTIFY lookChanged)

    /// Without regard to case; empty: nothing is looked for.
    Q_PROPERTY(QString wanted READ wanted WRITE setWanted NOTIFY foundChanged)
    Q_PROPERTY(int found READ found NOTIFY foundChanged)
    /// Counts from 0; -1 before the first.
    Q_PROPERTY(int current READ current NOTIFY foundChanged)

public:
    explicit PageText(QObject* parent = nullptr);
    ~PageText() override;

    [[nodiscard]] QQuickTextDocument* document() const { return document_; }
    void setDocument(QQuickTextDocument* document);
    [[nodiscard]] QColor faint() const;
    void setFaint(const QColor& color);
    [[nodiscard]] QColor highlight() const;
    void setHighlight(const QColor& color);

    [[nodiscard]] QString wanted() const { return wanted_; }
    void setWanted(const QString& wanted);
    [[nodiscard]] int found() const { return static_cast<int>(places_.size()); }
    [[nodiscard]] int current() const { return current_; }

    /// Another text, from which nothing can be undone.
    Q_INVOKABLE void load(const QString& text);
    /// The next place at or behind `position`, and round to the first. Gives where it begins, -1 when nothing is found.
    Q_INVOKABLE int next(int position);
    /// The last place that begins before `position`, and round.
    Q_INVOKABLE int previous(int position);

Q_SIGNALS:
    void documentChanged();
    void lookChanged();
    void foundChanged();

private:
    void look();
    void show(int place);
    void applyLineHeight();

    QPointer<QQuickTextDocument> document_;
    std::unique_ptr<PageMarks> marks_;
    qreal lineHeight_ = 24;
    QColor faint_;
    QColor highlight_;
    QString wanted_;
    std::vector<int> places_;
    int current_ = -1;
};

}  // namespace tessary
