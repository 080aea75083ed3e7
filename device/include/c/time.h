/* device/include/c/time.h: the types that the standard library's headers name. */
#ifndef WISPEN_DEVICE_TIME_H_
#define WISPEN_DEVICE_TIME_H_

#include <stddef.h>

typedef unsigned long clock_t;
typedef long time_t;
struct timespec {
  time_t tv_sec;
  long tv_nsec;
};

#ifdef __cplusplus
extern "C" {
#endif
int nanosleep(const struct timespec* wanted, struct timespec* left);
#ifdef __cplusplus
}
#endif

#endif
