// controllers/page_look.cpp: the root page's own look: banner, sliding button, section headers, fading cells.

#include <cstdint>

#include "bundle/facts/facts.hpp"
#include "cells/OndrelTintCell.hpp"
#include "cells/palette.hpp"
#include "controllers/WispBaseController.hpp"
#include "platform/Dispatch.hpp"

namespace wispen {

namespace {

constexpr CGFloat kHeaderHeight = 40;
constexpr CGFloat kPillHeaderHeight = 50;  // what the view is; the table keeps only kHeaderHeight for it
constexpr CGFloat kPillPadding = 20;
constexpr CGFloat kSlide = 50;

/// A view that its constraints alone place.
UIImageView make_image_view(const UIImage& image, UIViewContentMode mode) {
  const auto view = objc::make<UIImageView>();
  view.setImage(image);
  view.setContentMode(mode);
  return view;
}

void pin(const UIView& inner, const UIView& outer) {
  inner.topAnchor().constraintEqualToAnchor(outer.topAnchor()).setActive(true);
  inner.bottomAnchor().constraintEqualToAnchor(outer.bottomAnchor()).setActive(true);
  inner.leadingAnchor().constraintEqualToAnchor(outer.leadingAnchor()).setActive(true);
  inner.trailingAnchor().constraintEqualToAnchor(outer.trailingAnchor()).setActive(true);
}

UIFont title_font() { return UIFont::systemFontOfSize(18, UIFontWeightSemibold); }

struct SectionTitle {
  NSString text = ""_ns;
  UIColor colour = UIColor::blackColor();
};

SectionTitle title_of_section(NSInteger section) {
  SectionTitle title;
  switch (section) {
    case 0:
      title.colour = UIColor::orangeColor();
      title.text = "My Socials"_ns;
      break;
    case 2:
      title.colour = UIColor::orangeColor();
      title.text = "Miscellaneous"_ns;
      break;
    case 3:
      title.colour = UIColor::yellowColor();
      break;
    case 4:
      title.colour = UIColor::blueColor();
      title.text = "Miscellaneous"_ns;
      break;
    case 11:
      title.colour = UIColor::orangeColor();
      title.text = "Base Configurations"_ns;
      break;
    default:
      break;
  }
  return title;
}

void add_title_pill(const UIView& header, std::int32_t width, const NSString& text) {
  const UILabel label = UILabel::alloc().initWithFrame({});
  label.setText(text);
  label.setTextColor(UIColor::orangeColor());
  label.setFont(title_font());
  label.setTextAlignment(NSTextAlignment::Center);
  label.sizeToFit();

  const UIView pill =
      UIView::alloc().initWithFrame({{0, 0}, {label.frame().size.width + kPillPadding, kHeaderHeight}});
  pill.setBackgroundColor(UIColor::clearColor());
  pill.layer().setCornerRadius(10);
  pill.setClipsToBounds(true);
  const auto middle = width / 2;  // a whole number
  pill.setCenter({static_cast<CGFloat>(middle), kHeaderHeight / 2});
  label.setCenter({pill.frame().size.width / 2, kHeaderHeight / 2});
  pill.addSubview(label);
  header.addSubview(pill);
  header.setFrame({{0, 0}, {static_cast<CGFloat>(width), kPillHeaderHeight}});
}

void add_title_label(const UIView& header, std::int32_t width, const SectionTitle& title) {
  const UILabel label =
      UILabel::alloc().initWithFrame({{0, 0}, {static_cast<CGFloat>(width), kHeaderHeight}});
  label.setText(title.text);
  label.setTextColor(title.colour);
  label.setFont(title_font());
  label.setTextAlignment(NSTextAlignment::Left);
  header.addSubview(label);
}

}  // namespace

void WispBaseController::loadView() const {
  super<"loadView">();
  objc::send<"headerCell">(*this);
  table().setDelegate(*this);
  table().setTableHeaderView(banner());
  static dispatch_once_t once;
  dispatch_once(&once, &registerOndrelTintCellClass);
}

void WispBaseController::headerCell() const {
  // By this very path: where the jailbreak is elsewhere there is no image, and the banner stays empty.
  const UIImage image = UIImage::imageWithContentsOfFile(NSString(facts::kBannerFile));
  const UIImage icon;
  if (!banner()) banner() = UIView::alloc().initWithFrame({{0, 0}, {100, 100}});
  if (!banner_image()) {
    banner_image() = make_image_view(image, UIViewContentMode::ScaleAspectFill);
    banner_image().setClipsToBounds(true);
    banner_image().setTranslatesAutoresizingMaskIntoConstraints(false);
    banner().addSubview(banner_image());
  }
  navigationItem().setTitleView(objc::make<UIView>());
  if (!icon_view()) {
    icon_view() = make_image_view(icon, UIViewContentMode::ScaleAspectFit);
    icon_view().setTranslatesAutoresizingMaskIntoConstraints(false);
    navigationItem().titleView().addSubview(icon_view());
  }
  objc::send<"layoutUI">(*this);
}

void WispBaseController::layoutUI() const {
  pin(banner_image(), banner());
  // A second banner is never made: to nil, these do nothing.
  pin(second_banner_image(), second_banner());
}

void WispBaseController::viewWillAppear(bool animated) const {
  super<"viewWillAppear:">(animated);
  navigationItem().navigationBar().setTintColor(palette::accent());
  const UIButton button = UIButton::buttonWithType(UIButtonType::System);
  button.setTitle("Respring"_ns, UIControlStateNormal);
  button.addTarget(*this, objc::selector<"respring">(), UIControlEventTouchUpInside);
  CGRect frame = button.frame();
  frame.origin.y -= kSlide;
  button.setFrame(frame);
  navigationItem().setTitleView(button);
  UIView::animateWithDuration(1.0, [button] {
    CGRect place = button.frame();
    place.origin.y += kSlide;
    button.setFrame(place);
  });
}

UIView WispBaseController::tableViewForHeader(const UITableView& table, NSInteger section) const {
  const auto width = static_cast<std::int32_t>(table.bounds().size.width - 30);
  const UIView header = UIView::alloc().initWithFrame({{0, 0}, {static_cast<CGFloat>(width), kHeaderHeight}});
  header.setBackgroundColor(UIColor::clearColor());
  const SectionTitle title = title_of_section(section);
  if (section == 1) add_title_pill(header, width, "Base Configurations"_ns);
  if (section != 2) {
    add_title_label(header, width, title);
  } else {
    add_title_pill(header, width, "Miscellaneous"_ns);
  }
  return header;
}

CGFloat WispBaseController::tableHeightForHeader(const UITableView&, NSInteger) const {
  return kHeaderHeight;
}

void WispBaseController::tableWillDisplayCell(const UITableView&, const UITableViewCell& cell,
                                              const NSIndexPath&) const {
  cell.setAlpha(0);
  UIView::animateWithDuration(1.5, [cell] { cell.setAlpha(1); });
}

}  // namespace wispen
