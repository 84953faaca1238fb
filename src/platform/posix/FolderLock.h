#pragma once

#include "platform/posix/Descriptor.h"

#include <QtCore/QString>

#include <optional>

namespace swabby {

/// A lock between programs on a folder itself, so that no lock file is left lying about. It ends with the
/// object or with the program, however that ends.
class FolderLock {
public:
    /// Waits until the folder is free. No value when the folder is not there or cannot be opened.
    static std::optional<FolderLock> lock(const QString &folder);
    /// No value, at once, when another program holds it.
    static std::optional<FolderLock> tryLock(const QString &folder);

private:
    explicit FolderLock(Descriptor folder) : m_folder(std::move(folder)) {}
    static std::optional<FolderLock> take(const QString &folder, int operation);

    Descriptor m_folder;
};

/// Deletes what killed saves of that file have left beside it ("NAME." and six letters). Hold the folder's
/// lock: another program's save in progress looks the same.
void sweepStrays(const QString &filePath);

} // namespace swabby
