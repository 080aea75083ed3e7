// tests/host/preferences/method_roles_test.cpp: which methods a list may name.

#include "host/preferences/method_roles.hpp"

#include <gtest/gtest.h>

namespace wispen::preferences {
namespace {

bool fits(const char* name, const char* encoding, MethodRole role) {
  return !why_not_performed(name, objc::shape_of_encoding(encoding), role);
}

TEST(MethodRoles, AGetterAndADataSourceTakeTheRowAndReturnAnObject) {
  for (const MethodRole role : {MethodRole::Getter, MethodRole::DataSource}) {
    EXPECT_TRUE(fits("valueOf:", "@@:@", role));
    EXPECT_TRUE(fits("valueOf:", "@24@0:8@16", role)) << "as a compiler writes it, with offsets";
    EXPECT_TRUE(fits("valueOf:", "@24@0:8r@16", role)) << "with a qualifier";
    EXPECT_FALSE(fits("hash", "Q16@0:8", role));
    EXPECT_FALSE(fits("respring", "v@:", role));
    EXPECT_FALSE(fits("specifiers", "@@:", role));
    EXPECT_FALSE(fits("load:", "v@:@", role));
    EXPECT_FALSE(fits("objectAtIndex:", "@24@0:8Q16", role));
    EXPECT_FALSE(fits("performSelector:", "@24@0:8:16", role));
    EXPECT_FALSE(fits("from:to:", "@@:@@", role));
    EXPECT_FALSE(fits("whenDone:", "@24@0:8@?16", role)) << "a block is called, and a row is none";
  }
}

TEST(MethodRoles, ASetterTakesAValueAndTheRow) {
  EXPECT_TRUE(fits("setPreferenceValue:specifier:", "v@:@@", MethodRole::Setter));
  EXPECT_FALSE(fits("setTitle:", "v@:@", MethodRole::Setter));
  EXPECT_FALSE(fits("removeSpecifier:animated:", "v@:@C", MethodRole::Setter));
  EXPECT_FALSE(fits("convertPoint:toView:", "{CGPoint=dd}40@0:8{CGPoint=dd}16@32", MethodRole::Setter));
}

TEST(MethodRoles, AnActionTakesTheRowOrNothing) {
  EXPECT_TRUE(fits("respring", "v@:", MethodRole::Action));
  EXPECT_TRUE(fits("openLink:", "v24@0:8@16", MethodRole::Action));
  EXPECT_FALSE(fits("setFrame:", "v48@0:8{CGRect={CGPoint=dd}{CGSize=dd}}16", MethodRole::Action));
  EXPECT_FALSE(fits("getColumns:", "v24@0:8[4i]16", MethodRole::Action));
  EXPECT_FALSE(fits("bounds", "{CGRect={CGPoint=dd}{CGSize=dd}}@:", MethodRole::Action));
  EXPECT_FALSE(fits("setName:", "v24@0:8^v16", MethodRole::Action));
  EXPECT_FALSE(fits("setPreferenceValue:specifier:", "v@:@@", MethodRole::Action));
}

TEST(MethodRoles, WhatCountsReferencesIsForNobody) {
  for (const char* const name : {"release", "autorelease", "retain", "retainCount", "dealloc"}) {
    EXPECT_FALSE(fits(name, "v@:", MethodRole::Action)) << name;
  }
  EXPECT_FALSE(fits("initWithSpecifier:", "@@:@", MethodRole::Getter));
  EXPECT_FALSE(fits("_initWithSpecifier:", "@@:@", MethodRole::Action));
  EXPECT_FALSE(fits("copyWithZone:", "@@:@", MethodRole::DataSource));
  EXPECT_TRUE(fits("initialise:", "v@:@", MethodRole::Action)) << "a word that only begins like one";
  EXPECT_TRUE(fits("newest:", "@@:@", MethodRole::Getter));
}

TEST(MethodRoles, AMalformedEncodingEndsWhereItEnds) {
  for (const char* const encoding : {"", "v", "v@", "v@:{", "v@:{a=[4", "@@:^@\"NSStr", "^^^", "v@:^"}) {
    EXPECT_FALSE(fits("odd:", encoding, MethodRole::Getter)) << encoding;
  }
}

}  // namespace
}  // namespace wispen::preferences
