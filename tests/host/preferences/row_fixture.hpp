// tests/host/preferences/row_fixture.hpp: single rows and their cells, in no list.
#pragma once

#include <initializer_list>
#include <string>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {

/// A page whose default store keeps the rows' values.
class RowTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    page_ = objc::make<PSListController>();
  }
  void TearDown() override {
    page_ = PSListController();
    HostTest::TearDown();
  }

  static NSArray array(std::initializer_list<const char*> texts) {
    const NSMutableArray all = NSMutableArray::array();
    for (const char* const text : texts) all.addObject(NSString(text));
    return all;
  }

  /// A row of that cell, which reads and stores under the key.
  PSSpecifier stored_row(const char* cell, const char* key) const {
    const auto type =
        objc::send<"cellTypeFromString:", NSInteger>(objc::class_for<PSTableCell>(), NSString(cell));
    const auto row = objc::send<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:", PSSpecifier>(
        objc::class_for<PSSpecifier>(), NSString(), page_, objc::selector<"setPreferenceValue:specifier:">(),
        objc::selector<"readPreferenceValue:">(), objc::ClassRef(), type, objc::ClassRef());
    row.setProperty(NSString(key), "key"_ns);
    row.setProperty("some.domain"_ns, "defaults"_ns);
    return row;
  }

  /// The row's cell, made and filled as the page does it.
  template <class T = PSTableCell>
  T cell_of(const PSSpecifier& row) const {
    const NSMutableArray rows = NSMutableArray::array();
    rows.addObject(row);
    objc::send<"setSpecifiers:">(page_, rows);
    page_.view();
    return objc::send<"tableView:cellForRowAtIndexPath:", T>(page_, page_.table(),
                                                             NSIndexPath::indexPathForRow(0, 0));
  }

  /// The texts of the labels in a cell's content, one after the other.
  static std::string texts_in(const UITableViewCell& cell) {
    std::string all;
    const NSArray views = cell.contentView().subviews();
    for (NSUInteger i = 0; i < views.count(); ++i) {
      const auto label = objc::cast_or_nil<UILabel>(views.objectAtIndex(i));
      if (label && label.text()) all += label.text().utf8();
    }
    return all;
  }

  PSListController page_;
};

}  // namespace wispen::testing
