// tests/home_screen/parts_fixture.hpp: the parts of the home screen, found by what they are.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "home_screen/menu_view.hpp"
#include "home_screen/notification_view.hpp"
#include "tests/home_screen/values.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {

/// A host with the shipped bundle, whose colours are asked for, and the apps of the screen.
class PartsTest : public HostTest {
 protected:
  PartsTest() : HostTest("rootless", true) {}
  void SetUp() override {
    HostTest::SetUp();
    load_shipped_bundle();
    apps = std::make_unique<home_screen::Apps>(2);
  }
  void TearDown() override {
    apps.reset();
    HostTest::TearDown();
  }

  UIView menu(const Values& values, bool dark = false) const {
    return home_screen::make_menu(apps->pressed(), settings(values), dark);
  }
  UIView notification(const Values& values, bool dark = false) const {
    return home_screen::make_notification(apps->notifying(), settings(values), dark, 370);
  }

  /// The view and all in it, depth first.
  static std::vector<UIView> all_in(const UIView& view) {
    std::vector<UIView> found{view};
    const NSArray subviews = view.subviews();
    for (NSUInteger i = 0; i < subviews.count(); ++i) {
      const auto more = all_in(subviews.objectAtIndex<UIView>(i));
      found.insert(found.end(), more.begin(), more.end());
    }
    return found;
  }
  static std::vector<UIView> tagged(const UIView& view, NSInteger tag) {
    std::vector<UIView> found;
    for (const UIView& each : all_in(view)) {
      if (each.tag() == tag) found.push_back(each);
    }
    return found;
  }
  static std::vector<UIView> separators(const UIView& view) {
    return tagged(view, home_screen::kSeparatorTag);
  }
  static UIView fill(const UIView& view) {
    const auto found = tagged(view, home_screen::kFillTag);
    return found.empty() ? UIView() : found.front();
  }
  static std::vector<UILabel> labels(const UIView& view) {
    std::vector<UILabel> found;
    for (const UIView& each : all_in(view)) {
      if (const auto label = objc::cast_or_nil<UILabel>(each)) found.push_back(label);
    }
    return found;
  }
  static std::vector<std::string> texts(const UIView& view) {
    std::vector<std::string> found;
    for (const UILabel& label : labels(view)) found.push_back(label.text().utf8());
    return found;
  }
  static UILabel label(const UIView& view, const std::string& text) {
    for (const UILabel& each : labels(view)) {
      if (each.text().utf8() == text) return each;
    }
    ADD_FAILURE() << "no label says " << text;
    return UILabel();
  }
  /// As the bundle writes it; "" for nil.
  static std::string hex(const UIColor& colour) {
    if (!colour) return "";
    return objc::send<"wispHexStringFromColor:", NSString>(objc::class_for<UIColor>(), colour).utf8();
  }
  static double alpha(const UIColor& colour) {
    double value = -1;
    colour.getRed(nullptr, nullptr, nullptr, &value);
    return value;
  }
  static bool is_dark(const UIColor& colour) { return objc::send<"wispIsDarkColor", bool>(colour); }
  UIColor dominant(const home_screen::App& app) const {
    return objc::send<"wispDominantColor", UIColor>(app.icon);
  }
  UIColor second(const home_screen::App& app) const {
    return objc::send<"wispSecondDominantColor", UIColor>(app.icon);
  }

  std::unique_ptr<home_screen::Apps> apps;
};

}  // namespace wispen::testing
