// platform/objc/objc.hpp: the whole bridge.
#pragma once

#include "platform/objc/block.hpp"
#include "platform/objc/category.hpp"
#include "platform/objc/class.hpp"
#include "platform/objc/fixed_string.hpp"
#include "platform/objc/handle.hpp"
#include "platform/objc/lifetime.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/selector.hpp"
#include "platform/objc/send.hpp"
#include "platform/objc/weak.hpp"
