#pragma once

#include_next <stdio.h>

#define RENAME_SWAP 0x00000002
#define RENAME_EXCL 0x00000004

#ifdef __cplusplus
extern "C" {
#endif
int renameatx_np(int, const char *, int, const char *, unsigned int);
int asprintf(char **, const char *, ...);
int vasprintf(char **, const char *, __isoc_va_list);
#ifdef __cplusplus
}
#endif
