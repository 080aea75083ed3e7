// host/onboarding/welcome_controller.cpp: OBWelcomeController: a sheet that tells of what is new.

#include "host/onboarding/welcome_controller.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/graphics/text_style.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/view/view.hpp"
#include "platform/OnBoardingKit.hpp"

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

UILabel make_label(const NSString& text, NSTextAlignment alignment) {
  const UILabel label = objc::make<UILabel>();
  label.setNumberOfLines(0);
  label.setText(text);
  label.setTextAlignment(alignment);
  return label;
}

}  // namespace

struct WelcomeItem {
  NSString title;
  NSString description;
  UIImage image;
};

/// The views of one item.
struct ItemViews {
  UIImageView image;
  UILabel title;
  UILabel description;
};

class WelcomeController : public objc::Implementation<WelcomeController, OBWelcomeController> {
 public:
  static OBWelcomeController initWithTitle(objc::Allocated<OBWelcomeController> self, const NSString& title,
                                           const NSString& detail, const UIImage& icon) {
    OBWelcomeController sheet = super_init<"init">(std::move(self));
    if (!sheet) return sheet;
    of(sheet).title_ = title;
    of(sheet).detail_ = detail;
    of(sheet).icon_ = icon;
    return sheet;
  }
  void loadView() {
    const UIView view = UIView::alloc().initWithFrame(Rect{{0, 0}, {320, 480}});
    view.setBackgroundColor(UIColor::systemBackgroundColor());
    scroll_ = UIScrollView::alloc().initWithFrame(view.bounds());
    scroll_.setAlwaysBounceVertical(true);
    view.addSubview(scroll_);
    icon_view_ = UIImageView::alloc().initWithImage(icon_);
    icon_view_.setContentMode(UIViewContentMode::ScaleAspectFit);
    title_label_ = make_label(title_, NSTextAlignment::Center);
    detail_label_ = make_label(detail_, NSTextAlignment::Center);
    for (const UIView& part : {UIView(icon_view_), UIView(title_label_), UIView(detail_label_)}) {
      scroll_.addSubview(part);
    }
    for (const WelcomeItem& item : items_) add_views(item);
    set_fonts();
    self().setView(view);
  }
  void addItem(const NSString& title, const NSString& description, const UIImage& image) {
    items_.push_back({title, description, image});
    if (!scroll_) return;
    add_views(items_.back());
    set_fonts();
    self().view().setNeedsLayout();
  }
  void viewDidLayoutSubviews() {
    const Rect bounds = self().view().bounds();
    scroll_.setFrame(bounds);
    const double margin = bounds.width() >= kWide ? kWideMargin : kNarrowMargin;
    const double width = std::max(0.0, bounds.width() - 2 * margin);
    double y = kTop;
    if (icon_) {
      const Size size = uikit::image_of(icon_)->size();
      const double scale = std::min({1.0, kIconSide / size.height, width / size.width});
      const Size shown{size.width * scale, size.height * scale};
      icon_view_.setFrame(Rect{{(bounds.width() - shown.width) / 2, y}, shown});
      y += shown.height + kIconGap;
    }
    y = place(title_label_, margin, y, width) + kDetailGap;
    y = place(detail_label_, margin, y, width) + kListGap;
    for (const ItemViews& item : item_views_) y = place_item(item, margin, y, width) + kItemGap;
    scroll_.setContentSize(Size{bounds.width(), y - kItemGap + kBottom});
  }
  void traitCollectionDidChange(const NSObject& before) {
    super<"traitCollectionDidChange:">(before);
    if (!scroll_) return;
    set_fonts();
    self().view().setNeedsLayout();
  }

 private:
  friend void define_welcome_controller();

  void add_views(const WelcomeItem& item) {
    ItemViews views{UIImageView::alloc().initWithImage(item.image),
                    make_label(item.title, NSTextAlignment::Natural),
                    make_label(item.description, NSTextAlignment::Natural)};
    views.image.setContentMode(UIViewContentMode::ScaleAspectFit);
    views.description.setTextColor(UIColor::secondaryLabelColor());
    for (const UIView& part : {UIView(views.image), UIView(views.title), UIView(views.description)}) {
      scroll_.addSubview(part);
    }
    item_views_.push_back(std::move(views));
  }
  void set_fonts() {
    title_label_.setFont(style_font(graphics::TextStyle::LargeTitle, graphics::font_weight::kBold));
    detail_label_.setFont(style_font(graphics::TextStyle::Body, graphics::font_weight::kRegular));
    for (const ItemViews& item : item_views_) {
      item.title.setFont(style_font(graphics::TextStyle::Subheadline, graphics::font_weight::kSemibold));
      item.description.setFont(style_font(graphics::TextStyle::Subheadline, graphics::font_weight::kRegular));
    }
  }
  static double place(const UILabel& label, double x, double y, double width) {
    const double height =
        ceil_to_pixel(label.sizeThatFits(Size{width, 0}).height, uikit::display_settings().scale);
    label.setFrame(Rect{{x, y}, {width, height}});
    return y + height;
  }
  double place_item(const ItemViews& item, double margin, double y, double width) {
    const bool turned = uikit::is_right_to_left(self().view());
    const double text_width = std::max(0.0, width - kSymbolSide - kSymbolGap);
    const double text_x = turned ? margin : margin + kSymbolSide + kSymbolGap;
    const double after_title = place(item.title, text_x, y, text_width);
    const double end = place(item.description, text_x, after_title + kTextGap, text_width);
    // Beside the first lines, where the text is longer than the picture is high.
    const double symbol_y = end - y < kSymbolSide ? y + (end - y - kSymbolSide) / 2 : y;
    item.image.setFrame(
        Rect{{turned ? margin + width - kSymbolSide : margin, symbol_y}, {kSymbolSide, kSymbolSide}});
    return std::max(end, symbol_y + kSymbolSide);
  }

  NSString title_;
  NSString detail_;
  UIImage icon_;
  std::vector<WelcomeItem> items_;

  UIScrollView scroll_;
  UIImageView icon_view_;
  UILabel title_label_;
  UILabel detail_label_;
  std::vector<ItemViews> item_views_;
};

void define_welcome_controller() {
  objc::Class<OBWelcomeController>::implemented_by<WelcomeController>()
      .initializer<"initWithTitle:detailText:icon:", &WelcomeController::initWithTitle>()
      .method<"addBulletedListItemWithTitle:description:image:", &WelcomeController::addItem>()
      .method<"loadView", &WelcomeController::loadView>()
      .method<"viewDidLayoutSubviews", &WelcomeController::viewDidLayoutSubviews>()
      .method<"traitCollectionDidChange:", &WelcomeController::traitCollectionDidChange>()
      .register_class();
}

}  // namespace wispen::onboarding
