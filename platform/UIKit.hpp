// platform/UIKit.hpp: UIKit, as far as the bundle and the host use it.
#pragma once

#include "platform/UIKit/NSAttributedString.hpp"
#include "platform/UIKit/NSParagraphStyle.hpp"
#include "platform/UIKit/UIColor.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "platform/UIKit/UIGeometry.hpp"
#include "platform/UIKit/UIImage.hpp"
#include "platform/UIKit/UIImageSymbolConfiguration.hpp"
