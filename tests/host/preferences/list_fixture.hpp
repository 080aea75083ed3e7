// tests/host/preferences/list_fixture.hpp: specifier lists, loaded for a page that answers what their rows
// name.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {

/// A page whose rows name selectors of their own.
class AskedPage : public objc::Authored<AskedPage, PSListController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestAskedPage"};
  using Authored::Authored;
  static inline std::vector<std::string> log;

  NSObject get_it(const PSSpecifier& specifier) const {
    log.push_back("get " + specifier.identifier().utf8());
    return "gotten"_ns;
  }
  void set_it(const NSObject& value, const PSSpecifier& specifier) const {
    log.push_back("set " + specifier.identifier().utf8() + " " + value.description().utf8());
  }
  NSArray value_source(const PSSpecifier&) const {
    NSMutableArray values = NSMutableArray::array();
    values.addObject(NSNumber::numberWithInt(1));
    values.addObject(NSNumber::numberWithInt(2));
    return values;
  }
  NSArray load_again(const PSSpecifier&) const { return loadSpecifiersFromPlistName("List"_ns, *this); }
  NSArray title_source(const PSSpecifier&) const {
    NSMutableArray titles = NSMutableArray::array();
    titles.addObject("One"_ns);
    titles.addObject("Two"_ns);
    return titles;
  }
  NSBundle bundle_under_test() const {
    return NSBundle::bundleForClass(objc::ClassRef::named("WispBaseController"));
  }
  static void define() {
    objc::Class<AskedPage>()
        .method<"getIt:", &AskedPage::get_it>()
        .method<"setIt:forSpecifier:", &AskedPage::set_it>()
        .method<"valueSource:", &AskedPage::value_source>()
        .method<"loadAgain:", &AskedPage::load_again>()
        .method<"titleSource:", &AskedPage::title_source>()
        .method<"bundle", &AskedPage::bundle_under_test>()
        .register_class();
  }
};

/// Lists of the test's own, loaded for such a page.
class ListTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    AskedPage::define();
    AskedPage::log.clear();
    page_ = objc::make<AskedPage>();
  }
  void TearDown() override {
    page_ = AskedPage();
    HostTest::TearDown();
  }
  NSMutableArray load(const std::string& items, std::vector<std::pair<std::string, std::string>> more = {}) {
    more.emplace_back("List.plist", specifier_list(items));
    load_bundle_with(more);
    return page_.loadSpecifiersFromPlistName("List"_ns, page_);
  }
  PSSpecifier load_one(const std::string& one) { return load(one).objectAtIndex<PSSpecifier>(0); }

  AskedPage page_;
};

}  // namespace wispen::testing
