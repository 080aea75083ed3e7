// host/preferences/confirmation.cpp: the question that a row asks before it acts.

#include "host/preferences/confirmation.hpp"

#include <utility>

#include "host/foundation/system_texts.hpp"
#include "host/preferences/cells/table_cell.hpp"
#include "host/uikit/values/display_settings.hpp"

namespace wispen::preferences {

namespace {

NSDictionary confirmation_of(const PSSpecifier& specifier) {
  return objc::cast_or_nil<NSDictionary>(specifier.propertyForKey("confirmation"_ns));
}

NSString text(const NSDictionary& confirmation, const NSString& key, const NSString& fallback) {
  const auto own = objc::cast_or_nil<NSString>(confirmation.objectForKey(key));
  return own ? own : fallback;
}

void add_action(const UIAlertController& alert, const NSString& title, UIAlertActionStyle style,
                std::function<void()> chosen) {
  alert.addAction(
      UIAlertAction::actionWithTitle(title, style, [chosen = std::move(chosen)](const UIAlertAction&) {
        if (chosen) chosen();
      }));
}

}  // namespace

bool has_confirmation(const PSSpecifier& specifier) { return confirmation_of(specifier) ? true : false; }

void confirm(const PSSpecifier& specifier, std::function<void()> accepted, std::function<void()> cancelled) {
  const NSDictionary confirmation = confirmation_of(specifier);
  const auto page = objc::cast_or_nil<UIViewController>(specifier.target());
  if (!page) return;
  const bool phone = uikit::display_settings().idiom == graphics::Idiom::Phone;
  const NSString title = text(confirmation, "title"_ns, NSString());
  const auto alert = UIAlertController::alertController(
      phone ? NSString() : title, text(confirmation, "prompt"_ns, NSString()),
      phone ? UIAlertControllerStyle::ActionSheet : UIAlertControllerStyle::Alert);
  const auto style =
      is_set(specifier, "isDestructive"_ns) ? UIAlertActionStyle::Destructive : UIAlertActionStyle::Default;
  add_action(alert, text(confirmation, "okTitle"_ns, title ? title : "OK"_ns), style, std::move(accepted));
  add_action(alert, text(confirmation, "cancelTitle"_ns, system_text("Cancel")), UIAlertActionStyle::Cancel,
             std::move(cancelled));
  page.presentViewController(alert, true);
}

}  // namespace wispen::preferences
