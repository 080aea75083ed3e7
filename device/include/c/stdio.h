/* device/include/c/stdio.h: text into a buffer; no streams. */
#ifndef WISPEN_DEVICE_STDIO_H_
#define WISPEN_DEVICE_STDIO_H_

#include <stdarg.h>
#include <stddef.h>

#define EOF (-1)

#ifdef __cplusplus
extern "C" {
#endif

typedef struct wispen_stream FILE;
typedef long long fpos_t;

int remove(const char* path); /* declared only to be told from std::remove of ranges */
int snprintf(char* target, size_t size, const char* format, ...) __attribute__((format(printf, 3, 4)));
int vsnprintf(char* target, size_t size, const char* format, va_list arguments)
    __attribute__((format(printf, 3, 0)));

#ifdef __cplusplus
}
#endif

#endif
