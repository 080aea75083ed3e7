// host/onboarding/welcome_controller.hpp: OBWelcomeController: a sheet that tells of what is new.
#pragma once

namespace wispen::onboarding {

/// Icon, title, a line of detail, and items with a picture beside each, in a column that scrolls.
void define_welcome_controller();

}  // namespace wispen::onboarding
