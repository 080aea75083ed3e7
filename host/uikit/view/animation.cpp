// host/uikit/view/animation.cpp: values that reach their views over time, on the host's clock.

#include "host/uikit/view/animation.hpp"

#include <algorithm>
#include <utility>

#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

AnimationEngine* current_engine = nullptr;

Nanoseconds nanoseconds(double seconds) { return Nanoseconds(static_cast<std::int64_t>(seconds * 1e9)); }

}  // namespace

AnimationEngine* AnimationEngine::current() { return current_engine; }
void AnimationEngine::set_current(AnimationEngine* engine) { current_engine = engine; }

Nanoseconds AnimationGroup::end() const { return start + nanoseconds(timing.delay + timing.duration); }
bool AnimationGroup::over(Nanoseconds now) const { return now >= end(); }

double AnimationGroup::progress(Nanoseconds now) const {
  if (over(now)) return 1;
  const double elapsed = static_cast<double>((now - start).count()) / 1e9 - timing.delay;
  if (elapsed <= 0) return 0;
  if (timing.spring) return timing.spring->progress(elapsed);
  return timing.curve.progress(elapsed / timing.duration);
}

void AnimationEngine::animate(const AnimationTiming& timing, const std::function<void()>& changes,
                              std::function<void(bool)> completion) {
  const bool animated = enabled_ && timing.duration + timing.delay > 0;
  auto group = animated ? std::make_shared<AnimationGroup>() : nullptr;
  if (group) {
    group->timing = timing;
    group->start = now();
  }
  open_.push_back(group);
  changes();
  open_.pop_back();
  if (!completion) return;
  if (group && group->animates) {
    loop_.add_timer(group->end() - now(),
                    [group, completion = std::move(completion)] { completion(!group->interrupted); });
  } else {
    loop_.post([completion = std::move(completion)] { completion(true); });
  }
}

void AnimationEngine::without_animation(const std::function<void()>& changes) {
  open_.push_back(nullptr);
  changes();
  open_.pop_back();
}

std::shared_ptr<AnimationGroup> AnimationEngine::joining() { return open_.empty() ? nullptr : open_.back(); }

void AnimationEngine::add(const UIView& view, const std::shared_ptr<AnimationGroup>& group) {
  group->animates = true;
  const auto same = [&](const Moving& moving) {
    return moving.view.refers_to(view) && moving.group == group;
  };
  if (std::ranges::none_of(moving_, same)) moving_.push_back({objc::Unowned<UIView>(view), group});
}

void AnimationEngine::forget(const UIView& view) {
  std::erase_if(moving_, [&](const Moving& moving) { return moving.view.refers_to(view); });
}

bool AnimationEngine::active() { return !moving_.empty(); }

void AnimationEngine::mark_moving_views() {
  const Nanoseconds time = now();
  for (const Moving& moving : std::vector<Moving>(moving_)) {
    View& view = View::of(moving.view.get());
    view.geometry_changed();
    view.setNeedsDisplay();  // its background may be on its way
  }
  std::erase_if(moving_, [&](const Moving& moving) { return moving.group->over(time); });
}

void AnimationEngine::remove_all(const UIView& view) {
  View& moved = View::of(view);
  auto& animations = moved.animations();
  if (!animations) return;
  const auto interrupt = [](auto& slot) {
    if (slot) slot->group->interrupted = true;
  };
  interrupt(animations->bounds);
  interrupt(animations->center);
  interrupt(animations->alpha);
  interrupt(animations->transform);
  interrupt(animations->background);
  animations.reset();
  moved.geometry_changed();
  moved.setNeedsDisplay();
  if (current_engine != nullptr) current_engine->forget(view);
}

}  // namespace wispen::uikit
