"""Disks that are full, or about to be."""

import ctypes
import os

MEBIBYTE = 1 << 20
NEW_MOUNTS, NEW_USER = 0x00020000, 0x10000000
libc = ctypes.CDLL(None, use_errno=True)


def small_disk(folder):
    """Mounts a disk of 2 MB in memory there that only this process and its children see. False where that is
    forbidden."""
    user, group = os.geteuid(), os.getegid()
    if user != 0 or libc.unshare(NEW_MOUNTS) != 0:
        if libc.unshare(NEW_MOUNTS | NEW_USER) != 0:
            return False
        for name, text in (("setgroups", "deny"), ("uid_map", f"{user} {user} 1"), ("gid_map", f"{group} {group} 1")):
            with open(f"/proc/self/{name}", "w") as file:
                file.write(text)
    private, recursive = 1 << 18, 1 << 14
    libc.mount(None, b"/", None, private | recursive, None)
    return libc.mount(b"tmpfs", folder.encode(), b"tmpfs", 0, b"size=2m,nr_inodes=600") == 0


def remove_disk(folder):
    libc.umount2(folder.encode(), 0)


class Ballast:
    """Fills a disk but for so many pages of 4 KiB, or but for so many files."""

    def __init__(self, disk):
        self.folder = f"{disk}/ballast"

    def leave(self, pages=None, names=None):
        os.mkdir(self.folder)
        with open(f"{self.folder}/0", "wb") as file:
            left = os.statvfs(self.folder)
            if pages is not None:
                os.posix_fallocate(file.fileno(), 0, max(1, left.f_bavail - pages) * left.f_bsize)
        if names is not None:
            for number in range(1, left.f_favail - names + 1):
                os.close(os.open(f"{self.folder}/{number}", os.O_CREAT | os.O_WRONLY))

    def drop(self):
        for file in os.scandir(self.folder):
            os.unlink(file.path)
        os.rmdir(self.folder)
