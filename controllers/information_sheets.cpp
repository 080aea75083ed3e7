// controllers/information_sheets.cpp: the two sheets: what the product does, and what is new.

#include "bundle/facts/facts.hpp"
#include "cells/palette.hpp"
#include "controllers/WispBaseController.hpp"
#include "platform/AudioToolbox.hpp"
#include "rootpath/rootpath.h"

namespace wispen {

namespace {

constexpr std::uint32_t kTap = 1521;
constexpr NSInteger kFeatureBackdrop = 1;
constexpr NSInteger kChangelogBackdrop = 2;

// Published texts: spelling and blanks are kept as they were released.
constexpr char kPrologue[] =
    "Made With Love & Tears & Anger by p1nefold.\n\nEnjoy!\n\n----------------------------";
constexpr char kFeatures[] =
    "Separators:\n"
    "• Dynamic Color Bold Separators - will color bold separators with icon color \n\n"
    "• Dynamic Color Thin Separators - will color this separators with icon color \n\n"
    "• Thickness Adjustment - will change the thickness of the separators (both thin and bold) "
    "\n\n"
    "• Sides Trim (Width) Adjustment - width of both of separators (higher value = less width) "
    "\n\n"
    "Context Menu:\n"
    "• Border - will create a border, dynamic background coloring should be disable if using "
    "this feature (beacuse then the border will not be seen......) \n\n"
    "• Dynamic Border Coloring - will color the border of the menu with icon color "
    "(automatically when setting a border) \n\n"
    "• Vitrelle Background - will remove original dark/light background and replace this with a "
    "vitrelle blur background\n\n"
    "• Dynamic Primary Icon Background Color - will color the background with icon color \n\n"
    "• Dynamic Primary Label Coloring - will color the labels of the menu with icon color \n\n"
    "• Hide Separators - can hide bold / thin separately \n\n"
    "• Dynamic Cell Hiding - will hide 3d menu cells , to hide multiple cells please use ';' "
    "between (i.e Remove App;Share) \n\n"
    "• Custom Corner Radius\n\n"
    "Expanded 3D Menu (long pressing on a notification)\n"
    "• Dynamic Primary Icon Title Coloring - will color the title of the expanded lockscreen "
    "notificcation with icon color \n\n"
    "• Dynamic Primary Subtitle Coloring - will color the subtitle of the expanded lockscreen "
    "notification with icon color \n\n"
    "• Dynamic Primary Background Coloring - will color the background of the expanded "
    "lockscreen notification with icon color\n\n";
constexpr char kChanges[] =
    "  - Fixed Separator Hidden Logic \n\n"
    "- Fixed ios => 16 Hooks (Coloring, Separators) \n\n"
    "- Fixed HomeScreen 3D Expanded Coloring, Now its merged with HomeScreen Settings \n\n"
    " - Added proper description to sileo \n\n"
    "- Added new features & explanations button (exclamation mark icon)";

/// The path has the jailbreak's prefix already and is given another; where that names nothing, as on most
/// installations, the sheets have no icon.
UIImage sheet_icon() {
  char resolved[LIBROOT_PATH_MAX];
  const char* const path = libroot_dyn_jbrootpath(facts::kBannerFile, resolved);
  return UIImage::imageWithContentsOfFile(NSString::stringWithUTF8String(path));
}

/// Gives a new sheet its backdrop and colours. What asks for a loaded view is skipped before it is loaded.
void decorate(const OBWelcomeController& sheet, NSInteger backdrop_style) {
  const UIBackdropView backdrop = UIBackdropView::alloc().initWithFrame(
      {}, true, UIBackdropViewSettings::settingsForStyle(backdrop_style));
  backdrop.setClipsToBounds(true);
  sheet.viewIfLoaded().insertSubview(backdrop, 0);
  sheet.viewIfLoaded().setBackgroundColor(UIColor::clearColor());
  sheet.view().setTintColor(palette::lavender());
  sheet.setModalPresentationStyle(UIModalPresentationStyle::FormSheet);
}

/// Strikes the whole text out, in a copy that nobody shows.
void strike_out(const NSString& text) {
  const NSMutableAttributedString struck = NSMutableAttributedString::alloc().initWithString(text);
  const auto whole = objc::send<"rangeOfString:", NSRange>(text, text);
  struck.addAttribute(NSStrikethroughStyleAttributeName, NSNumber::numberWithInt(1), whole);
}

}  // namespace

void WispBaseController::showWtfChangedInThisVersion() const {
  AudioServicesPlaySystemSound(kTap);
  const UIImage icon = sheet_icon();
  const UIImage features = UIImage::systemImageNamed("exclamationmark.circle.fill"_ns);
  const UIImage prologue = UIImage::systemImageNamed("applelogo"_ns);
  OBWelcomeController& sheet = feature_sheet();
  if (!sheet) {
    sheet = OBWelcomeController::alloc().initWithTitle(
        "Inital Release"_ns, "Supports iOS 15 - 17 || Rootless & Rootfull"_ns, icon);
    sheet.addBulletedListItem("Prolouge"_ns, kPrologue, prologue);
    sheet.addBulletedListItem("Features & Explanations"_ns, kFeatures, features);
    decorate(sheet, kFeatureBackdrop);
  }
  presentViewController(sheet, true);
}

void WispBaseController::showWtfChangedInThisVersion2() const {
  AudioServicesPlaySystemSound(kTap);
  const UIImage icon = sheet_icon();
  const UIImage wrench = UIImage::systemImageNamed("wrench.fill"_ns);
  OBWelcomeController& sheet = changelog_sheet();
  if (!sheet) {
    sheet = OBWelcomeController::alloc().initWithTitle("Changelog"_ns, "And bug fixes"_ns, icon);
    const NSString changes(kChanges);
    strike_out(changes);
    sheet.addBulletedListItem("Changelog / Fixes"_ns, changes, wrench);
    decorate(sheet, kChangelogBackdrop);
  }
  presentViewController(sheet, true);
}

}  // namespace wispen
