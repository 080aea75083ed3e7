// EXPECT: host/core/result.hpp
#include "host/core/result.hpp"
