// tests/support/page_fixture.hpp: pages on a screen, found and used by what is seen there.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "platform/UIKit.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {

using Json = nlohmann::ordered_json;

/// A host with the Settings application up.
class PageTest : public HostTest {
 protected:
  using HostTest::HostTest;

  /// Offers the shipped code with these lists (name below the bundle, bytes) and shows a page.
  void show(const char* page, const std::vector<std::pair<std::string, std::string>>& files) {
    load_bundle_with(files);
    ASSERT_EQ(wispen_host_offer_bundle(bundle_folder().c_str()), 1) << wispen_host_last_error();
    show(page);
  }
  void show_shipped(const char* page) {
    ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
    show(page);
  }
  static void show(const char* page) {
    ASSERT_EQ(wispen_host_show_page(page), 1) << wispen_host_last_error();
    settle();
  }
  static void settle() { ASSERT_EQ(wispen_host_settle(20), 1) << wispen_host_last_error(); }

  static UINavigationController navigation() {
    const UIWindow window = UIApplication::sharedApplication().keyWindow();
    return objc::cast_or_nil<UINavigationController>(window.rootViewController());
  }
  static PSListController top() { return navigation().topViewController().as<PSListController>(); }

  static Json tree() { return Json::parse(wispen_host_view_tree()); }
  static std::optional<Json> search(const Json& views, const std::function<bool(const Json&)>& test) {
    for (const Json& view : views) {
      if (test(view)) return view;
      if (!view.contains("subviews")) continue;
      if (auto found = search(view["subviews"], test)) return found;
    }
    return std::nullopt;
  }
  static std::optional<Json> with_text(const std::string& text) {
    return search(tree(), [&](const Json& view) { return view.value("text", std::string()) == text; });
  }
  static std::optional<Json> row(const std::string& identifier) {
    return search(tree(), [&](const Json& view) {
      return view.contains("row") && view["row"].value("id", std::string()) == identifier;
    });
  }
  static std::optional<Json> part(const Json& view, const std::string& cls) {
    return search(Json::array({view}), [&](const Json& each) { return each["class"] == cls; });
  }

  static void tap(const Json& view) {
    const Json& frame = view["frame"];
    const double x = frame[0].get<double>() + frame[2].get<double>() / 2;
    const double y = frame[1].get<double>() + frame[3].get<double>() / 2;
    wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, x, y);
    wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, x, y);
    settle();
  }
  static void tap_text(const std::string& text) {
    const auto view = search(tree(), [&](const Json& each) {
      return each.value("text", std::string()) == text || each.value("label", std::string()) == text;
    });
    ASSERT_TRUE(view) << text;
    tap(*view);
  }

  /// The cell of a row of the page on top, which must be in sight.
  template <class T = PSTableCell>
  static T cell(const char* identifier) {
    const auto specifier = objc::send<"specifierForID:", PSSpecifier>(top(), NSString(identifier));
    const T found = objc::cast_or_nil<T>(objc::send<"cachedCellForSpecifier:", NSObject>(top(), specifier));
    EXPECT_TRUE(found) << identifier;
    return found;
  }
};

/// An instance of the class of that name before its initialiser.
template <class T>
objc::Allocated<T> allocate(const char* cls) {
  const auto raw = reinterpret_cast<objc::abi::id>(objc::ClassRef::named(cls).borrow());
  return objc::Allocated<T>(objc::abi::call<objc::abi::id>(raw, objc::selector<"alloc">().borrow()));
}

inline PSSpecifier plain_specifier() {
  return objc::send<"emptyGroupSpecifier", PSSpecifier>(objc::class_for<PSSpecifier>());
}

/// A cell of the class of that name, as the framework makes it but in no table.
template <class T = PSTableCell>
T make_cell(const char* cls, const PSSpecifier& specifier = plain_specifier()) {
  return allocate<T>(cls).template initialize<"initWithStyle:reuseIdentifier:specifier:">(NSInteger{0},
                                                                                          "x"_ns, specifier);
}

/// A colour's parts, for comparisons.
inline std::vector<double> rgba(const UIColor& colour) {
  CGFloat red = 0, green = 0, blue = 0, alpha = 0;
  objc::send<"getRed:green:blue:alpha:", bool>(colour, &red, &green, &blue, &alpha);
  return {red, green, blue, alpha};
}

}  // namespace wispen::testing
