#include <gtest/gtest.h>

#include <QtGui/QPainter>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <array>
#include <functional>

#include "companion/plim_reaction_names.h"
#include "companion/plim_sampling.h"
#include "desktop/companion/plim_item.h"
#include "desktop/companion/plim_painter.h"
#include "desktop/desk_rig.h"

namespace tessary {
namespace {

constexpr std::array kDetails{PlimDetail::speck, PlimDetail::badge, PlimDetail::full};

QImage picture(const PlimFrame& frame, int side, PlimLook look = {}) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    drawPlim(image, frame, look);
    return image;
}

int channelDifference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b)),
                     std::abs(qAlpha(a) - qAlpha(b))});
}

/// Pixels that differ by more than `tolerance` of 255 in some channel; of a thousand.
int difference(const QImage& a, const QImage& b, int tolerance) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) count += channelDifference(a.pixel(x, y), b.pixel(x, y)) > tolerance;
    return count * 1000 / (a.width() * a.height());
}

int largestDifference(const QImage& a, const QImage& b) {
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            largest = std::max(largest, channelDifference(a.pixel(x, y), b.pixel(x, y)));
    return largest;
}

int strongestOnEdge(const QImage& image) {
    int alpha = 0;
    const int end = image.width() - 1;
    for (int i = 0; i <= end; ++i) {
        for (const QPoint at : {QPoint(i, 0), QPoint(i, end), QPoint(0, i), QPoint(end, i)})
            alpha = std::max(alpha, qAlpha(image.pixel(at)));
    }
    return alpha;
}

std::string told(PlimReaction reaction, double t) {
    return std::string(rawValue(reaction)) + " at " + std::to_string(t);
}

TEST(PlimDrawing, NothingIsCutOffAtTheEdge) {
    for (const auto& [reaction, name] : EnumNames<PlimReaction>::names) {
        for (double t = 0; t < plimSpec().reaction(reaction).dur; t += 1.0 / 20) {
            for (const PlimDetail detail : kDetails) {
                const PlimLook look{.dark = true, .detail = detail};
                ASSERT_LE(strongestOnEdge(picture(plimFrame(reaction, t), 120, look)), 10)
                    << told(reaction, t) << ", detail " << static_cast<int>(detail);
            }
        }
    }
}

TEST(PlimDrawing, ALoopEndsOnThePictureItBeginsWith) {
    for (const auto& [reaction, name] : EnumNames<PlimReaction>::names) {
        const auto range = plimSpec().reaction(reaction).loopRange();
        if (!range) continue;
        for (const PlimDetail detail : kDetails) {
            const PlimLook look{.dark = false, .detail = detail};
            const QImage end = picture(plimFrame(reaction, range->to), 240, look);
            EXPECT_LE(largestDifference(end, picture(plimFrame(reaction, range->from), 240, look)), 12) << name;
        }
    }
}

/// Through every reaction and the fades between them: what jumps would show as a burst of changed pixels, beyond those
/// that the star's own motion changes.
TEST(PlimDrawing, NeighbouringPicturesDifferLittle) {
    PlimController controller;
    Date now;
    PlimFrame frame = controller.frame();
    QImage before = picture(frame, 96);
    for (const auto& [reaction, name] : EnumNames<PlimReaction>::names) {
        controller.play(reaction);
        int most = 0;
        for (int tick = 0; tick < 5 * 60; ++tick) {
            now = now + 1.0 / 60;
            controller.tick(now);
            const double turned = std::abs(controller.frame().pose.at("rot") - frame.pose.at("rot"));
            const double moved = std::abs(controller.frame().pose.at("dy") - frame.pose.at("dy"));
            frame = controller.frame();
            QImage after = picture(frame, 96);
            const int changed = difference(before, after, 64);
            EXPECT_LE(changed, 60 + 6 * std::min(turned, 360 - turned) + 10 * moved)
                << told(controller.player().current(), controller.player().t());
            most = std::max(most, changed);
            before = std::move(after);
        }
        EXPECT_GT(most, 4) << name;
    }
}

TEST(PlimDrawing, LidsAndTheWinkMoveWithoutAJump) {
    for (const char* const channel : {"lid", "wink"}) {
        for (const PlimDetail detail : {PlimDetail::badge, PlimDetail::full}) {
            PlimFrame frame = plimFrame(PlimReaction::idle, 0);
            const QImage open = picture(frame, 240, {.detail = detail});
            QImage before = open;
            for (double u = 0; u <= 1.0001; u += 1.0 / 32) {
                frame.pose[channel] = u;
                const QImage after = picture(frame, 240, {.detail = detail});
                EXPECT_LE(difference(before, after, 64), 7) << channel << ' ' << u;
                before = after;
            }
            EXPECT_GE(difference(open, before, 64), 8) << channel;
        }
    }
}

TEST(PlimDrawing, AFrameWithoutChannelsIsThePoseAtRest) {
    EXPECT_EQ(picture(PlimFrame{}, 120), picture(plimFrame(PlimReaction::idle, 0), 120));
    PlimFrame odd;
    odd.steps = {{"eye", "no such eye"}, {"mouth", ""}};
    odd.pose = {{"no such channel", 5}};
    odd.fx.push_back({.type = "no such effect", .color = "no colour", .v = {}});
    EXPECT_EQ(picture(odd, 120), picture(PlimFrame{}, 120));
}

/// The opacity of a fade: an effect without it is there as a whole, and with half of it half as strong.
TEST(PlimDrawing, AnEffectsOpacityMultipliesAllOfIt) {
    const std::map<std::string, double> values{{"x", 200}, {"y", 60},   {"s", 6},    {"sc", 1},     {"k", 0.5},
                                               {"a0", 1},  {"a1", 0.7}, {"a2", 0.5}, {"flip", 0.5}, {"o", 0.3}};
    for (const char* const type : {"motion", "spark", "dots", "notebook", "burst", "drop", "zz"}) {
        const auto at = [&](std::optional<double> opacity) {
            PlimFrame frame;
            frame.fx.push_back({.type = type, .color = "#FFE39A", .v = values});
            if (opacity) frame.fx[0].v["a"] = *opacity;
            return picture(frame, 120, {.dark = true});
        };
        const QImage none = picture(PlimFrame{}, 120, {.dark = true});
        const QImage half = at(0.5);
        EXPECT_EQ(at({}), at(1)) << type;
        EXPECT_EQ(at(0), none) << type;
        EXPECT_GT(difference(at(1), none, 40), 0) << type;
        EXPECT_LT(largestDifference(half, none), largestDifference(at(1), none)) << type;
        EXPECT_LT(largestDifference(half, at(1)), largestDifference(at(1), none)) << type;
    }
}

/// An item in a window that nobody sees; pictures of the window make it paint as the display would.
class PlimItemTest : public testing::Test {
protected:
    PlimItemTest() {
        window_.setColor(Qt::white);
        window_.resize(120, 120);
        item_.setParentItem(window_.contentItem());
        item_.setSize(120);
        QQuickItem& item = item_;
        item.setSize(QSizeF(120, 120));
        window_.show();
    }

    QImage shown() { return window_.grabWindow(); }
    void move(double seconds) { item_.tick(now_ = now_ + seconds); }
    /// Paints that another look at the window takes.
    int paintsOfALook() {
        const int before = item_.paints();
        shown();
        return item_.paints() - before;
    }

    QQuickWindow window_;
    PlimItem item_;
    Date now_;
};

TEST_F(PlimItemTest, PaintsOnceForEachFrame) {
    EXPECT_TRUE(item_.isRunning());
    shown();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(paintsOfALook(), 0);
        move(0.05);
        EXPECT_EQ(paintsOfALook(), 1);
    }
    item_.setDark(true);
    EXPECT_EQ(paintsOfALook(), 1);
}

TEST_F(PlimItemTest, AFrozenOnePaintsNothingUntilItPlays) {
    for (int i = 0; i < 200; ++i) move(0.1);
    ASSERT_TRUE(item_.controller().frozen());
    EXPECT_FALSE(item_.isRunning());
    shown();
    move(0.1);
    EXPECT_EQ(paintsOfALook(), 0);
    item_.play("wave");
    EXPECT_TRUE(item_.isRunning());
    move(0.1);
    EXPECT_EQ(paintsOfALook(), 1);
}

TEST_F(PlimItemTest, TheClockStandsStillWhereNobodyLooks) {
    struct Case {
        const char* name;
        std::function<void(bool stop)> set;
    };
    QQuickItem* const root = window_.contentItem();
    const std::array cases{
        Case{"paused", [&](bool stop) { item_.setPaused(stop); }},
        Case{"covered", [&](bool stop) { item_.setCovered(stop); }},
        Case{"a still", [&](bool stop) { item_.setStill(stop); }},
        Case{"invisible", [&](bool stop) { item_.setVisible(!stop); }},
        Case{"inside what is invisible", [&](bool stop) { root->setVisible(!stop); }},
        Case{"in no window", [&](bool stop) { item_.setParentItem(stop ? nullptr : root); }},
        Case{"in a hidden window", [&](bool stop) { window_.setVisible(!stop); }},
        Case{"in a minimised window", [&](bool stop) { stop ? window_.showMinimized() : window_.showNormal(); }},
    };
    for (const Case& one : cases) {
        ASSERT_TRUE(item_.isRunning()) << one.name;
        one.set(true);
        EXPECT_FALSE(item_.isRunning()) << one.name;
        one.set(false);
    }
    EXPECT_TRUE(item_.isRunning());
}

TEST_F(PlimItemTest, WhatIsPausedOrStillTakesNoPaints) {
    shown();
    item_.setPaused(true);
    EXPECT_EQ(paintsOfALook(), 0);
    item_.setStill(true);
    EXPECT_EQ(paintsOfALook(), 1);
    item_.play("idle");
    item_.tick(now_ + 1);
    EXPECT_EQ(paintsOfALook(), 0);
}

TEST_F(PlimItemTest, AStillIsTheMomentThatStandsForTheReaction) {
    item_.setStill(true);
    for (const auto& [reaction, name] : EnumNames<PlimReaction>::names) {
        item_.setReaction(name);
        EXPECT_EQ(item_.reaction(), name);
        const QImage now = shown();
        QImage expected(now.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::white);
        QPainter(&expected).drawImage(
            0, 0, picture(plimFrame(reaction, plimSpec().reaction(reaction).still), expected.width()));
        EXPECT_LE(largestDifference(now, expected), 4) << name;
    }
}

TEST_F(PlimItemTest, PlaysWhatIsAReactionAndStaysWithItAtAnythingElse) {
    item_.setReaction("win");
    move(0);
    move(0.1);
    EXPECT_EQ(item_.controller().player().current(), PlimReaction::win);
    item_.play("dance");
    EXPECT_EQ(item_.reaction(), "win");
    EXPECT_GT(item_.controller().player().t(), 0);
    item_.play("win");
    EXPECT_EQ(item_.controller().player().t(), 0);
}

/// The switch of the settings: where a picture belongs one stays, elsewhere the companion is gone.
TEST(PlimBadge, FollowsTheSwitch) {
    DeskRig<> rig;
    QQmlEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    QQmlComponent component(&engine);
    component.setData("import Tessary.Kit\nPlimBadge {}", {});
    QQuickWindow window;
    window.show();
    for (const bool picture : {false, true}) {
        rig.desk.setCompanion(true);
        const std::unique_ptr<QObject> made(component.createWithInitialProperties(
            {{"desk", QVariant::fromValue(&rig.desk)}, {"picture", picture}, {"reaction", "cur"}, {"size", 48}}));
        auto* const badge = qobject_cast<PlimItem*>(made.get());
        ASSERT_NE(badge, nullptr) << component.errorString().toStdString();
        badge->setParentItem(window.contentItem());
        EXPECT_TRUE(badge->isVisible() && badge->isRunning());
        rig.desk.setCompanion(false);
        EXPECT_EQ(rig.desk.settings().boolean("tessary.companion"), false);
        EXPECT_FALSE(badge->isRunning());
        EXPECT_EQ(badge->isVisible(), picture);
        rig.desk.setCompanion(true);
        EXPECT_TRUE(badge->isVisible() && badge->isRunning());
    }
}

TEST(PlimView, FollowsTheThemeAndPlaysWhatItIsAskedFor) {
    QQmlEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    QQmlComponent component(&engine);
    component.setData("import Tessary.Kit\nPlimView { property var theme: Theme; function cheer() { play('win') } }",
                      {});
    const std::unique_ptr<QObject> made(component.create());
    auto* const view = qobject_cast<PlimItem*>(made.get());
    ASSERT_NE(view, nullptr) << component.errorString().toStdString();
    QQuickWindow window;
    window.show();
    view->setParentItem(window.contentItem());
    QMetaObject::invokeMethod(view, "cheer");
    EXPECT_EQ(view->reaction(), "win");
    EXPECT_TRUE(view->isRunning());
    auto* const theme = view->property("theme").value<QObject*>();
    ASSERT_NE(theme, nullptr);
    theme->setProperty("reduceMotion", true);
    theme->setProperty("dark", true);
    EXPECT_TRUE(view->isStill() && view->isDark());
    EXPECT_FALSE(view->isRunning());
}

}  // namespace
}  // namespace tessary
