/* rootpath/rootpath.h: paths as the jailbreak sees them, turned into the paths that really hold the
 * files, and back.
 *
 * An optional library, "@rpath/libroot.dylib", knows the installation's prefixes. It is asked for once,
 * at the first call; each function that it lacks is answered by the fallback beside it. Every function
 * may be called from any thread. */
#ifndef ROOTPATH_ROOTPATH_H_
#define ROOTPATH_ROOTPATH_H_

#ifdef __cplusplus
extern "C" {
#endif

/** The size in bytes of every path buffer; a longer result is cut at one byte less, and terminated. */
enum { LIBROOT_PATH_MAX = 1024 };

/** Looks for the library and its functions, once a process; the other libroot_dyn_* do it themselves. */
void libroot_load(void);

/** The prefix of the root file system, of the jailbreak's root, and the id of this boot. Not to be freed. */
const char* libroot_dyn_get_root_prefix(void);
const char* libroot_dyn_get_jbroot_prefix(void);
const char* libroot_dyn_get_boot_uuid(void);

/** The real path of a path that is written as if the jailbreak owned the root. A relative path stays as
 *  it is; a path that has the prefix already gets it again, since the function cannot know.
 *
 *  resolved_path is a buffer of LIBROOT_PATH_MAX bytes, and is returned; where it is null the result is
 *  a new buffer that the caller frees. A null path gives null. */
char* libroot_dyn_jbrootpath(const char* path, char* resolved_path);

/** The other way: the path without the jailbreak root's prefix, or with the root prefix where it has
 *  none. The prefix is compared byte by byte; no '/' needs to follow it. Buffers as above. */
char* libroot_dyn_rootfspath(const char* path, char* resolved_path);

/** What answers where the library does not. */
const char* libroot_get_root_prefix_fallback(void);
const char* libroot_get_jbroot_prefix_fallback(void);
const char* libroot_get_boot_uuid_fallback(void);
char* libroot_jbrootpath_fallback(const char* path, char* resolved_path);
char* libroot_rootfspath_fallback(const char* path, char* resolved_path);

#ifdef __cplusplus
}
#endif

#endif
