// host/uikit/tables/header_footer_view.cpp: UITableViewHeaderFooterView: the words above or below a section.

#include "host/uikit/tables/header_footer_view.hpp"

#include <algorithm>

#include "host/graphics/text_style.hpp"
#include "host/uikit/tables/table_cell.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

namespace {

graphics::Font footnote_font() {
  return graphics::text_style_font(graphics::TextStyle::Footnote, display_settings().content_size);
}

}  // namespace

struct HeaderFooterState {
  NSString reuse_identifier;
  View content;
  View background_view;
  Label text_label;
  Label detail_label;
  bool is_header = true;
};

HeaderFooterState& HeaderFooterView::parts() const { return state<HeaderFooterState>(); }
HeaderFooterView HeaderFooterView::make(const NSString& reuse_identifier) {
  return alloc().initialize<"initWithReuseIdentifier:">(reuse_identifier);
}
View HeaderFooterView::contentView() const { return parts().content; }
NSString HeaderFooterView::reuse_identifier() const { return parts().reuse_identifier; }
void HeaderFooterView::set_is_header(bool is_header) const {
  parts().is_header = is_header;
  setNeedsLayout();
}

struct HeaderFooterMethods {
  using Self = HeaderFooterView;

  static Self initWithIdentifier(objc::Allocated<Self> self, const NSString& identifier) {
    Self view = std::move(self).initialize_super<"initWithFrame:">(Rect{});
    if (!view) return view;
    view.parts().reuse_identifier = identifier;
    view.parts().content = View::make();
    view.addSubview(view.parts().content);
    return view;
  }
  static Self initWithFrame(objc::Allocated<Self> self, const Rect&) {
    return std::move(self).initialize<"initWithReuseIdentifier:">(NSString());
  }

  static Label label(const Self& self, Label& slot) {
    if (!slot) {
      slot = Label::make();
      slot.setNumberOfLines(0);
      slot.setFont(font_from(footnote_font()));
      slot.setTextColor(UIColor::secondaryLabelColor());
      self.contentView().addSubview(slot);
    }
    return slot;
  }
  static Label detailTextLabel(const Self& self) { return label(self, self.parts().detail_label); }

  static double height_of(const Label& label, double width) {
    const bool shows = label && label.text() && label.text().length() > 0;
    return shows ? label.sizeThatFits({width, 0}).height : 0;
  }
  static double text_width(const Self& self, double width) {
    const EdgeInsets safe = self.safeAreaInsets();
    return std::max(0.0, width - 2 * kCellMargin - safe.left - safe.right);
  }
  static Size sizeThatFits(const Self& self, const Size& size) {
    const HeaderFooterState& state = self.parts();
    const double width = text_width(self, size.width);
    const double text = height_of(state.text_label, width) + height_of(state.detail_label, width);
    return {size.width, text + kFooterTextTop + kSectionTextPadding};
  }
  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<View>());
    const HeaderFooterState& state = self.parts();
    const Rect bounds = self.bounds();
    state.content.setFrame(bounds);
    if (state.background_view) state.background_view.setFrame(bounds);
    const double left = kCellMargin + self.safeAreaInsets().left;
    const double width = text_width(self, bounds.width());
    const double text = height_of(state.text_label, width);
    const double detail = height_of(state.detail_label, width);
    double y = state.is_header ? bounds.height() - kSectionTextPadding - text - detail + 1 : kFooterTextTop;
    if (state.text_label) state.text_label.setFrame({{left, y}, {width, text}});
    y += text;
    if (state.detail_label) state.detail_label.setFrame({{left, y}, {width, detail}});
  }

  static View backgroundView(const Self& self) { return self.parts().background_view; }
  static void setBackgroundView(const Self& self, const View& view) {
    View& slot = self.parts().background_view;
    if (slot) slot.removeFromSuperview();
    slot = view;
    if (view) self.insertSubviewAtIndex(view, 0);
    self.setNeedsLayout();
  }
  static void prepareForReuse(const Self&) {}
  static void traitCollectionDidChange(const Self& self, const NSObject&) {
    for (const Label& label : {self.parts().text_label, self.parts().detail_label}) {
      if (label) label.setFont(font_from(font_of(label.font()).with_size(footnote_font().size())));
    }
    self.setNeedsLayout();
  }
};

Label HeaderFooterView::textLabel() const { return HeaderFooterMethods::label(*this, parts().text_label); }

void HeaderFooterView::define() {
  using M = HeaderFooterMethods;
  objc::Class<HeaderFooterView>()
      .state<HeaderFooterState>()
      .initializer<"initWithReuseIdentifier:", &M::initWithIdentifier>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"reuseIdentifier", &HeaderFooterView::reuse_identifier>()
      .method<"contentView", &HeaderFooterView::contentView>()
      .method<"textLabel", &HeaderFooterView::textLabel>()
      .method<"detailTextLabel", &M::detailTextLabel>()
      .method<"backgroundView", &M::backgroundView>()
      .method<"setBackgroundView:", &M::setBackgroundView>()
      .method<"prepareForReuse", &M::prepareForReuse>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"traitCollectionDidChange:", &M::traitCollectionDidChange>()
      .register_class();
}

}  // namespace wispen::uikit
