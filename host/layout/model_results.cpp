// host/layout/model_results.cpp: what comes out of a model: frames, and reports in words.

#include <cmath>
#include <cstdio>
#include <utility>

#include "host/layout/model.hpp"

namespace wispen::layout {

namespace {

std::string shortest(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", number);
  return text;
}

const char* sign_of(Relation relation) {
  switch (relation) {
    case Relation::LessOrEqual:
      return " <= ";
    case Relation::Equal:
      return " == ";
    case Relation::GreaterOrEqual:
      return " >= ";
  }
  return " ? ";
}

}  // namespace

std::string Model::describe(ConstraintId id) const {
  const auto place = records_.find(static_cast<std::uint64_t>(id));
  if (place == records_.end()) return "a constraint that is gone";
  const auto& [origin, spec] = place->second;
  std::string text = spec.identifier.empty() ? "" : spec.identifier + ": ";
  text += at(spec.first).name + "." + name_of(spec.first_attribute) + sign_of(spec.relation);
  if (origin == Origin::Frame) return text + shortest(spec.constant) + " (its frame)";
  if (origin == Origin::Content) return text + shortest(spec.constant) + " (its content)";
  if (spec.second == kNoItem) {
    text += shortest(spec.constant);
  } else {
    if (spec.multiplier != 1) text += shortest(spec.multiplier) + " * ";
    text += at(spec.second).name + "." + name_of(spec.second_attribute);
    if (spec.constant > 0) text += " + " + shortest(spec.constant);
    if (spec.constant < 0) text += " - " + shortest(-spec.constant);
  }
  if (spec.priority < kRequired) text += " @" + shortest(spec.priority);
  return text;
}

std::string ConflictReport::message() const {
  std::string text = "These constraints cannot hold together:\n";
  for (const std::string& name : together) text += "  " + name + "\n";
  return text + "Broken to go on: " + broken_name;
}

LayoutReport Model::solve() {
  SolveReport solved = solver_.solve();
  LayoutReport report{.conflicts = {}, .optimal = solved.optimal};
  for (const Conflict& conflict : solved.conflicts) {
    ConflictReport named{.broken = conflict.broken, .broken_name = describe(conflict.broken), .together = {}};
    for (const ConstraintId id : conflict.together) named.together.push_back(describe(id));
    report.conflicts.push_back(std::move(named));
  }
  return report;
}

Rect Model::frame(ItemId item) const {
  if (!has_item(item)) return {};
  const Item& it = at(item);
  return {{solver_.value(it.left), solver_.value(it.top)},
          {solver_.value(it.width), solver_.value(it.height)}};
}

Rect Model::window_frame(ItemId item) const {
  Rect frame = this->frame(item);
  if (!has_item(item)) return frame;
  for (ItemId each = at(item).parent; each != kNoItem; each = at(each).parent) {
    frame.origin.x += solver_.value(at(each).left);
    frame.origin.y += solver_.value(at(each).top);
  }
  return frame;
}

Rect Model::frame(ItemId item, double scale) const {
  if (!std::isfinite(scale) || scale <= 0) return frame(item);
  const auto aligned = [scale](const Rect& rect) {
    // The hair's breadth keeps a half that rounding left just short of itself from falling to the wrong side.
    const auto nearest = [scale](double place) { return std::floor(place * scale + 0.5 + 1e-6) / scale; };
    const double left = nearest(rect.min_x());
    const double top = nearest(rect.min_y());
    return Rect{{left, top}, {nearest(rect.max_x()) - left, nearest(rect.max_y()) - top}};
  };
  Rect frame = aligned(window_frame(item));
  if (!has_item(item) || at(item).parent == kNoItem) return frame;
  const Rect parent = aligned(window_frame(at(item).parent));
  frame.origin.x -= parent.origin.x;
  frame.origin.y -= parent.origin.y;
  return frame;
}

}  // namespace wispen::layout
