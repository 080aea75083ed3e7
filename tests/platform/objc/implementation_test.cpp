// tests/platform/objc/implementation_test.cpp: C++ classes that live inside objects.

#include "platform/objc/implementation.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Foundation.hpp"

namespace wispen::testing {
namespace {

/// What everybody speaks.
class Lamp : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"WispenTestLamp"};
  using NSObject::NSObject;
  bool isOn() const { return objc::send<"isOn", bool>(*this); }
  void setOn(bool on) const { objc::send<"setOn:">(*this, on); }
  int brightness() const { return objc::send<"brightness", int>(*this); }
  void setBrightness(int value) const { objc::send<"setBrightness:">(*this, value); }
  NSString name() const { return objc::send<"name", NSString>(*this); }
  void setName(const NSString& name) const { objc::send<"setName:">(*this, name); }
  NSString title() const { return objc::send<"title", NSString>(*this); }
};
class Lantern : public Lamp {
 public:
  using Base = Lamp;
  static constexpr objc::FixedString kClass{"WispenTestLantern"};
  using Lamp::Lamp;
};

int alive = 0;
std::vector<std::string> last_words;

class LampBody : public objc::Implementation<LampBody, Lamp> {
 public:
  LampBody() { ++alive; }
  ~LampBody() {
    --alive;
    last_words.push_back(self().title().utf8());
  }
  bool isOn() const { return on_; }
  void setOn(bool on) { on_ = on; }
  NSString title() const { return name ? name : "lamp"_ns; }

  int brightness = 40;
  NSString name;

 private:
  bool on_ = false;
};

class LanternBody : public objc::Implementation<LanternBody, Lantern> {
 public:
  static Lantern init(objc::Allocated<Lantern> self) {
    const Lantern lantern = super_init<"init">(std::move(self));
    of(lantern).lit_ = true;
    return lantern;
  }
  ~LanternBody() { last_words.emplace_back("lantern"); }
  NSString title() const { return ((lit_ ? "lit " : "dark ") + super<"title", NSString>().utf8()).c_str(); }

 private:
  bool lit_ = false;
};

class ImplementationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    objc::Class<Lamp>::implemented_by<LampBody>()
        .method<"isOn", &LampBody::isOn>()
        .method<"setOn:", &LampBody::setOn>()
        .method<"title", &LampBody::title>()
        .property<"brightness", "setBrightness:", &LampBody::brightness>()
        .property<"name", "setName:", &LampBody::name>()
        .register_class();
    objc::Class<Lantern>::implemented_by<LanternBody>()
        .initializer<"init", &LanternBody::init>()
        .method<"title", &LanternBody::title>()
        .register_class();
    last_words.clear();
  }
  objc::AutoreleasePool pool_;
};

TEST_F(ImplementationTest, AnswersMessagesWithItsMembers) {
  const Lamp lamp = objc::make<Lamp>();
  EXPECT_FALSE(lamp.isOn());
  lamp.setOn(true);
  EXPECT_TRUE(lamp.isOn());
  EXPECT_EQ(&LampBody::of(lamp), &LampBody::of(lamp));
  EXPECT_EQ(LampBody::of(lamp).self(), lamp);
}

TEST_F(ImplementationTest, AMemberVariableIsAPropertyAndKeepsItsObject) {
  const Lamp lamp = objc::make<Lamp>();
  EXPECT_EQ(lamp.brightness(), 40) << "its C++ value, not zero";
  lamp.setBrightness(7);
  EXPECT_EQ(lamp.brightness(), 7);
  {
    const objc::AutoreleasePool pool;
    lamp.setName(NSString(std::string(600, 'n').c_str()));
  }
  EXPECT_EQ(lamp.name().length(), 600U);
}

TEST_F(ImplementationTest, IsMadeAtTheFirstUseAndDestroyedWithTheObject) {
  ASSERT_EQ(alive, 0);
  Lamp unused = objc::make<Lamp>();
  EXPECT_EQ(alive, 0);
  Lamp used = objc::make<Lamp>();
  (void)used.isOn();
  EXPECT_EQ(alive, 1);
  unused = used = Lamp();
  EXPECT_EQ(alive, 0);
}

TEST_F(ImplementationTest, EachClassHasItsOwnAndReachesItsBase) {
  const Lantern lantern = objc::make<Lantern>();
  EXPECT_EQ(lantern.title().utf8(), "lit lamp");
  lantern.setName("porch"_ns);
  EXPECT_EQ(lantern.title().utf8(), "lit porch");
}

TEST_F(ImplementationTest, TheDerivedOneGoesFirstWhileTheObjectStillAnswers) {
  Lantern lantern = objc::make<Lantern>();
  lantern.setName("porch"_ns);
  (void)lantern.title();
  lantern = Lantern();
  ASSERT_EQ(last_words.size(), 2U);
  EXPECT_EQ(last_words[0], "lantern");
  EXPECT_NE(last_words[1].find("porch"), std::string::npos);
}

}  // namespace
}  // namespace wispen::testing
