#pragma once

#include "companion/plim_frame.h"

namespace tessary {

enum class PlimEye { open, happy, closed };
enum class PlimBrow { none, cur, think, sad };
enum class PlimMouth { smile, grin, o, oh, wobble, tiny };

/// A frame's pose read once from its maps. A channel or shape that is absent or unknown is as at rest.
struct PlimPose {
    double dx = 0, dy = 0;         ///< units, downwards
    double rot = -10;              ///< degrees, clockwise
    double sx = 1, sy = 1;         ///< squash and stretch
    double ra = -16, la = 196;     ///< where the points of the right and the left arm show, degrees
    double tail = 1, tailA = 0;    ///< length of the trail, and its turn in degrees
    double glow = 1.1;
    double lx = 0, ly = 0;         ///< gaze, -1 to 1
    double pr = 1;                 ///< size of the irises
    double lid = 0;                ///< 0 open, 1 closed
    double tilt = 0;               ///< of the face: 0 cheerful, 1 in sorrow
    double wink = 0;               ///< of the eye on the viewer's right, 0 to 1
    double browY = 0;              ///< units, downwards
    double mouthS = 1;
    PlimEye eye = PlimEye::open;
    PlimBrow brow = PlimBrow::none;
    PlimMouth mouth = PlimMouth::smile;
};

[[nodiscard]] PlimPose poseOf(const PlimFrame& frame);

/// A value of an effect, `otherwise` where it has none.
[[nodiscard]] double valueOf(const FzFx& effect, const char* name, double otherwise = 0);

}  // namespace tessary
