// tests/cells/tint_cell_test.cpp: the cell class that is made at run time.

#include "tests/support/class_variables.hpp"
#include "tests/support/page_fixture.hpp"

extern "C" std::size_t class_getInstanceSize(objc::abi::Class cls);

namespace wispen::testing {
namespace {

using ::testing::DoubleEq;
using ::testing::Pointwise;

/// A run-time class below another one, with a `setTitle:` of its own where a function is given.
objc::ClassRef make_class(const char* name, objc::ClassRef base, objc::abi::IMP set_title = nullptr) {
  if (const objc::ClassRef known = objc::ClassRef::named(name)) return known;
  const objc::abi::Class made = objc::abi::objc_allocateClassPair(base.borrow(), name, 0);
  if (set_title != nullptr) {
    objc::abi::class_addMethod(made, objc::selector<"setTitle:">().borrow(), set_title, "v@:@");
  }
  objc::abi::objc_registerClassPair(made);
  return objc::ClassRef::named(name);
}

int titles_heard = 0;
void hear_title(objc::abi::id, objc::abi::SEL, objc::abi::id) { ++titles_heard; }

class TintCellTest : public PageTest {
 protected:
  static objc::abi::Method title_setter(objc::ClassRef cls) {
    return objc::abi::class_getInstanceMethod(cls.borrow(), objc::selector<"setTitle:">().borrow());
  }
};

TEST_F(TintCellTest, AddsOneMethodOfTheSameTypesAndNoStorage) {
  show_shipped("root");
  const objc::ClassRef cls = objc::ClassRef::named("OndrelTintCell");
  const objc::ClassRef base = objc::class_for<PSTableCell>();
  EXPECT_EQ(::class_getInstanceSize(cls.borrow()), ::class_getInstanceSize(base.borrow()));
  EXPECT_TRUE(variables_of("OndrelTintCell").empty());
  unsigned count = 0;
  objc::abi::Method* const own = objc::abi::class_copyMethodList(cls.borrow(), &count);
  ASSERT_EQ(count, 1U);
  EXPECT_EQ(own[0], title_setter(cls));
  std::free(own);
  EXPECT_STREQ(objc::abi::method_getTypeEncoding(title_setter(cls)),
               objc::abi::method_getTypeEncoding(title_setter(base)));
}

TEST_F(TintCellTest, ForwardsToWhateverIsAboveTheReceiversOwnClassOnPurpose) {
  show_shipped("root");
  const objc::ClassRef tint = objc::ClassRef::named("OndrelTintCell");
  const objc::ClassRef listener =
      make_class("ListeningTintCell", tint, reinterpret_cast<objc::abi::IMP>(&hear_title));
  make_class("LowestTintCell", listener);
  const auto lowest = make_cell("LowestTintCell");
  const auto forward = reinterpret_cast<void (*)(objc::abi::id, objc::abi::SEL, objc::abi::id)>(
      objc::abi::method_getImplementation(title_setter(tint)));
  titles_heard = 0;
  forward(objc::borrow(lowest), objc::selector<"setTitle:">().borrow(), objc::borrow("One"_ns));
  EXPECT_EQ(titles_heard, 1);  // a lookup fixed to the framework's class would have passed it by
  EXPECT_THAT(rgba(lowest.titleLabel().textColor()), Pointwise(DoubleEq(), {0.7, 0.6, 0.8, 1.0}));
}

TEST_F(TintCellTest, ColoursItsTitleWhateverItIsAndHoweverOften) {
  show_shipped("root");
  const objc::ClassRef cls = objc::ClassRef::named("OndrelTintCell");
  ASSERT_TRUE(cls);
  EXPECT_EQ(cls.superclass(), objc::class_for<PSTableCell>());
  const auto made = make_cell("OndrelTintCell");
  for (const char* const title : {"One", "Two"}) {
    made.setTitle(NSString(title));
    EXPECT_EQ(made.titleLabel().text().utf8(), title);
    EXPECT_THAT(rgba(made.titleLabel().textColor()), Pointwise(DoubleEq(), {0.7, 0.6, 0.8, 1.0}));
    EXPECT_THAT(rgba(made.titleLabel().highlightedTextColor()), Pointwise(DoubleEq(), {0.7, 0.6, 0.8, 1.0}));
    made.titleLabel().setTextColor(UIColor::redColor());
  }
}

TEST_F(TintCellTest, IsARowOfTheRootPage) {
  show_shipped("root");
  const auto found = [] {
    return search(tree(), [](const Json& view) { return view["class"] == "OndrelTintCell"; });
  };
  for (int i = 0; i < 30 && !found(); ++i) {
    wispen_host_wheel(200, 500, -200);
    settle();
  }
  const auto view = found();
  ASSERT_TRUE(view);
  const auto label = part(*view, "UILabel");
  ASSERT_TRUE(label);
  EXPECT_EQ((*label)["colour"], "#B399CCFF");
}

}  // namespace
}  // namespace wispen::testing
