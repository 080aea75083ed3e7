// host/layout/stack.hpp: views in a row or a column, arranged by constraints.
#pragma once

#include <optional>
#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/layout/model.hpp"

namespace wispen::layout {

/// The platform's values.
enum class StackDistribution {
  Fill = 0,
  FillEqually = 1,
  FillProportionally = 2,
  EqualSpacing = 3,
  EqualCentering = 4,
};

/// The platform's values. Leading and trailing stand for top and bottom in a horizontal stack. The baselines
/// are for horizontal stacks; in a vertical one they count as Fill.
enum class StackAlignment {
  Fill = 0,
  Leading = 1,
  FirstBaseline = 2,
  Center = 3,
  Trailing = 4,
  LastBaseline = 5,
};

struct StackStyle {
  Axis axis = Axis::Horizontal;
  StackDistribution distribution = StackDistribution::Fill;
  StackAlignment alignment = StackAlignment::Fill;
  double spacing = 0;
  /// In a vertical stack: spacing is measured from last to first baseline.
  bool baseline_relative = false;
  /// Kept free around the arranged views; left is the leading side, right the trailing one.
  EdgeInsets margins = {};
  friend bool operator==(const StackStyle&, const StackStyle&) = default;
};

struct ArrangedItem {
  ItemId item = kNoItem;
  /// A hidden item takes no room, and the spacing after it none either.
  bool hidden = false;
  std::optional<double> spacing_after = std::nullopt;
  friend bool operator==(const ArrangedItem&, const ArrangedItem&) = default;
};

/// Keeps the constraints that arrange items within a stack's item, as the platform's stack views do, so that
/// they meet the constraints of others on even terms. Edges, spacings, equal lengths and equal gaps are
/// required (the proportions of FillProportionally are held at 999), equal centre distances give way to the
/// views' own sizes. A stack is no larger than its views ask for unless something pulls at it.
///
/// Views that do not fit shrink by their compression resistance, and views that do not fill grow by their
/// hugging; where these are the same, the view with the highest index gives way first.
///
/// FillProportionally goes by intrinsic sizes, and by fitting sizes where there are none; call arrange()
/// again when they change.
class Stack {
 public:
  /// `model` must outlive the stack.
  Stack(Model& model, ItemId item) : model_(model), item_(item) {}
  Stack(const Stack&) = delete;
  Stack& operator=(const Stack&) = delete;
  ~Stack() { clear(); }

  /// Puts the arrangement in place of the one before. Items that are gone from the model are left out.
  void arrange(const StackStyle& style, std::vector<ArrangedItem> items);

 private:
  void clear();
  void constrain(const char* identifier, ItemId first, Attribute first_attribute, Relation relation,
                 ItemId second, Attribute second_attribute, double constant = 0,
                 Priority priority = kRequired, double multiplier = 1);
  void connect_ends();
  void connect_neighbours();
  void align(const ArrangedItem& arranged);
  void fit();
  void share_equally();
  void share_proportionally();
  void place_gaps();
  double spacing_after(const ArrangedItem& arranged) const;
  double proportion_of(ItemId item) const;
  bool aligns_baselines() const;

  Model& model_;
  ItemId item_;
  StackStyle style_;
  std::vector<ArrangedItem> shown_;
  std::vector<ConstraintId> constraints_;
  std::vector<ItemId> gaps_;
};

}  // namespace wispen::layout
