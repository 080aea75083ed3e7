// platform/UIKit/UITableView.hpp: rows in sections.
#pragma once

#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/UIKit/UIView.hpp"

enum class UITableViewStyle : NSInteger { Plain = 0, Grouped = 1, InsetGrouped = 2 };
enum class UITableViewCellStyle : NSInteger { Default = 0, Value1 = 1, Value2 = 2, Subtitle = 3 };
enum class UITableViewCellAccessoryType : NSInteger {
  None = 0,
  DisclosureIndicator = 1,
  DetailDisclosureButton = 2,
  Checkmark = 3,
  DetailButton = 4
};
enum class UITableViewRowAnimation : NSInteger { Fade = 0, None = 5, Automatic = 100 };

/// The place of a row.
class NSIndexPath : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSIndexPath"};
  using NSObject::NSObject;

  static NSIndexPath indexPathForRow(NSInteger row, NSInteger section) {
    return objc::send<"indexPathForRow:inSection:", NSIndexPath>(objc::class_for<NSIndexPath>(), row,
                                                                 section);
  }
  NSInteger row() const { return objc::send<"row", NSInteger>(*this); }
  NSInteger section() const { return objc::send<"section", NSInteger>(*this); }
};

class UITableViewCell : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UITableViewCell"};
  using UIView::UIView;

  UIView contentView() const { return objc::send<"contentView", UIView>(*this); }
  UILabel textLabel() const { return objc::send<"textLabel", UILabel>(*this); }
  /// Nil in the default style.
  UILabel detailTextLabel() const { return objc::send<"detailTextLabel", UILabel>(*this); }
  UIImageView imageView() const { return objc::send<"imageView", UIImageView>(*this); }
  NSString reuseIdentifier() const { return objc::send<"reuseIdentifier", NSString>(*this); }
  UITableViewCellAccessoryType accessoryType() const {
    return objc::send<"accessoryType", UITableViewCellAccessoryType>(*this);
  }
  void setAccessoryType(UITableViewCellAccessoryType type) const {
    objc::send<"setAccessoryType:">(*this, type);
  }
  UIView accessoryView() const { return objc::send<"accessoryView", UIView>(*this); }
  void setAccessoryView(const UIView& view) const { objc::send<"setAccessoryView:">(*this, view); }
};

class UIScrollView : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UIScrollView"};
  using UIView::UIView;

  CGPoint contentOffset() const { return objc::send<"contentOffset", CGPoint>(*this); }
  void setContentOffset(CGPoint offset, bool animated) const {
    objc::send<"setContentOffset:animated:">(*this, offset, animated);
  }
  CGSize contentSize() const { return objc::send<"contentSize", CGSize>(*this); }
};

class UITableView : public UIScrollView {
 public:
  using Base = UIScrollView;
  static constexpr objc::FixedString kClass{"UITableView"};
  using UIScrollView::UIScrollView;

  class Allocated : public UIViewAllocated<UITableView> {
   public:
    using UIViewAllocated::UIViewAllocated;
    UITableView initWithFrame(CGRect frame, UITableViewStyle style) && {
      return std::move(*this).initialize<"initWithFrame:style:">(frame, style);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UITableView>()); }

  /// Not kept alive, like the data source.
  NSObject delegate() const { return objc::send<"delegate", NSObject>(*this); }
  void setDelegate(const objc::Object& delegate) const { objc::send<"setDelegate:">(*this, delegate); }
  NSObject dataSource() const { return objc::send<"dataSource", NSObject>(*this); }
  void setDataSource(const objc::Object& source) const { objc::send<"setDataSource:">(*this, source); }
  /// Above the first section; the table gives it its own width.
  UIView tableHeaderView() const { return objc::send<"tableHeaderView", UIView>(*this); }
  void setTableHeaderView(const UIView& view) const { objc::send<"setTableHeaderView:">(*this, view); }
  void reloadData() const { objc::send<"reloadData">(*this); }
  NSInteger numberOfSections() const { return objc::send<"numberOfSections", NSInteger>(*this); }
  NSInteger numberOfRowsInSection(NSInteger section) const {
    return objc::send<"numberOfRowsInSection:", NSInteger>(*this, section);
  }
  /// Nil for a row out of sight.
  UITableViewCell cellForRow(const NSIndexPath& path) const {
    return objc::send<"cellForRowAtIndexPath:", UITableViewCell>(*this, path);
  }
  UIView headerViewForSection(NSInteger section) const {
    return objc::send<"headerViewForSection:", UIView>(*this, section);
  }
};
