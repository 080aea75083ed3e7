// EXPECT: it implements another class
#include "platform/Foundation.hpp"
class Text : public objc::Implementation<Text, NSString> {};
void wrong() { objc::Class<NSNumber>::implemented_by<Text>(); }
