// tests/host/preferences/cells/text_cells_test.cpp: rows to write in, and a row that waits.

#include <string>

#include "tests/host/preferences/row_fixture.hpp"

namespace wispen::testing {
namespace {

class TextCellsTest : public RowTest {
 protected:
  static UITextField field_of(const PSTableCell& cell) { return objc::send<"textField", UITextField>(cell); }
};

TEST_F(TextCellsTest, TheKeyboardIsTheOneThatTheRowNames) {
  const std::pair<const char*, UIKeyboardType> flags[] = {{"isIP", UIKeyboardType::NumbersAndPunctuation},
                                                          {"isURL", UIKeyboardType::URL},
                                                          {"isEmail", UIKeyboardType::EmailAddress},
                                                          {"isNumeric", UIKeyboardType::DecimalPad}};
  for (const auto& [key, type] : flags) {
    const PSSpecifier row = stored_row("PSEditTextCell", "k");
    row.setProperty(NSNumber::numberWithBool(true), NSString(key));
    EXPECT_EQ(field_of(cell_of(row)).keyboardType(), type) << key;
  }
  const std::pair<const char*, UIKeyboardType> names[] = {{"numbers", UIKeyboardType::NumberPad},
                                                          {"phone", UIKeyboardType::PhonePad},
                                                          {"other", UIKeyboardType::Default}};
  for (const auto& [name, type] : names) {
    const PSSpecifier row = stored_row("PSEditTextCell", "k");
    row.setProperty(NSString(name), "keyboard"_ns);
    EXPECT_EQ(field_of(cell_of(row)).keyboardType(), type) << name;
  }
}

TEST_F(TextCellsTest, CapitalsAreTheOnesThatTheRowNames) {
  const std::pair<const char*, UITextAutocapitalizationType> names[] = {
      {"words", UITextAutocapitalizationType::Words},
      {"sentences", UITextAutocapitalizationType::Sentences},
      {"all", UITextAutocapitalizationType::AllCharacters},
      {"none", UITextAutocapitalizationType::None}};
  for (const auto& [name, type] : names) {
    const PSSpecifier row = stored_row("PSEditTextCell", "k");
    row.setProperty(NSString(name), "autoCaps"_ns);
    EXPECT_EQ((objc::send<"autocapitalizationType", UITextAutocapitalizationType>(field_of(cell_of(row)))),
              type)
        << name;
  }
}

TEST_F(TextCellsTest, ASecretIsNotShown) {
  EXPECT_TRUE(field_of(cell_of(stored_row("PSSecureEditTextCell", "k"))).isSecureTextEntry());
  EXPECT_FALSE(field_of(cell_of(stored_row("PSEditTextCell", "k"))).isSecureTextEntry());
}

TEST_F(TextCellsTest, WhatIsWrittenIsStoredWhenWritingEndsAndOnlyWhereItDiffers) {
  const PSSpecifier row = stored_row("PSEditTextCell", "k");
  const PSTableCell cell = cell_of(row);
  objc::send<"textFieldDidEndEditing:">(cell, field_of(cell));
  EXPECT_FALSE(row.performGetter()) << "nothing was written";
  field_of(cell).setText("words"_ns);
  objc::send<"textFieldDidEndEditing:">(cell, field_of(cell));
  EXPECT_EQ(row.performGetter<NSString>().utf8(), "words");
  row.performSetterWithValue(NSObject());
  objc::send<"textFieldDidEndEditing:">(cell, field_of(cell));
  EXPECT_FALSE(row.performGetter()) << "what it says already";
}

TEST_F(TextCellsTest, ARowThatWaitsTurns) {
  const PSTableCell cell = cell_of(stored_row("PSSpinnerCell", "k"));
  EXPECT_TRUE(cell.accessoryView().as<UIActivityIndicatorView>().isAnimating());
}

}  // namespace
}  // namespace wispen::testing
