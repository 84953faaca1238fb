#include "platform/mac/SystemTrash.h"

#include "platform/mac/NativeText.h"

namespace swabby {

std::optional<std::filesystem::path> moveToSystemTrash(const std::filesystem::path &item)
{
    @autoreleasepool {
        NSURL *trashed = nil;
        if (![NSFileManager.defaultManager trashItemAtURL:fileAddress(item)
                                         resultingItemURL:&trashed
                                                    error:nil] ||
            trashed == nil)
            return std::nullopt;
        return std::filesystem::path(trashed.fileSystemRepresentation);
    }
}

} // namespace swabby
