// cells/WispHeader.cpp: the banner at the top of the root page: the product's name and its version.

#include "cells/WispHeader.hpp"

#include "bundle/facts/facts.hpp"
#include "cells/palette.hpp"
#include "platform/Dispatch.hpp"
#include "platform/Foundation/NSTask.hpp"

namespace wispen {

namespace {

constexpr UIViewAutoresizing kFlexibleSize =
    UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight;

UILabel make_label(const CGRect& frame) {
  const UILabel label = UILabel::alloc().initWithFrame(frame);
  label.setNumberOfLines(1);
  label.setAutoresizingMask(kFlexibleSize);
  return label;
}

UILabel make_title(const CGRect& frame) {
  const UILabel title = make_label(frame);
  title.layoutIfNeeded();
  title.setFont(UIFont::fontWithName("HelveticaNeue-Light"_ns, 34));
  title.setTextColor(palette::accent());
  const NSMutableAttributedString name = NSMutableAttributedString::alloc().initWithString("WISPEN"_ns);
  name.beginEditing();
  name.addAttribute(NSFontAttributeName, UIFont::fontWithName("HelveticaNeue"_ns, 34), NSRange{0, 4});
  name.endEditing();
  title.setAttributedText(name);
  title.setTextAlignment(NSTextAlignment::Center);
  return title;
}

UILabel make_version(const CGRect& frame) {
  const UILabel version = make_label(frame);
  version.setFont(UIFont::fontWithName("HelveticaNeue-Light"_ns, 15));
  version.setTextColor(UIColor::systemGrayColor());
  version.setTextAlignment(NSTextAlignment::Center);
  version.setText("Version unknown"_ns);
  version.setAlpha(0);
  return version;
}

/// What the package manager answers, line feed included; nil or empty where it knows nothing.
NSString ask_package_manager() {
  const NSPipe pipe = NSPipe::pipe();
  const auto task = objc::make<NSTask>();
  NSMutableArray arguments = NSMutableArray::array();
  arguments.addObject("-c"_ns);
  arguments.addObject(NSString(facts::kVersionCommand));
  task.setArguments(arguments);
  task.setLaunchPath("/bin/sh"_ns);
  task.setStandardOutput(pipe);
  task.launch();
  task.waitUntilExit();
  const NSFileHandle reading = pipe.fileHandleForReading();
  const NSData data = reading.readDataToEndOfFile();
  constexpr NSUInteger kUtf8 = 4;
  const NSString output = objc::allocate<NSString>().initialize<"initWithData:encoding:">(data, kUtf8);
  reading.closeFile();
  return output;
}

void show_version(const UILabel& label, const NSString& output) {
  if (output.length() > 0) {
    label.setText(objc::send<"stringByAppendingString:", NSString>("Version "_ns, output));
  }
  label.setAlpha(1);
}

}  // namespace

WispHeader WispHeader::initWithSpecifier(objc::Allocated<WispHeader> self, const PSSpecifier& specifier) {
  WispHeader cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(
      NSInteger{0}, "Banner"_ns, specifier);
  if (!cell) return cell;
  const bool pad = UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiom::Pad;
  const CGFloat x = pad ? -20 : 0;
  cell.addSubview(make_title({{x, 23}, {cell.frame().size.width, 10}}));
  const UILabel version = make_version({{x, 55}, {cell.frame().size.width, 5}});
  cell.addSubview(version);
  // Both blocks keep the label: it may outlive the cell, and is let go on the main queue.
  dispatch_async(dispatch_get_global_queue(0, 0), [label = version]() mutable {
    const NSString output = ask_package_manager();
    dispatch_async(dispatch_get_main_queue(),
                   [output, label = std::move(label)] { show_version(label, output); });
  });
  return cell;
}

CGFloat WispHeader::preferredHeightForWidth(CGFloat) const { return 100; }

void WispHeader::define() {
  objc::Class<WispHeader>()
      .initializer<"initWithSpecifier:", &WispHeader::initWithSpecifier>()
      .method<"preferredHeightForWidth:", &WispHeader::preferredHeightForWidth>()
      .register_class();
}

}  // namespace wispen
