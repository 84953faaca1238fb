#pragma once

#include_next <fcntl.h>

#define O_SYMLINK 0x00200000
#define O_EVTONLY 0x00008000
#define O_NOFOLLOW_ANY 0x20000000
#define O_EXEC 0x40000000
#define O_SEARCH (O_EXEC | O_DIRECTORY)
#define AT_SYMLINK_NOFOLLOW_ANY 0x0800
#define F_RDAHEAD 45
#define F_NOCACHE 48
#define F_GETPATH 50
#define F_FULLFSYNC 51
