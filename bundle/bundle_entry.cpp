// bundle/bundle_entry.cpp: what happens when the bundle is loaded.

#include "cells/WispButton.hpp"
#include "cells/WispHeader.hpp"
#include "cells/WispSlider.hpp"
#include "cells/WispToggle.hpp"
#include "cells/XXXLabeledSliderCell.hpp"
#include "cells/XXXSegmentTableImageCell.hpp"
#include "cells/XXXSwitchWithInfoCell.hpp"
#include "colour/UIColor_Wispen.hpp"
#include "colour/UIImage_Wispen.hpp"
#include "controllers/WispBaseController.hpp"
#include "controllers/WispRootListController.hpp"
#include "controllers/sub_pages.hpp"

namespace wispen {
namespace {

// The one initialiser of the image: whoever loads the bundle asks for its principal class by name next.
// A base comes before what derives from it.
[[gnu::constructor]] void register_classes() {
  WispBaseController::define();
  WispRootListController::define();
  SepSettingsCell::define();
  BackgroundSettingsCell::define();
  ContextMenuLabels::define();
  Expanded3DAdjustments::define();
  SepSettingsHSCell::define();
  WispHeader::define();
  XXXLabeledSliderCell::define();
  XXXSwitchWithInfoCell::define();
  XXXSegmentTableImageCell::define();
  WispButton::define();
  WispSlider::define();
  WispToggle::define();
  define_color_category();
  define_image_category();
}

}  // namespace
}  // namespace wispen
