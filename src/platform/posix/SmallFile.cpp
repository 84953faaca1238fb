#include "platform/posix/SmallFile.h"

#include "platform/posix/RegularFile.h"

#include <cerrno>

namespace swabby {
namespace {

SmallFile refused(const QString &problem)
{
    return {.content = {}, .isThere = true, .problem = problem};
}

SmallFile refused(const std::error_code &problem)
{
    return refused(QString::fromStdString(problem.message()));
}

/// Whether the lowest part of the way that is there is a link to nothing, such as to a disk that is not
/// mounted: what lies beyond it cannot be told.
bool endsAtDeadLink(std::filesystem::path path)
{
    while (!FileIdentity::of(path)) {
        if (!path.has_relative_path())
            return false;
        path = path.parent_path();
    }
    std::error_code ignored;
    return !std::filesystem::exists(path, ignored);
}

} // namespace

SmallFile readSmallFile(const std::filesystem::path &path, std::int64_t largest)
{
    std::error_code problem;
    const std::filesystem::path real = std::filesystem::canonical(path, problem);
    const bool isMissing =
        problem == std::errc::no_such_file_or_directory || problem == std::errc::not_a_directory;
    if (isMissing && !endsAtDeadLink(path))
        return {};
    if (problem)
        return refused(problem);
    const auto found = FileIdentity::of(real);
    if (found && found->kind != FileKind::file)
        return refused(QStringLiteral("it is no regular file"));
    const auto file = RegularFile::open(real);
    if (!file)
        return refused(std::error_code(errno, std::generic_category()));
    const std::int64_t size = file->identity().size;
    if (size > largest)
        return refused(QStringLiteral("it is larger than %1 bytes").arg(largest));
    SmallFile read = {QByteArray(static_cast<qsizetype>(size), Qt::Uninitialized), true, {}};
    if (!file->readAt(0, read.content.data(), static_cast<std::size_t>(size)))
        return refused(QStringLiteral("it cannot be read to its end"));
    return read;
}

QByteArray smallFile(const std::filesystem::path &path, std::int64_t largest)
{
    return readSmallFile(path, largest).content;
}

} // namespace swabby
