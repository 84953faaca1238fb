#pragma once

#include_next <pthread.h>

typedef enum {
    QOS_CLASS_USER_INTERACTIVE = 0x21,
    QOS_CLASS_USER_INITIATED = 0x19,
    QOS_CLASS_DEFAULT = 0x15,
    QOS_CLASS_UTILITY = 0x11,
    QOS_CLASS_BACKGROUND = 0x09
} qos_class_t;

#ifdef __cplusplus
extern "C" {
#endif
int pthread_set_qos_class_self_np(qos_class_t, int);
int pthread_setname_np(const char *);
#ifdef __cplusplus
}
#endif
