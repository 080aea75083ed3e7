/* device/include/c/errno.h: the last error's number. */
#ifndef WISPEN_DEVICE_ERRNO_H_
#define WISPEN_DEVICE_ERRNO_H_

#ifdef __cplusplus
extern "C" {
#endif
int* __error(void);
#ifdef __cplusplus
}
#endif

#define errno (*__error())

#endif
