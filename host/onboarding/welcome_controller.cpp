// host/onboarding/welcome_controller.cpp: OBWelcomeController: a sheet that tells of what is new.

#include "host/onboarding/welcome_controller.hpp"

#include <algorithm>
#include <utility>

#include "host/graphics/text_style.hpp"
#include "host/uikit/controls/image_view.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/tables/scroll_view.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/values/image.hpp"

namespace wispen::onboarding {

namespace {

constexpr double kTop = 44;
constexpr double kNarrowMargin = 24;
constexpr double kWideMargin = 64;
constexpr double kWide = 500;  // from where on the margins are wide
constexpr double kIconSide = 72;
constexpr double kIconGap = 14;
constexpr double kDetailGap = 8;
constexpr double kListGap = 36;
constexpr double kItemGap = 28;
constexpr double kSymbolSide = 40;
constexpr double kSymbolGap = 16;
constexpr double kTextGap = 3;
constexpr double kBottom = 44;

UIFont style_font(graphics::TextStyle style, double weight) {
  const graphics::Font font = graphics::text_style_font(style, uikit::display_settings().content_size);
  return uikit::font_from(graphics::Font::system(font.size(), weight));
}

uikit::Label make_label(const NSString& text, NSInteger alignment) {
  const uikit::Label label = uikit::Label::make();
  label.setNumberOfLines(0);
  label.setText(text);
  label.setTextAlignment(alignment);
  return label;
}

}  // namespace

/// The views of one item.
struct ItemViews {
  uikit::ImageView image;
  uikit::Label title;
  uikit::Label description;
};

struct WelcomeState {
  NSString title;
  NSString detail;
  UIImage icon;
  std::vector<WelcomeItem> items;

  uikit::ScrollView scroll;
  uikit::ImageView icon_view;
  uikit::Label title_label;
  uikit::Label detail_label;
  std::vector<ItemViews> item_views;
};

WelcomeState& WelcomeController::parts() const { return state<WelcomeState>(); }
const std::vector<WelcomeItem>& WelcomeController::items() const { return parts().items; }

struct WelcomeMethods {
  using Self = WelcomeController;

  static Self initWithTitle(objc::Allocated<Self> self, const NSString& title, const NSString& detail,
                            const UIImage& icon) {
    Self sheet = std::move(self).initialize_super<"init">();
    if (!sheet) return sheet;
    WelcomeState& state = sheet.parts();
    state.title = title;
    state.detail = detail;
    state.icon = icon;
    return sheet;
  }

  static void loadView(const Self& self) {
    const uikit::View view = uikit::View::make({{0, 0}, {320, 480}});
    view.setBackgroundColor(UIColor::systemBackgroundColor());
    WelcomeState& state = self.parts();
    state.scroll = uikit::ScrollView::alloc().initialize<"initWithFrame:">(view.bounds());
    objc::send<"setAlwaysBounceVertical:">(state.scroll, true);
    view.addSubview(state.scroll);
    state.icon_view = uikit::ImageView::make(state.icon);
    state.icon_view.setContentMode(static_cast<NSInteger>(ContentMode::AspectFit));
    state.title_label = make_label(state.title, 1);
    state.detail_label = make_label(state.detail, 1);
    for (const uikit::View& part :
         {uikit::View(state.icon_view), uikit::View(state.title_label), uikit::View(state.detail_label)}) {
      state.scroll.addSubview(part);
    }
    for (const WelcomeItem& item : state.items) add_views(self, item);
    set_fonts(self);
    objc::send<"setView:">(self, view);
  }

  static void add_views(const Self& self, const WelcomeItem& item) {
    WelcomeState& state = self.parts();
    ItemViews views{uikit::ImageView::make(item.image), make_label(item.title, 4),
                    make_label(item.description, 4)};
    views.image.setContentMode(static_cast<NSInteger>(ContentMode::AspectFit));
    views.description.setTextColor(UIColor::secondaryLabelColor());
    for (const uikit::View& part :
         {uikit::View(views.image), uikit::View(views.title), uikit::View(views.description)}) {
      state.scroll.addSubview(part);
    }
    state.item_views.push_back(std::move(views));
  }
  static void addItem(const Self& self, const NSString& title, const NSString& description,
                      const UIImage& image) {
    WelcomeState& state = self.parts();
    state.items.push_back({title, description, image});
    if (!state.scroll) return;
    add_views(self, state.items.back());
    set_fonts(self);
    self.view().setNeedsLayout();
  }

  static void set_fonts(const Self& self) {
    WelcomeState& state = self.parts();
    state.title_label.setFont(style_font(graphics::TextStyle::LargeTitle, graphics::font_weight::kBold));
    state.detail_label.setFont(style_font(graphics::TextStyle::Body, graphics::font_weight::kRegular));
    for (const ItemViews& item : state.item_views) {
      item.title.setFont(style_font(graphics::TextStyle::Subheadline, graphics::font_weight::kSemibold));
      item.description.setFont(style_font(graphics::TextStyle::Subheadline, graphics::font_weight::kRegular));
    }
  }

  static void viewDidLayoutSubviews(const Self& self) {
    WelcomeState& state = self.parts();
    const Rect bounds = self.view().bounds();
    state.scroll.setFrame(bounds);
    const double margin = bounds.width() >= kWide ? kWideMargin : kNarrowMargin;
    const double width = std::max(0.0, bounds.width() - 2 * margin);
    double y = kTop;
    if (state.icon) {
      const Size size = uikit::image_of(state.icon)->size();
      const double scale = std::min({1.0, kIconSide / size.height, width / size.width});
      const Size shown{size.width * scale, size.height * scale};
      state.icon_view.setFrame({{(bounds.width() - shown.width) / 2, y}, shown});
      y += shown.height + kIconGap;
    }
    y = place(state.title_label, margin, y, width) + kDetailGap;
    y = place(state.detail_label, margin, y, width) + kListGap;
    for (const ItemViews& item : state.item_views) y = place_item(self, item, margin, y, width) + kItemGap;
    state.scroll.setContentSize({bounds.width(), y - kItemGap + kBottom});
  }
  static double place(const uikit::Label& label, double x, double y, double width) {
    const double height =
        ceil_to_pixel(label.sizeThatFits({width, 0}).height, uikit::display_settings().scale);
    label.setFrame({{x, y}, {width, height}});
    return y + height;
  }
  static double place_item(const Self& self, const ItemViews& item, double margin, double y, double width) {
    const bool turned = self.view().is_right_to_left();
    const double text_width = std::max(0.0, width - kSymbolSide - kSymbolGap);
    const double text_x = turned ? margin : margin + kSymbolSide + kSymbolGap;
    const double after_title = place(item.title, text_x, y, text_width);
    const double end = place(item.description, text_x, after_title + kTextGap, text_width);
    // Beside the first lines, where the text is longer than the picture is high.
    const double symbol_y = end - y < kSymbolSide ? y + (end - y - kSymbolSide) / 2 : y;
    item.image.setFrame(
        {{turned ? margin + width - kSymbolSide : margin, symbol_y}, {kSymbolSide, kSymbolSide}});
    return std::max(end, symbol_y + kSymbolSide);
  }
  static void traitCollectionDidChange(const Self& self, const NSObject& before) {
    objc::send_super<"traitCollectionDidChange:">(self, objc::class_for<uikit::ViewController>(), before);
    if (!self.parts().scroll) return;
    set_fonts(self);
    self.view().setNeedsLayout();
  }
};

void WelcomeController::define() {
  using M = WelcomeMethods;
  objc::Class<WelcomeController>()
      .state<WelcomeState>()
      .initializer<"initWithTitle:detailText:icon:", &M::initWithTitle>()
      .method<"addBulletedListItemWithTitle:description:image:", &M::addItem>()
      .method<"loadView", &M::loadView>()
      .method<"viewDidLayoutSubviews", &M::viewDidLayoutSubviews>()
      .method<"traitCollectionDidChange:", &M::traitCollectionDidChange>()
      .register_class();
}

}  // namespace wispen::onboarding
