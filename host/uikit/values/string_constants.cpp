// host/uikit/values/string_constants.cpp: the string objects that UIKit exports.
//
// A symbol is a pointer to a string object. Its users declare it as a constant handle, which is laid out
// alike; here it is declared as the variable that it is, so the two declarations never meet in one file.

#include "host/uikit/values/string_constants.hpp"

#include "platform/Foundation.hpp"

#pragma GCC visibility push(default)
extern "C" {
constinit objc::Unowned<NSString> NSFontAttributeName;
constinit objc::Unowned<NSString> NSForegroundColorAttributeName;
constinit objc::Unowned<NSString> NSBackgroundColorAttributeName;
constinit objc::Unowned<NSString> NSKernAttributeName;
constinit objc::Unowned<NSString> NSUnderlineStyleAttributeName;
constinit objc::Unowned<NSString> NSStrikethroughStyleAttributeName;
constinit objc::Unowned<NSString> NSBaselineOffsetAttributeName;
constinit objc::Unowned<NSString> NSParagraphStyleAttributeName;

constinit objc::Unowned<NSString> UIFontTextStyleLargeTitle;
constinit objc::Unowned<NSString> UIFontTextStyleTitle1;
constinit objc::Unowned<NSString> UIFontTextStyleTitle2;
constinit objc::Unowned<NSString> UIFontTextStyleTitle3;
constinit objc::Unowned<NSString> UIFontTextStyleHeadline;
constinit objc::Unowned<NSString> UIFontTextStyleBody;
constinit objc::Unowned<NSString> UIFontTextStyleCallout;
constinit objc::Unowned<NSString> UIFontTextStyleSubheadline;
constinit objc::Unowned<NSString> UIFontTextStyleFootnote;
constinit objc::Unowned<NSString> UIFontTextStyleCaption1;
constinit objc::Unowned<NSString> UIFontTextStyleCaption2;
}
#pragma GCC visibility pop

namespace wispen::uikit {

namespace {

/// Literals are kept for the life of the process, so not owning them is enough.
void set(objc::Unowned<NSString>& symbol, const NSString& literal) {
  symbol = objc::Unowned<NSString>(literal);
}

}  // namespace

void make_string_constants() {
  const objc::AutoreleasePool pool;  // a program may start the host before it has one
  set(NSFontAttributeName, "NSFont"_ns);
  set(NSForegroundColorAttributeName, "NSColor"_ns);
  set(NSBackgroundColorAttributeName, "NSBackgroundColor"_ns);
  set(NSKernAttributeName, "NSKern"_ns);
  set(NSUnderlineStyleAttributeName, "NSUnderline"_ns);
  set(NSStrikethroughStyleAttributeName, "NSStrikethrough"_ns);
  set(NSBaselineOffsetAttributeName, "NSBaselineOffset"_ns);
  set(NSParagraphStyleAttributeName, "NSParagraphStyle"_ns);

  set(UIFontTextStyleLargeTitle, "UICTFontTextStyleTitle0"_ns);
  set(UIFontTextStyleTitle1, "UICTFontTextStyleTitle1"_ns);
  set(UIFontTextStyleTitle2, "UICTFontTextStyleTitle2"_ns);
  set(UIFontTextStyleTitle3, "UICTFontTextStyleTitle3"_ns);
  set(UIFontTextStyleHeadline, "UICTFontTextStyleHeadline"_ns);
  set(UIFontTextStyleBody, "UICTFontTextStyleBody"_ns);
  set(UIFontTextStyleCallout, "UICTFontTextStyleCallout"_ns);
  set(UIFontTextStyleSubheadline, "UICTFontTextStyleSubhead"_ns);
  set(UIFontTextStyleFootnote, "UICTFontTextStyleFootnote"_ns);
  set(UIFontTextStyleCaption1, "UICTFontTextStyleCaption1"_ns);
  set(UIFontTextStyleCaption2, "UICTFontTextStyleCaption2"_ns);
}

}  // namespace wispen::uikit
