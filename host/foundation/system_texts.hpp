// host/foundation/system_texts.hpp: the words that the platform itself shows, in the user's language.
#pragma once

#include "platform/Foundation.hpp"

namespace wispen {

/// "Back" as "Zurück": by the English word, which also stands for languages that are not known here.
NSString system_text(const char* english);

}  // namespace wispen
