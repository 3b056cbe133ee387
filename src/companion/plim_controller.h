#pragma once

#include "base/signal.h"
#include "companion/plim_player.h"

namespace tessary {

enum class PlimTick { unlessFrozen, forced };

/// Drives the player from a display's ticks, on the main thread. A loop that has shown itself long enough freezes, so
/// that an unattended companion doesn't keep the display busy.
class PlimController {
public:
    /// `spec` outlives the controller.
    explicit PlimController(const PlimSpec& spec = plimSpec());

    /// Animation seconds for each second of the clock. With 0, less, or NaN the companion stands still.
    [[nodiscard]] double speed() const { return speed_; }
    void setSpeed(double speed) { speed_ = speed; }

    [[nodiscard]] const PlimPlayer& player() const { return player_; }
    void setBase(PlimReaction base) { player_.setBase(base); }

    /// Animation seconds that the current loop has been shown since its fade was over.
    [[nodiscard]] double awake() const { return awake_; }
    /// Nothing moves until `play`: the display need not tick.
    [[nodiscard]] bool frozen() const { return frozen_; }

    void play(PlimReaction reaction);

    /// A forced tick moves a frozen companion too, which stays frozen for the ticks that are not.
    void tick(Date now, PlimTick force = PlimTick::unlessFrozen);

    /// What to draw; changes before `changed` is emitted.
    [[nodiscard]] const PlimFrame& frame() const { return frame_; }

    /// There is a new frame, or `play` has ended a freeze.
    [[nodiscard]] Signal<>& changed() { return changed_; }

private:
    void publish();

    double speed_ = 1;
    PlimPlayer player_;
    double awake_ = 0;
    bool frozen_ = false;
    PlimFrame frame_;
    Signal<> changed_;
};

/// Animation seconds that a reaction is shown before it freezes: its loop three times, 8 at most.
[[nodiscard]] double holdTime(const PlimSpec::Reaction& reaction);

}  // namespace tessary
