#pragma once

#include <optional>

#include "base/date.h"
#include "companion/plim_frame.h"
#include "companion/plim_spec.h"

namespace tessary {

/// Plays one reaction after the other, each fading into the next. A reaction without a loop hands back to the base.
class PlimPlayer {
public:
    /// `spec` outlives the player.
    explicit PlimPlayer(const PlimSpec& spec = plimSpec()) : spec_(spec) {}
    PlimPlayer(const PlimPlayer&) = delete;
    PlimPlayer& operator=(const PlimPlayer&) = delete;

    [[nodiscard]] const PlimSpec& spec() const { return spec_; }
    [[nodiscard]] PlimReaction base() const { return base_; }
    [[nodiscard]] PlimReaction current() const { return current_; }
    [[nodiscard]] double time() const { return time_; }  ///< seconds played in all
    [[nodiscard]] double t() const { return t_; }        ///< seconds into the current reaction
    [[nodiscard]] double bt() const { return bt_; }      ///< seconds since the last change of reaction
    [[nodiscard]] std::optional<Date> lastDate() const { return lastDate_; }
    /// The picture that the current one fades out of; none once the fade is over.
    [[nodiscard]] const std::optional<PlimFrame>& snap() const { return snap_; }

    /// The reaction to return to.
    void setBase(PlimReaction base) { base_ = base; }

    /// Fades from the present picture into the start of `reaction`. Does nothing when it is a loop and runs already.
    void play(PlimReaction reaction);

    /// Moves on by `dt` seconds and gives them; what is no time (negative, NaN, infinite) moves nothing and gives 0.
    double advance(double dt);

    /// Moves on by the time since the last tick, times `speed`, and gives the seconds moved. After a pause, or when
    /// the clock was set, motion goes on from where it stood: a tick is 0.1 seconds at most, and never goes back.
    double tick(Date now, double speed);

    /// The present picture.
    [[nodiscard]] PlimFrame frame() const;

private:
    const PlimSpec& spec_;
    PlimReaction base_ = PlimReaction::idle;
    PlimReaction current_ = PlimReaction::idle;
    double time_ = 0;
    double t_ = 0;
    double bt_ = 0;
    std::optional<PlimFrame> snap_;
    std::optional<Date> lastDate_;
};

}  // namespace tessary
