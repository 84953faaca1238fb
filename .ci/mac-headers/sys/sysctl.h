#pragma once

#include <mach/mach.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct xsw_usage {
    uint64_t xsu_total;
    uint64_t xsu_avail;
    uint64_t xsu_used;
    uint32_t xsu_pagesize;
    boolean_t xsu_encrypted;
};
int sysctlbyname(const char *name, void *value, size_t *size, void *newValue, size_t newSize);

#ifdef __cplusplus
}
#endif
