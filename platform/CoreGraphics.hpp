// platform/CoreGraphics.hpp: geometry, colours, images and bitmap contexts, as far as they are used here.
#pragma once

#include "platform/CoreGraphics/CGAffineTransform.hpp"
#include "platform/CoreGraphics/CGBitmapContext.hpp"
#include "platform/CoreGraphics/CGColor.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/CoreGraphics/CGImage.hpp"
