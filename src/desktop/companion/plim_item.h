#pragma once

#include <QtQmlIntegration/qqmlintegration.h>
#include <QtCore/QAbstractAnimation>
#include <QtCore/QElapsedTimer>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>
#include <functional>

#include "companion/plim_controller.h"

namespace tessary {

/// Ticks with the display as long as it runs.
class PlimClock final : public QAbstractAnimation {
public:
    std::function<void(Date now)> tick;

    PlimClock() { elapsed_.start(); }
    [[nodiscard]] int duration() const override { return -1; }

protected:
    void updateCurrentTime(int) override {
        if (tick) tick(Date{static_cast<double>(elapsed_.nsecsElapsed()) * 1e-9});
    }

private:
    QElapsedTimer elapsed_;  // never set back, as the wall clock may be
};

/// The companion in a square in the middle of this item. It is painted on the main thread into a picture that the scene
/// then shows, and only when there is a new frame and somebody can see it: no clock runs while it is frozen, paused,
/// covered, hidden, or a still.
class PlimItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Side of the square, logical pixels. Small ones are drawn with less in them.
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged)
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY darkChanged)
    /// What was asked for last: "idle", "wave", "cur", "think", "study", "win", "fail" or "sleep". Setting it plays it.
    Q_PROPERTY(QString reaction READ reaction WRITE setReaction NOTIFY reactionChanged)
    /// What it goes back to when a reaction is over. Of those that go on and on.
    Q_PROPERTY(QString base READ base WRITE setBase NOTIFY baseChanged)
    /// Shows the moment that stands for the reaction, without motion.
    Q_PROPERTY(bool still READ isStill WRITE setStill NOTIFY stillChanged)
    /// Holds the motion where it is.
    Q_PROPERTY(bool paused READ isPaused WRITE setPaused NOTIFY pausedChanged)
    /// Something lies over it, such as a sheet: it stands still and stays up to date.
    Q_PROPERTY(bool covered READ isCovered WRITE setCovered NOTIFY coveredChanged)

public:
    explicit PlimItem(QQuickItem* parent = nullptr);
    ~PlimItem() override;

    [[nodiscard]] qreal size() const { return size_; }
    void setSize(qreal size);
    [[nodiscard]] bool isDark() const { return dark_; }
    void setDark(bool dark);
    [[nodiscard]] QString reaction() const;
    void setReaction(const QString& name);
    [[nodiscard]] QString base() const;
    void setBase(const QString& name);
    [[nodiscard]] bool isStill() const { return still_; }
    void setStill(bool still);
    [[nodiscard]] bool isPaused() const { return paused_; }
    void setPaused(bool paused);
    [[nodiscard]] bool isCovered() const { return covered_; }
    void setCovered(bool covered);

    /// Plays a reaction, also the one that was asked for last; a loop that runs already just goes on. What is no
    /// reaction changes nothing.
    Q_INVOKABLE void play(const QString& reaction);
    /// Moves on to `now`, whatever the clock does.
    void tick(Date now) { controller_.tick(now); }

    [[nodiscard]] bool isRunning() const { return clock_.state() == QAbstractAnimation::Running; }
    /// How often it was painted.
    [[nodiscard]] int paints() const { return paints_; }
    [[nodiscard]] const PlimController& controller() const { return controller_; }

Q_SIGNALS:
    void sizeChanged();
    void darkChanged();
    void reactionChanged();
    void baseChanged();
    void stillChanged();
    void pausedChanged();
    void coveredChanged();

protected:
    void componentComplete() override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    [[nodiscard]] bool isSeen() const;
    /// Starts or stops the clock as all that it hangs on demands.
    void followState();
    void repaint();
    [[nodiscard]] int devicePixels() const;

    qreal size_ = 64;
    bool dark_ = false;
    bool still_ = false;
    bool paused_ = false;
    bool covered_ = false;
    PlimReaction reaction_ = PlimReaction::idle;
    PlimController controller_;
    Subscription changes_;
    PlimClock clock_;
    QMetaObject::Connection visibility_;
    QImage picture_;
    bool stale_ = true;  // the picture is not of the present frame
    bool uploaded_ = false;  // the scene has the picture
    int paints_ = 0;
};

}  // namespace tessary
