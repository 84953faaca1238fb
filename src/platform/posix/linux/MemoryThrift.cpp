#include "platform/posix/MemoryThrift.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include <link.h>

namespace swabby {
namespace {

bool isWrittenWhenLoaded(const dl_phdr_info &object)
{
    for (int part = 0; part < object.dlpi_phnum; ++part) {
        const ElfW(Phdr) &header = object.dlpi_phdr[part];
        if (header.p_type != PT_DYNAMIC)
            continue;
        const auto *entry = reinterpret_cast<const ElfW(Dyn) *>(object.dlpi_addr + header.p_vaddr);
        for (; entry->d_tag != DT_NULL; ++entry)
            if (entry->d_tag == DT_TEXTREL ||
                (entry->d_tag == DT_FLAGS && (entry->d_un.d_val & DF_TEXTREL) != 0))
                return true;
    }
    return false;
}

// Whatever nobody writes to is the same in the file, from where the pages in use come back at a touch.
int letGo(dl_phdr_info *object, std::size_t /*size*/, void * /*data*/)
{
    static const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    if (isWrittenWhenLoaded(*object))
        return 0;
    for (int part = 0; part < object->dlpi_phnum; ++part) {
        const ElfW(Phdr) &header = object->dlpi_phdr[part];
        if (header.p_type != PT_LOAD || (header.p_flags & PF_W) != 0)
            continue;
        const std::uintptr_t begin = object->dlpi_addr + header.p_vaddr;
        const std::uintptr_t first = (begin + page - 1) / page * page;
        const std::uintptr_t end = (begin + header.p_filesz) / page * page;
        if (end > first)
            ::madvise(reinterpret_cast<void *>(first), end - first, MADV_DONTNEED);
    }
    return 0;
}

} // namespace

void giveMemoryBack()
{
    malloc_trim(0);
    ::dl_iterate_phdr(&letGo, nullptr);
}

} // namespace swabby
