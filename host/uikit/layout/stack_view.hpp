// host/uikit/layout/stack_view.hpp: UIStackView: views in a row or a column.
#pragma once

#include <optional>
#include <vector>

#include "host/layout/stack.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

struct StackState;

/// The host's UIStackView. The arranged views are subviews too; their order is the stack's own.
class StackView : public objc::Authored<StackView, View> {
 public:
  static constexpr objc::FixedString kClass{"UIStackView"};
  using Authored::Authored;

  static void define();

  const std::vector<View>& arranged() const;
  layout::StackStyle style() const;
  std::optional<double> spacing_after(const View& view) const;

 private:
  friend struct StackMethods;
  StackState& parts() const;
};

}  // namespace wispen::uikit
