// host/uikit/view/layout/layout_system.hpp: the constraints below one view, solved together.
#pragma once

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/layout/model.hpp"
#include "host/layout/stack.hpp"
#include "host/uikit/view/layout/layout_constraint.hpp"
#include "host/uikit/view/layout/layout_guide.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

/// A view whose own frame is known, the root, and all below it whose frames follow from constraints. It is
/// gathered when it is first solved, and again after views or constraints came or went; a changed constant or
/// content is entered into it as it stands.
class LayoutSystem {
 public:
  /// The outermost view whose frame decides the view's own.
  static UIView root_of(const UIView& view);
  /// Solves what the view is the root of, and places the views in it.
  static void lay_out(const UIView& root);
  /// What the view is part of is to be gathered anew.
  static void invalidate(const UIView& view);
  static void content_changed(const UIView& view);
  static void constant_changed(const UIView& holder, const NSLayoutConstraint& constraint);
  /// Ends what names the view, or a view in it, from outside of it: it is leaving.
  static void drop_crossing_constraints(const UIView& view);
  static Size fitting_size(const UIView& view, const Size& target, double across, double down);

  explicit LayoutSystem(const UIView& root);
  LayoutSystem(const LayoutSystem&) = delete;
  LayoutSystem& operator=(const LayoutSystem&) = delete;

 private:
  struct Member {
    NSObject object;  // a view or a guide
    layout::ItemId item;
  };

  static LayoutSystem* of(const UIView& root);
  bool empty() const { return constraints_.empty() && stacks_.empty(); }
  void gather(const UIView& view);
  void include(const UIView& view);
  layout::ItemId item_of(const NSObject& object);
  layout::ItemId add_view(const UIView& view);
  layout::ItemId add_guide(const UILayoutGuide& guide);
  void enter_content(const UIView& view, layout::ItemId item);
  void enter_constraint(const NSLayoutConstraint& constraint);
  void arrange_stacks();
  bool fit_heights_to_widths();
  void solve();
  void apply();
  void report(const layout::LayoutReport& report) const;

  UIView root() const { return root_.get(); }

  objc::Unowned<UIView> root_;  // it owns this
  layout::Model model_;
  std::vector<Member> members_;  // all but the root; parents before what is in them
  std::unordered_map<const void*, layout::ItemId> items_;
  std::vector<std::pair<NSLayoutConstraint, layout::ConstraintId>> constraints_;
  std::vector<NSLayoutConstraint> gathered_;
  std::vector<std::pair<objc::Unowned<UIView>, std::unique_ptr<layout::Stack>>> stacks_;
  std::unordered_map<const void*, bool> visited_;
};

}  // namespace wispen::uikit
