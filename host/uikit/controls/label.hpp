// host/uikit/controls/label.hpp: UILabel: text that is read only.
#pragma once

#include <memory>

#include "host/graphics/text_layout.hpp"
#include "host/uikit/views/view.hpp"
#include "platform/UIKit/NSAttributedString.hpp"
#include "platform/UIKit/UIFont.hpp"

namespace wispen::uikit {

struct LabelState {
  NSString text;
  NSAttributedString attributed;  // in place of the text when it was set last
  UIFont font;
  UIColor colour;
  UIColor highlighted_colour;
  bool highlighted = false;
  bool enabled = true;
  NSInteger alignment = 4;
  NSInteger lines = 1;
  NSInteger line_break = 4;
  bool shrinks = false;
  double minimum_scale = 0;
  double preferred_width = 0;
};

class Label : public objc::Authored<Label, View> {
 public:
  static constexpr objc::FixedString kClass{"UILabel"};
  using Authored::Authored;

  static void define();
  static Label make(const Rect& frame = {});
  LabelState& label() const { return state<LabelState>(); }

  NSString text() const;
  void setText(const NSString& text) const;
  NSAttributedString attributedText() const;
  void setAttributedText(const NSAttributedString& text) const;
  UIFont font() const;
  void setFont(const UIFont& font) const;
  UIColor textColor() const;
  void setTextColor(const UIColor& colour) const;
  void setTextAlignment(NSInteger alignment) const;
  void setNumberOfLines(NSInteger lines) const;
  void setHighlighted(bool highlighted) const;
  void setEnabled(bool enabled) const;

  /// Set in that much room; infinite where it is not bounded.
  std::shared_ptr<const graphics::TextLayout> set_in(Size room) const;
  /// Where the text lies in the bounds.
  Point text_origin(const graphics::TextLayout& text, const Rect& bounds) const;

 private:
  friend struct LabelMethods;
  void content_changed() const;
};

}  // namespace wispen::uikit
