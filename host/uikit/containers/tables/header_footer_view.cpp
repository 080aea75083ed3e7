// host/uikit/containers/tables/header_footer_view.cpp: UITableViewHeaderFooterView: the words above or below
// a section.

#include "host/uikit/containers/tables/header_footer_view.hpp"

#include <algorithm>

#include "host/graphics/text_style.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

graphics::Font footnote_font() {
  return graphics::text_style_font(graphics::TextStyle::Footnote, display_settings().content_size);
}

}  // namespace

/// The host's UITableViewHeaderFooterView. Tables make them for titles; pages may have subclasses of it.
namespace {

/// The host's UITableViewHeaderFooterView. Tables make them for titles; pages may have subclasses of it.
class HeaderFooterView : public objc::Implementation<HeaderFooterView, UITableViewHeaderFooterView> {
 public:
  static UITableViewHeaderFooterView initWithIdentifier(objc::Allocated<UITableViewHeaderFooterView> self,
                                                        const NSString& identifier) {
    UITableViewHeaderFooterView view = super_init<"initWithFrame:">(std::move(self), Rect{});
    if (!view) return view;
    of(view).reuse_identifier_ = identifier;
    of(view).content_ = objc::make<UIView>();
    view.addSubview(of(view).content_);
    return view;
  }
  static UITableViewHeaderFooterView initWithFrame(objc::Allocated<UITableViewHeaderFooterView> self,
                                                   const Rect&) {
    return std::move(self).initialize<"initWithReuseIdentifier:">(NSString());
  }
  UILabel label(UILabel& slot) {
    if (!slot) {
      slot = objc::make<UILabel>();
      slot.setNumberOfLines(0);
      slot.setFont(font_from(footnote_font()));
      slot.setTextColor(UIColor::secondaryLabelColor());
      content_.addSubview(slot);
    }
    return slot;
  }
  UILabel detailTextLabel() { return label(detail_label_); }
  static double height_of(const UILabel& label, double width) {
    const bool shows = label && label.text() && label.text().length() > 0;
    return shows ? label.sizeThatFits({width, 0}).height : 0;
  }
  double text_width(double width) {
    const EdgeInsets safe = self().safeAreaInsets();
    return std::max(0.0, width - 2 * kCellMargin - safe.left - safe.right);
  }
  Size sizeThatFits(const Size& size) {
    const double width = text_width(size.width);
    const double text = height_of(text_label_, width) + height_of(detail_label_, width);
    return {size.width, text + kFooterTextTop + kSectionTextPadding};
  }
  void layoutSubviews() {
    super<"layoutSubviews">();
    const Rect bounds = self().bounds();
    content_.setFrame(bounds);
    background_view_.setFrame(bounds);
    const double left = kCellMargin + self().safeAreaInsets().left;
    const double width = text_width(bounds.width());
    const double text = height_of(text_label_, width);
    const double detail = height_of(detail_label_, width);
    double y = is_header_ ? bounds.height() - kSectionTextPadding - text - detail + 1 : kFooterTextTop;
    if (text_label_) text_label_.setFrame(Rect{{left, y}, {width, text}});
    y += text;
    if (detail_label_) detail_label_.setFrame(Rect{{left, y}, {width, detail}});
  }
  void setBackgroundView(const UIView& view) {
    background_view_.removeFromSuperview();
    background_view_ = view;
    if (view) self().insertSubview(view, 0);
    self().setNeedsLayout();
  }
  void prepareForReuse() {}
  void traitCollectionDidChange(const NSObject&) {
    for (const UILabel& label : {text_label_, detail_label_}) {
      if (label) label.setFont(font_from(font_of(label.font()).with_size(footnote_font().size())));
    }
    self().setNeedsLayout();
  }
  /// A header's words stand at its lower edge, a footer's at its upper.
  void set_is_header(bool is_header) {
    is_header_ = is_header;
    self().setNeedsLayout();
  }
  UILabel textLabel() { return label(text_label_); }

 private:
  friend void wispen::uikit::define_header_footer_view();

  NSString reuse_identifier_;
  UIView content_;
  UIView background_view_;
  UILabel text_label_;
  UILabel detail_label_;
  bool is_header_ = true;
};

}  // namespace

void set_is_header(const UITableViewHeaderFooterView& view, bool is_header) {
  HeaderFooterView::of(view).set_is_header(is_header);
}

void define_header_footer_view() {
  objc::Class<UITableViewHeaderFooterView>::implemented_by<HeaderFooterView>()
      .initializer<"initWithReuseIdentifier:", &HeaderFooterView::initWithIdentifier>()
      .initializer<"initWithFrame:", &HeaderFooterView::initWithFrame>()
      .getter<"reuseIdentifier", &HeaderFooterView::reuse_identifier_>()
      .getter<"contentView", &HeaderFooterView::content_>()
      .method<"textLabel", &HeaderFooterView::textLabel>()
      .method<"detailTextLabel", &HeaderFooterView::detailTextLabel>()
      .getter<"backgroundView", &HeaderFooterView::background_view_>()
      .method<"setBackgroundView:", &HeaderFooterView::setBackgroundView>()
      .method<"prepareForReuse", &HeaderFooterView::prepareForReuse>()
      .method<"sizeThatFits:", &HeaderFooterView::sizeThatFits>()
      .method<"layoutSubviews", &HeaderFooterView::layoutSubviews>()
      .method<"traitCollectionDidChange:", &HeaderFooterView::traitCollectionDidChange>()
      .register_class();
}

}  // namespace wispen::uikit
