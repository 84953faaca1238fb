#pragma once

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

    FolderLock(FolderLock &&other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FolderLock &operator=(FolderLock &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FolderLock();

private:
    explicit FolderLock(int descriptor) : m_descriptor(descriptor) {}
    static std::optional<FolderLock> take(const QString &folder, int operation);

    int m_descriptor = -1;
};

/// Deletes what killed saves of that file have left beside it ("NAME." and six letters). Hold the folder's
/// lock: another program's save in progress looks the same.
void sweepStrays(const QString &filePath);

} // namespace swabby
