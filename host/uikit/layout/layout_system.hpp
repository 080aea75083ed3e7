// host/uikit/layout/layout_system.hpp: the constraints below one view, solved together.
#pragma once

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/layout/model.hpp"
#include "host/layout/stack.hpp"
#include "host/uikit/layout/layout_constraint.hpp"
#include "host/uikit/layout/layout_guide.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

/// A view whose own frame is known, the root, and all below it whose frames follow from constraints. It is
/// gathered when it is first solved, and again after views or constraints came or went; a changed constant or
/// content is entered into it as it stands.
class LayoutSystem {
 public:
  /// The outermost view whose frame decides the view's own.
  static View root_of(const View& view);
  /// Solves what the view is the root of, and places the views in it.
  static void lay_out(const View& root);
  /// What the view is part of is to be gathered anew.
  static void invalidate(const View& view);
  static void content_changed(const View& view);
  static void constant_changed(const View& holder, const LayoutConstraint& constraint);
  /// Ends what names the view, or a view in it, from outside of it: it is leaving.
  static void drop_crossing_constraints(const View& view);
  static Size fitting_size(const View& view, const Size& target, double across, double down);

  explicit LayoutSystem(const View& root);
  LayoutSystem(const LayoutSystem&) = delete;
  LayoutSystem& operator=(const LayoutSystem&) = delete;

 private:
  struct Member {
    NSObject object;  // a view or a guide
    layout::ItemId item;
  };

  static LayoutSystem* of(const View& root);
  bool empty() const { return constraints_.empty() && stacks_.empty(); }
  void gather(const View& view);
  void include(const View& view);
  layout::ItemId item_of(const NSObject& object);
  layout::ItemId add_view(const View& view);
  layout::ItemId add_guide(const LayoutGuide& guide);
  void enter_content(const View& view, layout::ItemId item);
  void enter_constraint(const LayoutConstraint& constraint);
  void arrange_stacks();
  bool fit_heights_to_widths();
  void solve();
  void apply();
  void report(const layout::LayoutReport& report) const;

  View root() const { return root_.get(); }

  objc::Unowned<View> root_;  // it owns this
  layout::Model model_;
  std::vector<Member> members_;  // all but the root; parents before what is in them
  std::unordered_map<objc::abi::id, layout::ItemId> items_;
  std::vector<std::pair<LayoutConstraint, layout::ConstraintId>> constraints_;
  std::vector<LayoutConstraint> gathered_;
  std::vector<std::pair<objc::Unowned<View>, std::unique_ptr<layout::Stack>>> stacks_;
  std::unordered_map<objc::abi::id, bool> visited_;
  bool solved_ = false;
};

}  // namespace wispen::uikit
