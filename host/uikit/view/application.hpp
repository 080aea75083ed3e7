// host/uikit/view/application.hpp: UIApplication: what all windows have in common.
#pragma once

#include <vector>

#include "host/uikit/view/responder.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// The host's UIApplication. It knows its windows, lowest first, and keeps none of them alive.
class Application : public objc::Implementation<Application, UIApplication> {
 public:
  static Application& shared();

  std::vector<UIWindow> windows() const;
  UIWindow key_window() const { return key_.lock(); }
  void set_key_window(const UIWindow& window) { key_ = window; }
  void add_window(const UIWindow& window);
  /// Brings them in the order of their levels.
  void sort_windows();
  /// Lays out what asked for it, in every window.
  void lay_out_windows() const;
  /// To the target, or without one to the first responder on the chain from the sender that answers it. False
  /// where nobody does.
  bool sendAction(objc::Selector action, const NSObject& target, const NSObject& sender,
                  const NSObject& event) const;
  /// URLs that were asked to be opened, oldest first.
  const std::vector<NSObject>& opened_urls() const { return opened_urls_; }

  NSArray windows_array() const;
  NSObject delegate() const { return delegate_.lock(); }
  void setDelegate(const NSObject& delegate) { delegate_ = delegate; }
  UIUserInterfaceLayoutDirection layout_direction() const;
  bool openURL(const NSObject& url);
  void open_with_options(const NSObject& url, const NSObject& options,
                         const objc::Block<void(bool)>& completion);

 private:
  std::vector<objc::Weak<UIWindow>> windows_;
  objc::Weak<UIWindow> key_;
  objc::Weak<NSObject> delegate_;
  std::vector<NSObject> opened_urls_;
};

}  // namespace wispen::uikit
