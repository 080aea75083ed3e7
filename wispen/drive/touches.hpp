// wispen/drive/touches.hpp: what a finger and a wheel do, on the host's driven clock.
#pragma once

#include "host/core/result.hpp"
#include "platform/UIKit.hpp"

namespace wispen::program {

/// What a function of the C interface gave: done, or the host's last error.
Result<void> done_or_why(int status);

/// Lets time pass until nothing moves.
Result<void> settle();

/// A finger goes down and up again there after so many seconds; then all comes to rest.
Result<void> touch_at(CGPoint point, double seconds);
/// The time that a tap takes.
inline constexpr double kTapSeconds = 1.0 / 60;
/// A finger goes from here to there.
Result<void> drag_between(CGPoint from, CGPoint to);
/// The wheel turns over the page; positive is up. False where the page stays.
bool turn_wheel(double points);

}  // namespace wispen::program
