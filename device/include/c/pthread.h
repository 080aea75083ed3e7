/* device/include/c/pthread.h: threads, as the standard library's headers declare their wrappers with. The
 * bundle starts none and holds no lock: no stub names a function of these, so that using one fails at link
 * time. */
#ifndef WISPEN_DEVICE_PTHREAD_H_
#define WISPEN_DEVICE_PTHREAD_H_

#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Opaque; the sizes are part of the phone's ABI. */
typedef struct {
  long signature;
  char opaque[56];
} pthread_mutex_t;
typedef struct {
  long signature;
  char opaque[8];
} pthread_mutexattr_t;
typedef struct {
  long signature;
  char opaque[40];
} pthread_cond_t;
typedef struct {
  long signature;
  char opaque[8];
} pthread_once_t;
typedef struct wispen_thread* pthread_t;
typedef struct wispen_thread_attributes pthread_attr_t;
typedef unsigned long pthread_key_t;

#define PTHREAD_MUTEX_INITIALIZER \
  {                               \
    0x32AAABA7, { 0 }             \
  }
#define PTHREAD_COND_INITIALIZER \
  {                              \
    0x3CB0B1BB, { 0 }            \
  }
#define PTHREAD_ONCE_INIT \
  {                       \
    0x30B1BCBA, { 0 }     \
  }
#define PTHREAD_MUTEX_RECURSIVE 2

int pthread_mutexattr_init(pthread_mutexattr_t* attributes);
int pthread_mutexattr_settype(pthread_mutexattr_t* attributes, int type);
int pthread_mutexattr_destroy(pthread_mutexattr_t* attributes);
int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
int pthread_mutex_destroy(pthread_mutex_t* mutex);
int pthread_mutex_lock(pthread_mutex_t* mutex);
int pthread_mutex_trylock(pthread_mutex_t* mutex);
int pthread_mutex_unlock(pthread_mutex_t* mutex);
int pthread_cond_signal(pthread_cond_t* condition);
int pthread_cond_broadcast(pthread_cond_t* condition);
int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex);
int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex, const struct timespec* until);
int pthread_cond_destroy(pthread_cond_t* condition);
int pthread_once(pthread_once_t* once, void (*function)(void));
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*function)(void*),
                   void* argument);
pthread_t pthread_self(void);
int pthread_equal(pthread_t a, pthread_t b);
int pthread_join(pthread_t thread, void** result);
int pthread_detach(pthread_t thread);
int pthread_key_create(pthread_key_t* key, void (*destroy)(void*));
void* pthread_getspecific(pthread_key_t key);
int pthread_setspecific(pthread_key_t key, const void* value);

#ifdef __cplusplus
}
#endif

#endif
