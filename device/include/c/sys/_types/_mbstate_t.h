/* device/include/c/sys/_types/_mbstate_t.h: the state of a multibyte conversion, which only streams'
 * positions hold. */
#ifndef WISPEN_DEVICE_MBSTATE_T_H_
#define WISPEN_DEVICE_MBSTATE_T_H_

typedef union {
  char bytes[128];
  long long aligned;
} mbstate_t;

#endif
