#include "health/HistoryKeeper.h"

#include "health/HistoryStore.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace swabby {

HistoryKeeper::HistoryKeeper(QString applicationData, Trouble trouble)
    : m_applicationData(std::move(applicationData)), m_trouble(std::move(trouble)), m_writing(1)
{
    takeTurn();
}

void HistoryKeeper::keep(const History &points, double now)
{
    {
        const std::scoped_lock guard(m_mutex);
        m_waiting = Save{points, now};
    }
    m_writing.queue([this] {
        std::unique_lock guard(m_mutex);
        const auto newest = std::exchange(m_waiting, std::nullopt);
        guard.unlock();
        if (!newest)
            return;
        const QString why = write(*newest);
        if (m_trouble && why != m_lastTrouble)
            m_trouble(why);
        m_lastTrouble = why;
    });
}

QString HistoryKeeper::finish()
{
    m_writing.wait();
    return m_lastTrouble;
}

QString HistoryKeeper::write(const Save &save)
{
    if (!m_lock) {
        // Another program's turn is no trouble; a folder that cannot be had is.
        if (!takeTurn()) {
            const QFileInfo folder(m_applicationData);
            return folder.isDir() && folder.isReadable()
                       ? QString()
                       : HistoryStore::save(m_applicationData, save.points, save.now);
        }
        m_inherited = HistoryStore::load(m_applicationData, save.now);
    }
    History points;
    points.reserve(m_inherited.size() + save.points.size());
    // Both sides begin with what the file held when they started.
    std::set_union(m_inherited.begin(), m_inherited.end(), save.points.begin(), save.points.end(),
                   std::back_inserter(points), [](const auto &a, const auto &b) { return a.date < b.date; });
    return HistoryStore::save(m_applicationData, points, save.now);
}

bool HistoryKeeper::takeTurn()
{
    const QString folder = HistoryStore::ensureFolder(m_applicationData);
    m_lock = FolderLock::tryLock(folder);
    if (m_lock)
        HistoryStore::sweep(folder);
    return m_lock.has_value();
}

} // namespace swabby
