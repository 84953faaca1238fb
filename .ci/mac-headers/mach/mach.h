#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int integer_t;
typedef unsigned int natural_t;
typedef int kern_return_t;
typedef unsigned int boolean_t;
typedef natural_t mach_port_t;
typedef mach_port_t host_t;
typedef integer_t host_flavor_t;
typedef integer_t *host_info_t;
typedef integer_t *host_info64_t;
typedef natural_t mach_msg_type_number_t;
typedef unsigned long vm_size_t;

#define KERN_SUCCESS 0
#define HOST_CPU_LOAD_INFO 3
#define HOST_VM_INFO64 4
#define CPU_STATE_USER 0
#define CPU_STATE_SYSTEM 1
#define CPU_STATE_IDLE 2
#define CPU_STATE_NICE 3
#define CPU_STATE_MAX 4

struct host_cpu_load_info {
    natural_t cpu_ticks[CPU_STATE_MAX];
};
typedef struct host_cpu_load_info host_cpu_load_info_data_t;
#define HOST_CPU_LOAD_INFO_COUNT                                                                             \
    ((mach_msg_type_number_t)(sizeof(host_cpu_load_info_data_t) / sizeof(integer_t)))

struct vm_statistics64 {
    natural_t free_count;
    natural_t active_count;
    natural_t inactive_count;
    natural_t wire_count;
    uint64_t zero_fill_count;
    uint64_t reactivations;
    uint64_t pageins;
    uint64_t pageouts;
    uint64_t faults;
    uint64_t cow_faults;
    uint64_t lookups;
    uint64_t hits;
    uint64_t purges;
    natural_t purgeable_count;
    natural_t speculative_count;
    uint64_t decompressions;
    uint64_t compressions;
    uint64_t swapins;
    uint64_t swapouts;
    natural_t compressor_page_count;
    natural_t throttled_count;
    natural_t external_page_count;
    natural_t internal_page_count;
    uint64_t total_uncompressed_pages_in_compressor;
    uint64_t swapped_count;
} __attribute__((aligned(8)));
typedef struct vm_statistics64 vm_statistics64_data_t;
#define HOST_VM_INFO64_COUNT ((mach_msg_type_number_t)(sizeof(vm_statistics64_data_t) / sizeof(integer_t)))

extern vm_size_t vm_kernel_page_size;
mach_port_t mach_host_self(void);
kern_return_t host_statistics(host_t, host_flavor_t, host_info_t, mach_msg_type_number_t *);
kern_return_t host_statistics64(host_t, host_flavor_t, host_info64_t, mach_msg_type_number_t *);

#ifdef __cplusplus
}
#endif
