// platform/Foundation/NSTask.hpp: other programs, and what they write.
#pragma once

#include "platform/Foundation.hpp"

class NSFileHandle : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSFileHandle"};
  using NSObject::NSObject;

  /// Waits until the other end is closed.
  NSData readDataToEndOfFile() const { return objc::send<"readDataToEndOfFile", NSData>(*this); }
  void closeFile() const { objc::send<"closeFile">(*this); }
};

class NSPipe : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSPipe"};
  using NSObject::NSObject;

  static NSPipe pipe() { return objc::send<"pipe", NSPipe>(objc::class_for<NSPipe>()); }
  NSFileHandle fileHandleForReading() const {
    return objc::send<"fileHandleForReading", NSFileHandle>(*this);
  }
};

class NSTask : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSTask"};
  using NSObject::NSObject;

  void setArguments(const NSArray& arguments) const { objc::send<"setArguments:">(*this, arguments); }
  void setLaunchPath(const NSString& path) const { objc::send<"setLaunchPath:">(*this, path); }
  void setStandardOutput(const NSPipe& pipe) const { objc::send<"setStandardOutput:">(*this, pipe); }
  /// Raises the platform's exception where there is no such program.
  void launch() const { objc::send<"launch">(*this); }
  void waitUntilExit() const { objc::send<"waitUntilExit">(*this); }
};
