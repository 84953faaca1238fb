#include "cleanup/PutBackRecord.h"

#include "cleanup/PutBackLine.h"
#include "platform/Utf8.h"
#include "platform/posix/LockedFile.h"
#include "platform/posix/OwnFolder.h"
#include "platform/posix/SmallFile.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <unistd.h>

namespace swabby {
namespace {

using Path = std::filesystem::path;

/// Whether it lies in the Trash, as far as can be seen: on a disk that is not there now it may.
bool counts(const TrashedItem &item)
{
    const auto found = FileIdentity::of(item.trashed);
    if (!found)
        return errno != ENOENT || !FileIdentity::of(item.trashed.parent_path());
    return found->inode == item.identity.inode && found->kind == item.identity.kind;
}

} // namespace

PutBackRecord::PutBackRecord(const QString &applicationData)
    : m_filePath(applicationData.isEmpty()
                     ? Path()
                     : Path(QFile::encodeName(applicationData).toStdString()) / "put-back.json")
{
}

PutBackRecord::~PutBackRecord()
{
    // A killed program needs no more than the written line; once at the end is for a loss of power.
    if (m_adding.isOpen())
        keepContentOnDisk(m_adding.number());
}

std::vector<TrashedItem> PutBackRecord::linesThatCount(std::size_t most) const
{
    constexpr std::int64_t largest = 256LL << 20;
    std::vector<TrashedItem> items;
    const auto found = FileIdentity::of(m_filePath);
    const QByteArray text =
        found && found->kind == FileKind::file ? smallFile(m_filePath, largest) : QByteArray();
    for (qsizetype begin = 0; begin < text.size() && items.size() < most;) {
        const qsizetype end = text.indexOf('\n', begin) < 0 ? text.size() : text.indexOf('\n', begin);
        if (auto item = itemOfPutBackLine(text.mid(begin, end - begin)); item && counts(*item))
            items.push_back(*std::move(item));
        begin = end + 1;
    }
    return items;
}

std::vector<TrashedItem> PutBackRecord::load() const
{
    return linesThatCount(std::numeric_limits<std::size_t>::max());
}

bool PutBackRecord::isEmpty() const
{
    return linesThatCount(1).empty();
}

void PutBackRecord::begin()
{
    if (const Descriptor alone = lockedFile(m_filePath, Turn::alone); alone.isOpen())
        keep({});
}

bool PutBackRecord::add(const TrashedItem &item)
{
    if (!m_adding.isOpen()) {
        makeOwnFolder(textOf(m_filePath.parent_path().native()));
        m_adding = lockedFile(m_filePath, Turn::shared);
    }
    // A disk that was full may have torn the last line.
    const auto size = ::lseek(m_adding.number(), 0, SEEK_END);
    char last = '\n';
    if (size > 0 && ::pread(m_adding.number(), &last, 1, size - 1) != 1)
        return false;
    const QByteArray line = (last == '\n' ? "" : "\n") + putBackLine(item);
    return ::write(m_adding.number(), line.constData(), static_cast<std::size_t>(line.size())) == line.size();
}

void PutBackRecord::keep(const std::vector<TrashedItem> &items) const
{
    QByteArray lines;
    for (const TrashedItem &item : items)
        lines += putBackLine(item);
    // What cannot be saved now still tells the truth: a line counts no longer than its thing is there.
    if (items.empty())
        ::unlink(m_filePath.c_str());
    else
        saveWholeFile(QFile::decodeName(m_filePath.c_str()), lines, FileAudience::owner);
}

PutBackResult PutBackRecord::putBackAll(Disposal &disposal) const
{
    // A folder that was moved after something in it has to be there again before that.
    const std::vector<TrashedItem> items = load();
    const auto restored = std::count_if(items.rbegin(), items.rend(),
                                        [&](const TrashedItem &item) { return disposal.putBack(item); });
    // While a removal adds to it the record stays as it is, and what is back counts no longer.
    if (const Descriptor alone = lockedFile(m_filePath, Turn::alone); alone.isOpen())
        keep(load());
    return {.restored = static_cast<int>(restored),
            .left = static_cast<int>(std::count_if(items.begin(), items.end(), counts))};
}

} // namespace swabby
