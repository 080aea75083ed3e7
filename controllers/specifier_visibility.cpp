// controllers/specifier_visibility.cpp: the settings that the rules ask.

#include "controllers/specifier_visibility.hpp"

constinit objc::Unowned<NSUserDefaults> prefs;
