// host/uikit/tables/header_footer_view.hpp: UITableViewHeaderFooterView: the words above or below a section.
#pragma once

#include "host/uikit/controls/label.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

struct HeaderFooterState;

/// The host's UITableViewHeaderFooterView. Tables make them for titles; pages may have subclasses of it.
class HeaderFooterView : public objc::Authored<HeaderFooterView, View> {
 public:
  static constexpr objc::FixedString kClass{"UITableViewHeaderFooterView"};
  using Authored::Authored;

  static void define();
  static HeaderFooterView make(const NSString& reuse_identifier);

  View contentView() const;
  Label textLabel() const;
  NSString reuse_identifier() const;
  /// A header's words stand at its lower edge, a footer's at its upper.
  void set_is_header(bool is_header) const;

 private:
  friend struct HeaderFooterMethods;
  HeaderFooterState& parts() const;
};

inline constexpr double kSectionTextPadding = 7;  // between a header's words and its rows
inline constexpr double kFooterTextTop = 8;       // between the rows and a footer's words

}  // namespace wispen::uikit
