/* device/include/c/sched.h: giving up the processor. */
#ifndef WISPEN_DEVICE_SCHED_H_
#define WISPEN_DEVICE_SCHED_H_

#ifdef __cplusplus
extern "C" {
#endif
int sched_yield(void);
#ifdef __cplusplus
}
#endif

#endif
