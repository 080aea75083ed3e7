// fuzz/layout_fuzz.cpp: bytes as a script of items, constraints, stacks, edits and removals.
//
// Whatever comes, every frame must be made of finite numbers, sizes must not be negative, and required
// constraints that are not reported as broken must hold.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "host/layout/model.hpp"
#include "host/layout/stack.hpp"

namespace {

using namespace wispen;
using namespace wispen::layout;

void require(bool holds) {
  if (!holds) std::abort();
}

class Script {
 public:
  Script(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}
  bool done() const { return at_ == end_; }
  unsigned byte() { return done() ? 0 : *at_++; }
  double number() {
    const unsigned first = byte();
    if (first < 250) return static_cast<double>(first) - 100;
    // Now and then any number at all, NaN and infinities among them.
    std::array<std::uint8_t, 8> bytes{};
    for (std::uint8_t& each : bytes) each = static_cast<std::uint8_t>(byte());
    double any = 0;
    std::memcpy(&any, bytes.data(), sizeof any);
    return any;
  }
  double multiplier() {
    static constexpr std::array<double, 8> kUsual{1, 1, 1, 0.5, 2, -1, 1.0 / 3, 0};
    const unsigned first = byte();
    return first < 250 ? kUsual[first % 8] : number();
  }
  double priority() {
    static constexpr std::array<double, 8> kUsual{1000, 1000, 999, 750, 251, 250, 50.5, 1};
    const unsigned first = byte();
    return first < 250 ? kUsual[first % 8] : number();
  }

 private:
  const std::uint8_t* at_;
  const std::uint8_t* end_;
};

class Player {
 public:
  explicit Player(Script script) : script_(script) {}

  void play() {
    items_.push_back(model_.add_item("window"));
    (void)model_.set_frame(items_[0], {{0, 0}, {400, 300}});
    for (int steps = 0; !script_.done() && steps < 300; ++steps) step();
    check();
  }

 private:
  ItemId item() { return items_[script_.byte() % items_.size()]; }
  Axis axis() { return static_cast<Axis>(script_.byte() % 2); }

  void step() {
    switch (script_.byte() % 14) {
      case 0:
        if (items_.size() < 60) items_.push_back(model_.add_item("item", item()));
        break;
      case 1:
      case 2:
      case 3:
        constrain();
        break;
      case 4:
        if (!constraints_.empty()) {
          model_.remove_constraint(constraints_[script_.byte() % constraints_.size()].id);
        }
        break;
      case 5:
        if (!constraints_.empty()) {
          Added& added = constraints_[script_.byte() % constraints_.size()];
          const double constant = script_.number();
          if (model_.set_constant(added.id, constant)) added.spec.constant = constant;
        }
        break;
      case 6:
        if (!constraints_.empty()) {
          Added& added = constraints_[script_.byte() % constraints_.size()];
          const double priority = script_.priority();
          if (model_.set_priority(added.id, priority)) added.spec.priority = priority;
        }
        break;
      case 7: {
        const ItemId which = item();
        const double width = script_.number();
        model_.set_intrinsic_size(which, width, script_.number());
        break;
      }
      case 8: {
        const ItemId which = item();
        const Rect frame{{script_.number(), script_.number()}, {script_.number(), script_.number()}};
        const unsigned mask = script_.byte();
        (void)model_.set_frame(which, frame, mask, {script_.number(), script_.number()});
        break;
      }
      case 9:
        if (script_.byte() % 4 == 0) model_.remove_item(item());
        if (!model_.has_item(items_[0])) items_[0] = model_.add_item("window");
        break;
      case 10:
        (void)model_.set_hugging(item(), axis(), script_.priority());
        (void)model_.set_compression_resistance(item(), axis(), script_.priority());
        break;
      case 11:
        arrange();
        break;
      case 12:
        model_.set_direction(script_.byte() % 2 == 0 ? Direction::LeftToRight : Direction::RightToLeft);
        model_.set_baselines(item(), script_.number(), script_.number());
        break;
      case 13:
        if (script_.byte() % 8 == 0) (void)model_.fitting_size(item(), {script_.number(), script_.number()});
        check();
        break;
      default:
        break;
    }
  }

  void constrain() {
    ConstraintSpec spec{.first = item(),
                        .first_attribute = static_cast<Attribute>(script_.byte() % 14),
                        .relation = static_cast<Relation>(static_cast<int>(script_.byte() % 3) - 1),
                        .second = item(),
                        .second_attribute = static_cast<Attribute>(script_.byte() % 14),
                        .multiplier = script_.multiplier(),
                        .constant = script_.number(),
                        .priority = script_.priority()};
    if (spec.second_attribute == Attribute::NotAnAttribute) spec.second = kNoItem;
    if (const auto added = model_.add_constraint(spec)) constraints_.push_back({*added, spec});
  }

  void arrange() {
    const ItemId home = item();
    const unsigned style = script_.byte();
    std::vector<ArrangedItem> arranged;
    for (unsigned count = script_.byte() % 5; count > 0; --count) {
      arranged.push_back({.item = item(), .hidden = script_.byte() % 4 == 0});
    }
    const double spacing = script_.number();
    if (stacks_.size() < 4) stacks_.push_back(std::make_unique<Stack>(model_, home));
    stacks_.back()->arrange({.axis = static_cast<Axis>(style % 2),
                             .distribution = static_cast<StackDistribution>(style / 2 % 5),
                             .alignment = static_cast<StackAlignment>(style / 10 % 6),
                             .spacing = spacing},
                            std::move(arranged));
  }

  void check() {
    const LayoutReport report = model_.solve();
    for (const ConflictReport& conflict : report.conflicts) require(!conflict.message().empty());
    for (const ItemId each : items_) {
      const Rect frame = model_.frame(each);
      const Rect aligned = model_.frame(each, 3);
      for (const double number : {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height,
                                  aligned.origin.x, aligned.size.width}) {
        require(std::isfinite(number));
      }
      if (report.optimal) require(frame.size.width > -1e-4 && frame.size.height > -1e-4);
    }
    if (!report.optimal) return;
    for (const Added& added : constraints_) check_holds(added.id, added.spec);
  }

  /// For what can be checked without knowing how places are turned and multiplied.
  void check_holds(ConstraintId id, const ConstraintSpec& spec) const {
    const bool of_size = spec.first_attribute == Attribute::Width && spec.second == kNoItem;
    if (!of_size || spec.priority < kRequired || !model_.has_item(spec.first) || model_.is_broken(id)) return;
    if (model_.describe(id) == "a constraint that is gone" || std::abs(spec.constant) > 1e6) return;
    const double excess = model_.frame(spec.first).width() - spec.constant;
    if (spec.relation != Relation::GreaterOrEqual) require(excess < 1e-4);
    if (spec.relation != Relation::LessOrEqual) require(excess > -1e-4);
  }

  struct Added {
    ConstraintId id;
    ConstraintSpec spec;
  };
  Script script_;
  Model model_;
  std::vector<ItemId> items_;
  std::vector<Added> constraints_;
  std::vector<std::unique_ptr<Stack>> stacks_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Player(Script(data, size)).play();
  return 0;
}
