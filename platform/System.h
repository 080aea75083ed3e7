/* platform/System.h: the C library's and system's functions that the bundle calls: dynamic loading,
 * processes, bounded strings. Usable from C.
 *
 * On the phone they are libSystem's. On the desktop the host answers: it expands "@rpath", looks
 * absolute paths up below the device root, starts nothing outside it, and takes the phone's numbers for
 * modes and options. There each name is bound to the host's symbol, so that the calls of the rest of
 * the process stay with the C library. */
#ifndef PLATFORM_SYSTEM_H_
#define PLATFORM_SYSTEM_H_

#include <stddef.h>

#if defined(__APPLE__)
#define PLATFORM_SYMBOL(name) __asm__("_" #name)
#define PLATFORM_DISPATCH(name) __asm__("_" #name)
#else
#define PLATFORM_SYMBOL(name) __asm__("wispen_platform_" #name)
#define PLATFORM_DISPATCH(name) __asm__(#name)
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef int platform_pid_t;

/* Modes of dlopen, as the phone numbers them. */
enum { PLATFORM_RTLD_NOW = 2 };
/* Options of waitpid, as the phone numbers them. */
enum { PLATFORM_WEXITED = 4 };

/** A handle for the library, or null. */
void* platform_dlopen(const char* path, int mode) PLATFORM_SYMBOL(dlopen);
/** The address of the library's symbol, or null. */
void* platform_dlsym(void* handle, const char* symbol) PLATFORM_SYMBOL(dlsym);

/** Starts a command; 0, or an error number, in which case *pid is not written. */
int platform_posix_spawn(platform_pid_t* pid, const char* path, const void* file_actions,
                         const void* attributes, char* const argv[], char* const envp[])
    PLATFORM_SYMBOL(posix_spawn);
/** Waits for a child; its id, or -1. */
platform_pid_t platform_waitpid(platform_pid_t pid, int* status, int options) PLATFORM_SYMBOL(waitpid);

/** Bounded copy and append: at most `size` bytes of target, always terminated; the length wanted. */
size_t platform_strlcpy(char* target, const char* source, size_t size) PLATFORM_SYMBOL(strlcpy);
size_t platform_strlcat(char* target, const char* source, size_t size) PLATFORM_SYMBOL(strlcat);

/** The decimal number at the beginning, as strtof reads it; a null locale is the "C" locale. */
/* Formats in a locale; null is the C locale, whatever the process has set. */
int platform_snprintf_l(char* text, size_t size, void* locale, const char* format, ...)
    PLATFORM_SYMBOL(snprintf_l);
float platform_strtof_l(const char* text, char** end, void* locale) PLATFORM_SYMBOL(strtof_l);

/** A once-token: zero before, all ones after. */
typedef long platform_once_t;
/** Runs the function once a token; everybody else waits until it has run. */
void platform_dispatch_once_f(platform_once_t* token, void* context, void (*function)(void*))
    PLATFORM_DISPATCH(dispatch_once_f);

#ifdef __cplusplus
}
#endif

#endif
