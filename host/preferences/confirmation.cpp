// host/preferences/confirmation.cpp: the question that a row asks before it acts.

#include "host/preferences/confirmation.hpp"

#include <utility>

#include "host/preferences/cells/table_cell.hpp"
#include "host/uikit/controllers/alert_controller.hpp"
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

void add_action(const uikit::AlertController& alert, const NSString& title, uikit::AlertActionStyle style,
                std::function<void()> chosen) {
  const objc::Block<void(uikit::AlertAction)> handler = [chosen =
                                                             std::move(chosen)](const uikit::AlertAction&) {
    if (chosen) chosen();
  };
  objc::send<"addAction:">(
      alert, objc::send<"actionWithTitle:style:handler:", uikit::AlertAction>(
                 objc::class_for<uikit::AlertAction>(), title, static_cast<NSInteger>(style), handler));
}

}  // namespace

bool has_confirmation(const PSSpecifier& specifier) { return confirmation_of(specifier) ? true : false; }

void confirm(const PSSpecifier& specifier, std::function<void()> accepted, std::function<void()> cancelled) {
  const NSDictionary confirmation = confirmation_of(specifier);
  const auto page = objc::cast_or_nil<uikit::ViewController>(specifier.target());
  if (!page) return;
  const bool phone = uikit::display_settings().idiom == graphics::Idiom::Phone;
  const NSString title = text(confirmation, "title"_ns, NSString());
  const auto alert = objc::send<"alertControllerWithTitle:message:preferredStyle:", uikit::AlertController>(
      objc::class_for<uikit::AlertController>(), phone ? NSString() : title,
      text(confirmation, "prompt"_ns, NSString()), NSInteger{phone ? 0 : 1});
  const auto style = is_set(specifier, "isDestructive"_ns) ? uikit::AlertActionStyle::Destructive
                                                           : uikit::AlertActionStyle::Default;
  add_action(alert, text(confirmation, "okTitle"_ns, title ? title : "OK"_ns), style, std::move(accepted));
  add_action(alert, text(confirmation, "cancelTitle"_ns, "Cancel"_ns), uikit::AlertActionStyle::Cancel,
             std::move(cancelled));
  page.present(alert, true, {});
}

}  // namespace wispen::preferences
