// host/layout/model.hpp: items with attributes, the constraints between them, and the frames that follow.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/core/result.hpp"
#include "host/geometry/geometry.hpp"
#include "host/layout/axis.hpp"
#include "host/layout/constraint.hpp"
#include "host/layout/solver.hpp"

namespace wispen::layout {

inline constexpr Priority kDefaultHugging = 250;
inline constexpr Priority kDefaultCompressionResistance = 750;
/// At which fitting_size() pulls towards its target.
inline constexpr Priority kFittingSizeLevel = 50;
inline constexpr Size kFittingCompressed{0, 0};
inline constexpr Size kFittingExpanded{10'000, 10'000};

/// A contradiction, in words.
struct ConflictReport {
  ConstraintId broken{};
  std::string broken_name;
  /// The names of all that cannot hold together, the broken one's included, eldest first.
  std::vector<std::string> together;

  /// For the log, over several lines.
  std::string message() const;
};

struct LayoutReport {
  std::vector<ConflictReport> conflicts;
  bool optimal = true;
};

/// Views and guides of one window, and what is said about them. Places are kept in the coordinates of the
/// window, so that constraints may reach across the hierarchy; frames are given relative to the parent.
/// Changes show in frames after solve(). Sizes are never negative: each item has that as a required
/// constraint.
class Model {
 public:
  /// `name` is for reports alone. An item without a parent has its frame in the window's coordinates.
  ItemId add_item(std::string name, ItemId parent = kNoItem);
  /// Removes the item, what is inside it, and every constraint that names one of them.
  void remove_item(ItemId item);
  bool has_item(ItemId item) const;

  /// Which side leading is on. In right-to-left a constraint with leading or trailing counts from right to
  /// left, its constant and its inequality too.
  void set_direction(Direction direction);

  Result<ConstraintId> add_constraint(ConstraintSpec spec);
  /// Unknown and removed constraints are ignored here and below.
  void remove_constraint(ConstraintId id);
  Result<void> set_constant(ConstraintId id, double constant);
  Result<void> set_priority(ConstraintId id, Priority priority);
  bool is_broken(ConstraintId id) const { return solver_.is_broken(id); }
  /// "content.leading == row.leading + 15", after the identifier and a colon where it has one.
  std::string describe(ConstraintId id) const;

  /// The size that the item's content asks for; nullopt along an axis where it asks for none.
  void set_intrinsic_size(ItemId item, std::optional<double> width, std::optional<double> height);
  std::optional<double> intrinsic_length(ItemId item, Axis axis) const;
  /// How strongly the item keeps from growing beyond, and from shrinking below, its intrinsic size.
  Result<void> set_hugging(ItemId item, Axis axis, Priority priority);
  Result<void> set_compression_resistance(ItemId item, Axis axis, Priority priority);
  /// Where priorities are the same, items of lower rank keep their size and those of higher rank give way.
  void set_tie_rank(ItemId item, Axis axis, int rank);
  /// Distances of the first baseline from the top edge and of the last one from the bottom edge.
  void set_baselines(ItemId item, double first_from_top, double last_from_bottom);

  /// For items whose frame is set by hand: it becomes required, relative to the parent. `parent_size` is the
  /// size that the parent had when the frame was set; where the parent comes out otherwise, the frame follows
  /// by its autoresizing mask. Refuses numbers that are not finite.
  Result<void> set_frame(ItemId item, const Rect& frame, unsigned autoresizing_mask = 0,
                         Size parent_size = {});
  void clear_frame(ItemId item);

  LayoutReport solve();

  /// Relative to the parent.
  Rect frame(ItemId item) const;
  /// With both edges of either axis brought to the nearest of `scale` pixels a point, in the window; so that
  /// what touches still touches.
  Rect frame(ItemId item, double scale) const;
  Rect window_frame(ItemId item) const;

  /// The size that suits the item and what is inside it, pulled towards `target` along each axis with the
  /// given priority (kRequired: exactly that size). What surrounds the item and its own frame do not count.
  Size fitting_size(ItemId item, Size target, Priority across = kFittingSizeLevel,
                    Priority down = kFittingSizeLevel) const;

  std::size_t constraint_count() const { return solver_.constraint_count(); }

 private:
  enum class Origin : std::uint8_t { Authored, Bound, Content, Frame };
  struct Record {
    Origin origin = Origin::Authored;
    ConstraintSpec spec;
  };
  struct Content {
    std::optional<double> length;
    Priority hugging = kDefaultHugging;
    Priority resistance = kDefaultCompressionResistance;
    int rank = 0;
    std::optional<ConstraintId> hugs;
    std::optional<ConstraintId> resists;
  };
  struct Item {
    bool alive = false;
    std::uint32_t generation = 0;
    std::string name;
    ItemId parent = kNoItem;
    std::vector<ItemId> children;
    Var left = 0;  // relative to the parent, as is top
    Var top = 0;
    Var width = 0;
    Var height = 0;
    Content content[2];
    double first_baseline = 0;
    double last_baseline = 0;
    std::vector<ConstraintId> constraints;  // all that name it
    std::vector<ConstraintId> frame_constraints;
    std::optional<Rect> fixed_frame;
    unsigned mask = 0;
    Size parent_size;
  };
  /// A sum of terms and a constant.
  struct Expression {
    Terms terms;
    double constant = 0;
    void add(const Expression& other, double factor);
  };
  struct Equation {
    Terms terms;
    Relation relation;
    double constant;
  };

  static std::uint32_t index_of(ItemId item) { return static_cast<std::uint32_t>(item); }
  Item& at(ItemId item) { return items_[index_of(item)]; }
  const Item& at(ItemId item) const { return items_[index_of(item)]; }
  /// A place is relative to `holder`, an ancestor of the item or itself; to the window where it is kNoItem.
  Expression expression(ItemId item, Attribute attribute, ItemId holder) const;
  ItemId common_ancestor(ItemId one, ItemId other) const;
  Equation equation(const ConstraintSpec& spec) const;
  Result<ConstraintId> enter(Origin origin, ConstraintSpec spec, Equation equation);
  void write_again(ConstraintId id);
  void update_content(ItemId item, Axis axis);
  void enter_frame_equation(ItemId item, Attribute attribute, Expression place, double value);
  std::vector<ItemId> subtree(ItemId item) const;

  Solver solver_;
  std::vector<Item> items_;
  std::vector<std::uint32_t> free_items_;
  std::unordered_map<std::uint64_t, Record> records_;
  Direction direction_ = Direction::LeftToRight;
};

}  // namespace wispen::layout
