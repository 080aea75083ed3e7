// host/foundation/file_dictionaries.hpp: dictionaries that are property-list files.
#pragma once

namespace wispen {

/// Puts the host's property lists behind NSDictionary's dictionaryWithContentsOfFile:,
/// initWithContentsOfFile: and writeToFile:atomically:, for XML and binary files and for both kinds of
/// dictionary. Foundation's own read no binary files, lose letters and digits, and crash on damaged input.
///
/// A dictionary that was read from a file keeps the file's bytes and makes objects of what is asked for; when
/// a changed one is written, everything else is written as it stood. A file that cannot be read, or holds
/// another kind of value, gives nil. Paths that begin like the phone's own are looked up below the device
/// root.
void install_file_dictionaries();

}  // namespace wispen
