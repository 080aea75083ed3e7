/* device/include/c/string.h: memory and strings. */
#ifndef WISPEN_DEVICE_STRING_H_
#define WISPEN_DEVICE_STRING_H_

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

void* memchr(const void* bytes, int wanted, size_t count);
int memcmp(const void* a, const void* b, size_t count);
void* memcpy(void* target, const void* source, size_t count);
void* memmove(void* target, const void* source, size_t count);
void* memset(void* target, int value, size_t count);

char* strchr(const char* text, int wanted);
int strcmp(const char* a, const char* b);
size_t strlen(const char* text);
int strncmp(const char* a, const char* b, size_t count);
char* strpbrk(const char* text, const char* wanted);
char* strrchr(const char* text, int wanted);
char* strstr(const char* text, const char* wanted);

#ifdef __cplusplus
}
#endif

#endif
