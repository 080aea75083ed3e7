// host/core/notification_name.hpp: how a notification's name becomes a file's name.
#pragma once

#include <string>
#include <string_view>

namespace wispen {

/// Letters, digits and "-._" stand for themselves, except a leading dot; any other byte is "%" and two
/// hexadecimal digits; no name at all is "%". What would be over 200 bytes ends in "%%" and a 128-bit
/// hash of the whole name instead. So no two names share a file, and no name leaves the folder.
std::string notification_file_name(std::string_view name);

/// The name that a file stands for. A hashed one cannot be told: its file name is given.
std::string notification_name_of_file(std::string_view file_name);

}  // namespace wispen
