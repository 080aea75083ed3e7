/* device/include/c/stdlib.h: memory, and the little else that the standard library's headers insist on. */
#ifndef WISPEN_DEVICE_STDLIB_H_
#define WISPEN_DEVICE_STDLIB_H_

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct {
  int quot;
  int rem;
} div_t;
typedef struct {
  long quot;
  long rem;
} ldiv_t;
typedef struct {
  long long quot;
  long long rem;
} lldiv_t;

void* calloc(size_t count, size_t size);
void free(void* memory);
void* malloc(size_t size);
int posix_memalign(void** memory, size_t alignment, size_t size);
void* realloc(void* memory, size_t size);
void abort(void) __attribute__((noreturn));

int abs(int value);
long labs(long value);
long long llabs(long long value);
div_t div(int value, int divisor);
ldiv_t ldiv(long value, long divisor);
lldiv_t lldiv(long long value, long long divisor);

double strtod(const char* text, char** end);
float strtof(const char* text, char** end);
long strtol(const char* text, char** end, int base);
long long strtoll(const char* text, char** end, int base);
unsigned long strtoul(const char* text, char** end, int base);
unsigned long long strtoull(const char* text, char** end, int base);

#ifdef __cplusplus
}
#endif

#endif
