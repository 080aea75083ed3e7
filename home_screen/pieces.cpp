// home_screen/pieces.cpp: what menu, notification and screen are made of.

#include "home_screen/pieces.hpp"

namespace wispen::home_screen {

UILabel make_label(const std::string& text, const UIFont& font, const UIColor& ink, CGRect frame,
                   NSTextAlignment alignment) {
  const UILabel label = UILabel::alloc().initWithFrame(frame);
  label.setText(NSString(text.c_str()));
  label.setFont(font);
  label.setTextColor(ink);
  label.setTextAlignment(alignment);
  return label;
}

UIView make_pane(CGRect frame, double radius, UIBlurEffectStyle blur, const Ground& ground) {
  const UIView pane = UIView::alloc().initWithFrame(frame);
  pane.setClipsToBounds(true);
  pane.layer().setCornerRadius(radius);
  const UIVisualEffectView effect =
      UIVisualEffectView::alloc().initWithEffect(UIBlurEffect::effectWithStyle(blur));
  const UIView fill = UIView::alloc().initWithFrame(pane.bounds());
  fill.setBackgroundColor(ground.fill);
  fill.setTag(kFillTag);
  for (const UIView& layer : {UIView(effect), fill}) {
    layer.setFrame(pane.bounds());
    layer.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    pane.addSubview(layer);
  }
  return pane;
}

void set_pane_height(const UIView& pane, double height) {
  CGRect frame = pane.frame();
  frame.size.height = height;
  pane.setFrame(frame);
}

}  // namespace wispen::home_screen
