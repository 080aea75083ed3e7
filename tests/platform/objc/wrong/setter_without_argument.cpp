// EXPECT: a setter takes one argument
#include "platform/Foundation.hpp"
struct Item : objc::Implementation<Item, NSObject> {
  int value = 0;
};
void wrong() { objc::Class<NSObject>::implemented_by<Item>().property<"value", "setValue", &Item::value>(); }
