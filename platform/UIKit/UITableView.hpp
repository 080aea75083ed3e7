// platform/UIKit/UITableView.hpp: rows in sections.
#pragma once

#include "platform/UIKit/UIGestureRecognizer.hpp"
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
enum class UITableViewCellSelectionStyle : NSInteger { None = 0, Blue = 1, Gray = 2, Default = 3 };
enum class UITableViewCellSeparatorStyle : NSInteger { None = 0, SingleLine = 1 };
enum class UITableViewScrollPosition : NSInteger { None = 0, Top = 1, Middle = 2, Bottom = 3 };
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

  class Allocated : public UIViewAllocated<UITableViewCell> {
   public:
    using UIViewAllocated::UIViewAllocated;
    UITableViewCell initWithStyle(UITableViewCellStyle style, const NSString& identifier) && {
      return std::move(*this).initialize<"initWithStyle:reuseIdentifier:">(style, identifier);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UITableViewCell>()); }

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
  bool isHighlighted() const { return objc::send<"isHighlighted", bool>(*this); }
  void setHighlighted(bool highlighted, bool animated) const {
    objc::send<"setHighlighted:animated:">(*this, highlighted, animated);
  }
  bool isSelected() const { return objc::send<"isSelected", bool>(*this); }
  void setSelected(bool selected, bool animated) const {
    objc::send<"setSelected:animated:">(*this, selected, animated);
  }
  UITableViewCellSelectionStyle selectionStyle() const {
    return objc::send<"selectionStyle", UITableViewCellSelectionStyle>(*this);
  }
  void setSelectionStyle(UITableViewCellSelectionStyle style) const {
    objc::send<"setSelectionStyle:">(*this, style);
  }
  void setSeparatorInset(UIEdgeInsets insets) const { objc::send<"setSeparatorInset:">(*this, insets); }
  void prepareForReuse() const { objc::send<"prepareForReuse">(*this); }
  UIView accessoryView() const { return objc::send<"accessoryView", UIView>(*this); }
  void setAccessoryView(const UIView& view) const { objc::send<"setAccessoryView:">(*this, view); }
};

enum class UIScrollViewContentInsetAdjustmentBehavior : NSInteger {
  Automatic = 0,
  ScrollableAxes = 1,
  Never = 2,
  Always = 3
};

/// The words above and below a section.
class UITableViewHeaderFooterView : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UITableViewHeaderFooterView"};
  using UIView::UIView;

  class Allocated : public UIViewAllocated<UITableViewHeaderFooterView> {
   public:
    using UIViewAllocated::UIViewAllocated;
    UITableViewHeaderFooterView initWithReuseIdentifier(const NSString& identifier) && {
      return std::move(*this).initialize<"initWithReuseIdentifier:">(identifier);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UITableViewHeaderFooterView>()); }

  UIView contentView() const { return objc::send<"contentView", UIView>(*this); }
  UILabel textLabel() const { return objc::send<"textLabel", UILabel>(*this); }
  UILabel detailTextLabel() const { return objc::send<"detailTextLabel", UILabel>(*this); }
  void prepareForReuse() const { objc::send<"prepareForReuse">(*this); }
  NSString reuseIdentifier() const { return objc::send<"reuseIdentifier", NSString>(*this); }
};

class UIScrollView : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UIScrollView"};
  using UIView::UIView;
  static UIViewAllocated<UIScrollView> alloc() {
    return UIViewAllocated<UIScrollView>(objc::allocate<UIScrollView>());
  }

  CGPoint contentOffset() const { return objc::send<"contentOffset", CGPoint>(*this); }
  void setContentOffset(CGPoint offset, bool animated) const {
    objc::send<"setContentOffset:animated:">(*this, offset, animated);
  }
  void setContentOffset(CGPoint offset) const { objc::send<"setContentOffset:">(*this, offset); }
  UIEdgeInsets contentInset() const { return objc::send<"contentInset", UIEdgeInsets>(*this); }
  void setContentInset(UIEdgeInsets insets) const { objc::send<"setContentInset:">(*this, insets); }
  /// With what the safe area adds.
  UIEdgeInsets adjustedContentInset() const {
    return objc::send<"adjustedContentInset", UIEdgeInsets>(*this);
  }
  void setContentSize(CGSize size) const { objc::send<"setContentSize:">(*this, size); }
  UIPanGestureRecognizer panGestureRecognizer() const {
    return objc::send<"panGestureRecognizer", UIPanGestureRecognizer>(*this);
  }
  void setAlwaysBounceVertical(bool bounces) const { objc::send<"setAlwaysBounceVertical:">(*this, bounces); }
  void scrollRectToVisible(CGRect rect, bool animated) const {
    objc::send<"scrollRectToVisible:animated:">(*this, rect, animated);
  }
  bool isDragging() const { return objc::send<"isDragging", bool>(*this); }
  CGSize contentSize() const { return objc::send<"contentSize", CGSize>(*this); }
};

/// A height that follows from the content.
inline constexpr CGFloat UITableViewAutomaticDimension = -1;

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
  UITableViewStyle style() const { return objc::send<"style", UITableViewStyle>(*this); }
  UIView tableFooterView() const { return objc::send<"tableFooterView", UIView>(*this); }
  void setTableFooterView(const UIView& view) const { objc::send<"setTableFooterView:">(*this, view); }
  /// Between these two structure changes are made together.
  void beginUpdates() const { objc::send<"beginUpdates">(*this); }
  void endUpdates() const { objc::send<"endUpdates">(*this); }
  void insertRows(const NSArray& paths, UITableViewRowAnimation animation) const {
    objc::send<"insertRowsAtIndexPaths:withRowAnimation:">(*this, paths, animation);
  }
  void deleteRows(const NSArray& paths, UITableViewRowAnimation animation) const {
    objc::send<"deleteRowsAtIndexPaths:withRowAnimation:">(*this, paths, animation);
  }
  void reloadRows(const NSArray& paths, UITableViewRowAnimation animation) const {
    objc::send<"reloadRowsAtIndexPaths:withRowAnimation:">(*this, paths, animation);
  }
  void deselectRow(const NSIndexPath& path, bool animated) const {
    objc::send<"deselectRowAtIndexPath:animated:">(*this, path, animated);
  }
  void scrollToRow(const NSIndexPath& path, UITableViewScrollPosition position, bool animated) const {
    objc::send<"scrollToRowAtIndexPath:atScrollPosition:animated:">(*this, path, position, animated);
  }
  CGRect rectForRow(const NSIndexPath& path) const {
    return objc::send<"rectForRowAtIndexPath:", CGRect>(*this, path);
  }
  NSIndexPath indexPathForCell(const UITableViewCell& cell) const {
    return objc::send<"indexPathForCell:", NSIndexPath>(*this, cell);
  }
  NSIndexPath indexPathForSelectedRow() const {
    return objc::send<"indexPathForSelectedRow", NSIndexPath>(*this);
  }
  NSArray visibleCells() const { return objc::send<"visibleCells", NSArray>(*this); }
  UITableViewCell dequeueReusableCell(const NSString& identifier) const {
    return objc::send<"dequeueReusableCellWithIdentifier:", UITableViewCell>(*this, identifier);
  }
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
  UIView footerViewForSection(NSInteger section) const {
    return objc::send<"footerViewForSection:", UIView>(*this, section);
  }
};
