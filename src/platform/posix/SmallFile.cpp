#include "platform/posix/SmallFile.h"

#include "platform/posix/RegularFile.h"

namespace swabby {

QByteArray smallFile(const std::filesystem::path &path, std::int64_t largest)
{
    std::error_code problem;
    const std::filesystem::path real = std::filesystem::canonical(path, problem);
    const auto file = problem ? std::nullopt : RegularFile::open(real);
    const std::int64_t size = file ? file->identity().size : 0;
    if (size <= 0 || size > largest)
        return {};
    QByteArray content(static_cast<qsizetype>(size), Qt::Uninitialized);
    return file->readAt(0, content.data(), static_cast<std::size_t>(size)) ? content : QByteArray();
}

} // namespace swabby
