#include "ui/qmltypes/IconStore.h"

#include "platform/BackgroundWork.h"
#include "platform/WhenDone.h"
#include "ui/presentation/IconPainter.h"

#include <QtGui/QIcon>
#include <QtQml/QQmlEngine>

#include <algorithm>
#include <chrono>

namespace swabby {
namespace {

using namespace std::chrono_literals;

constexpr qsizetype mostBytes = 1024 * 1024;
/// What it takes to remember that a program has no icon.
constexpr qsizetype leastCost = 512;
/// Besides the one that takes long; the other work of the windows has threads left.
constexpr int mostAtOnce = 2;
/// What an icon may take of the processor: most take a millisecond or two.
constexpr auto littleTime = 50ms;
constexpr auto muchTime = 1s;
/// The painter takes some megabytes, and a page that is opened next asks for more.
constexpr auto timeUntilRest = 5s;

} // namespace

std::size_t qHash(const IconKey &key, std::size_t seed)
{
    const std::string &program = key.owner.program.native();
    return qHashMulti(seed, QByteArrayView(program.data(), static_cast<qsizetype>(program.size())),
                      key.owner.application, key.pixels);
}

IconStore::IconStore(QQmlEngine *engine, std::shared_ptr<Machine> machine, BackgroundWork &work)
    : QObject(engine),
      m_machine(std::move(machine)),
      m_work(work),
      m_painter(std::make_shared<IconPainter>()),
      m_known(mostBytes)
{
    m_resting.setSingleShot(true);
    m_resting.setInterval(timeUntilRest);
    connect(&m_resting, &QTimer::timeout, this, &IconStore::letRest);
}

IconStore::~IconStore()
{
    letRest();
}

void IconStore::letRest()
{
    m_work.queue([painter = m_painter] { painter->rest(); });
}

IconStore *IconStore::of(const QQmlEngine *engine)
{
    return engine != nullptr ? engine->findChild<IconStore *>(QString(), Qt::FindDirectChildrenOnly)
                             : nullptr;
}

std::optional<QImage> IconStore::icon(const IconKey &key, QObject *asker)
{
    if (key.owner.program.empty() && key.owner.application.isEmpty())
        return QImage();
    if (const QImage *known = m_known.object(key))
        return *known;
    QList<QPointer<QObject>> &askers = m_askers[key];
    askers.append(asker);
    if (askers.size() == 1)
        m_waiting.push_back(key);
    lookNext();
    return std::nullopt;
}

std::optional<IconKey> IconStore::next(std::deque<IconKey> &keys)
{
    while (!keys.empty()) {
        const IconKey key = std::move(keys.front());
        keys.pop_front();
        const auto asked = m_askers.constFind(key);
        if (std::any_of(asked->begin(), asked->end(), [](const auto &asker) { return !asker.isNull(); }))
            return key;
        m_askers.erase(asked);
    }
    return std::nullopt;
}

void IconStore::lookNext()
{
    while (m_running < mostAtOnce)
        if (const auto key = next(m_waiting))
            look(*key, Patience::little);
        else
            break;
    if (m_waiting.empty() && m_running == 0 && !m_isRunningLong)
        if (const auto key = next(m_postponed))
            look(*key, Patience::much);
    if (!isBusy())
        m_resting.start();
}

void IconStore::look(const IconKey &key, Patience patience)
{
    const bool isLong = patience == Patience::much;
    if (isLong)
        m_isRunningLong = true;
    else
        ++m_running;
    m_resting.stop();
    const auto looking = m_work.ask([machine = m_machine, painter = m_painter, key,
                                     theme = QIcon::themeName(), time = isLong ? muchTime : littleTime] {
        return painter->draw(machine->icons->picture(key.owner, {key.pixels, theme}), key.pixels, time);
    });
    whenDone(this, looking,
             [this, key, patience](const std::optional<QImage> &icon) { take(key, icon, patience); });
}

void IconStore::take(const IconKey &key, const std::optional<QImage> &icon, Patience patience)
{
    if (patience == Patience::much)
        m_isRunningLong = false;
    else
        --m_running;
    if (!icon && patience == Patience::little) {
        m_postponed.push_back(key);
    } else {
        const QImage picture = icon.value_or(QImage());
        m_askers.remove(key);
        m_known.insert(key, new QImage(picture), std::max(leastCost, picture.sizeInBytes()));
        Q_EMIT found(key);
    }
    lookNext();
}

} // namespace swabby
