#include "health/HistoryKeeper.h"

#include "health/HistoryStore.h"

#include <algorithm>

namespace swabby {

HistoryKeeper::HistoryKeeper(QString applicationData) : m_applicationData(std::move(applicationData))
{
    m_lock = FolderLock::tryLock(HistoryStore::ensureFolder(m_applicationData));
    m_hasLostTurn = !m_lock;
}

HistoryKeeper::~HistoryKeeper()
{
    {
        const std::scoped_lock guard(m_mutex);
        m_ends = true;
    }
    m_wake.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

void HistoryKeeper::keep(const History &points, double now)
{
    {
        const std::scoped_lock guard(m_mutex);
        m_waiting = Save{points, now};
    }
    if (!m_thread.joinable())
        m_thread = std::thread([this] { work(); });
    m_wake.notify_one();
}

void HistoryKeeper::work()
{
    std::unique_lock guard(m_mutex);
    for (;;) {
        m_wake.wait(guard, [this] { return m_waiting || m_ends; });
        if (!m_waiting)
            return;
        const Save save = *std::exchange(m_waiting, std::nullopt);
        guard.unlock();
        write(save);
        guard.lock();
    }
}

void HistoryKeeper::write(const Save &save)
{
    if (!holdsLock(save.now))
        return;
    History points;
    points.reserve(m_inherited.size() + save.points.size());
    std::merge(m_inherited.begin(), m_inherited.end(), save.points.begin(), save.points.end(),
               std::back_inserter(points), [](const auto &a, const auto &b) { return a.date < b.date; });
    HistoryStore::save(m_applicationData, points, save.now);
}

bool HistoryKeeper::holdsLock(double now)
{
    if (m_lock)
        return true;
    const QString folder = HistoryStore::ensureFolder(m_applicationData);
    const History stored = HistoryStore::load(folder, now);
    m_lock = FolderLock::tryLock(folder);
    if (m_lock && m_hasLostTurn)
        m_inherited = stored;
    return m_lock.has_value();
}

} // namespace swabby
