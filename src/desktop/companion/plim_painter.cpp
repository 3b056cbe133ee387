#include "desktop/companion/plim_painter.h"

#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <algorithm>

#include "base/function_ref.h"
#include "desktop/companion/plim_brush.h"
#include "desktop/companion/plim_parts.h"

namespace tessary {
namespace {

constexpr double kUnits = 240;
// Small, the star fills its square, and what flies around it is drawn closer.
constexpr double kBadgeZoom = 1.24;
constexpr QPointF kBadgeFrom{125, 116};
constexpr QPointF kBadgeTo{124, 119};
constexpr QPointF kBadgeMiddle{124, 116};
constexpr double kBadgePull = 0.86;
constexpr double kBadgeJump = 0.3;  // of a jump's height: there is less room above

FzFx pulled(FzFx effect) {
    for (const auto& [name, middle] : {std::pair{"x", kBadgeMiddle.x()}, std::pair{"y", kBadgeMiddle.y()}})
        effect.v[name] = lerp(middle, valueOf(effect, name), kBadgePull);
    return effect;
}

/// The turn is about the heart, squash and stretch about the feet.
QTransform bodySpace(const PlimPose& pose) {
    constexpr double kFeet = 40;
    QTransform space;
    space.translate(kHeart.x() + pose.dx, kHeart.y() + pose.dy);
    space.rotate(pose.rot);
    space.translate(0, kFeet);
    space.scale(pose.sx, pose.sy);
    space.translate(0, -kFeet);
    return space;
}

void paintPlim(QImage& canvas, const PlimFrame& frame, PlimLook look) {
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(canvas.width() / kUnits, canvas.height() / kUnits);
    PlimPose pose = poseOf(frame);
    std::vector<FzFx> effects = frame.fx;
    if (look.detail != PlimDetail::full) {
        painter.translate(kBadgeTo);
        painter.scale(kBadgeZoom, kBadgeZoom);
        painter.translate(-kBadgeFrom);
        pose.dy = std::max(pose.dy, pose.dy * kBadgeJump);
        for (FzFx& effect : effects) {
            if (!effect.body) effect = pulled(std::move(effect));
        }
    }
    const QTransform space = painter.worldTransform();
    const QTransform body = bodySpace(pose) * space;
    const QRectF room = space.inverted().mapRect(QRectF(canvas.rect()));

    // The star comes first and what is behind it is put behind it: so its rim is cut by its own shape, with no clip.
    painter.setWorldTransform(body);
    drawBody(painter, pose, look);
    painter.setWorldTransform(space);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    drawTrail(painter, pose, look);
    for (const FzFx& effect : effects) {
        if (effect.type == "burst") drawBurst(painter, effect, look, room);
    }
    drawGlow(painter, pose, look, room);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (look.detail == PlimDetail::full) drawDust(painter, pose, look);

    painter.setWorldTransform(body);
    drawFace(painter, pose, look);
    drawChinArm(painter, pose, look);
    for (const FzFx& effect : effects) {
        if (effect.type == "burst") continue;
        painter.setWorldTransform(effect.body ? QTransform::fromTranslate(-kHeart.x(), -kHeart.y()) * body : space);
        effect.type == "notebook" ? drawNotebook(painter, effect, pose, look) : drawEffect(painter, effect, look);
    }
}

/// Qt spreads each larger fill over its threads and waits for them, which takes as long again as the fill itself when
/// the picture is this small. Within one of those threads it does not.
void onOneThread(FunctionRef<void()> paint) {
    QThreadPool& threads = *QThreadPool::globalInstance();
    QSemaphore done;
    const bool taken = !threads.contains(QThread::currentThread()) && threads.tryStart([&] {
        paint();
        done.release();
    });
    taken ? done.acquire() : paint();
}

}  // namespace

PlimDetail detailFor(double logicalSize) {
    return logicalSize <= 40 ? PlimDetail::speck : logicalSize <= 56 ? PlimDetail::badge : PlimDetail::full;
}

void drawPlim(QImage& canvas, const PlimFrame& frame, PlimLook look) {
    onOneThread([&] { paintPlim(canvas, frame, look); });
}

}  // namespace tessary
