// cells/OndrelTintCell.cpp: a cell class that is made at run time: its titles are lavender.

#include "cells/OndrelTintCell.hpp"

#include "cells/palette.hpp"
#include "platform/objc/class_pair.hpp"

namespace wispen {

void ondrel_setTitle(const PSTableCell& cell, objc::Selector name, const NSString& title) {
  objc::perform_super(cell, objc::send<"superclass", objc::ClassRef>(cell), name, title);
  cell.titleLabel().setTextColor(palette::lavender());
  cell.titleLabel().setHighlightedTextColor(palette::lavender());
}

void registerOndrelTintCellClass() {
  const objc::ClassPair pair("OndrelTintCell", objc::class_for<PSTableCell>());
  pair.override_method<"setTitle:", &ondrel_setTitle>();
  pair.register_pair();
}

}  // namespace wispen
