// host/libroot/libroot.hpp: the optional root-path library, as packages look it up by name.
#pragma once

extern "C" {

/// The host path of the phone's "/", of the jailbreak's tree, and this boot's identifier (upper case,
/// 36 characters). Never null, never freed, valid for the life of the process.
[[gnu::visibility("default")]] const char* libroot_get_root_prefix();
[[gnu::visibility("default")]] const char* libroot_get_jbroot_prefix();
[[gnu::visibility("default")]] const char* libroot_get_boot_uuid();

/// The host path of a path in the jailbreak's tree. An absolute path gets the prefix, always; a
/// relative one is copied. The result is in `resolved`, which holds 1024 bytes, or, where that is
/// null, in a buffer that the caller frees with free(). It is cut at 1023 bytes. Null for a null path.
[[gnu::visibility("default")]] char* libroot_jbrootpath(const char* path, char* resolved);

/// The other way: a path below the jailbreak's tree becomes the path of the same name in the phone's own
/// tree; any other absolute path gets the root prefix. Ownership as above.
[[gnu::visibility("default")]] char* libroot_rootfspath(const char* path, char* resolved);
}
