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
/// What an icon may take of the processor: most take a millisecond or two. Who needs more has its turn again
/// after all others, with more.
constexpr std::chrono::milliseconds firstTime = 20ms;
constexpr std::chrono::milliseconds mostTime = 1s;
constexpr int growth = 4;
/// The painter takes some megabytes, and a page that is opened next asks for more.
constexpr auto timeUntilRest = 5s;

} // namespace

std::size_t qHash(const IconKey &key, std::size_t seed)
{
    const std::string &program = key.owner.program.native();
    return qHashMulti(seed, QByteArrayView(program.data(), static_cast<qsizetype>(program.size())),
                      key.owner.application, key.owner.icon, key.pixels);
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
    // From here, since the threads that draw give way to others. Later on most new programs have no icon.
    if (!isBusy() && m_known.isEmpty())
        m_painter->begin();
    QList<QPointer<QObject>> &askers = m_askers[key];
    askers.append(asker);
    if (askers.size() == 1)
        m_waiting.push_back({key, firstTime});
    lookNext();
    return std::nullopt;
}

std::optional<IconStore::Turn> IconStore::next(std::deque<Turn> &turns)
{
    while (!turns.empty()) {
        const Turn turn = std::move(turns.front());
        turns.pop_front();
        const auto asked = m_askers.constFind(turn.key);
        if (std::any_of(asked->begin(), asked->end(), [](const auto &asker) { return !asker.isNull(); }))
            return turn;
        m_askers.erase(asked);
    }
    return std::nullopt;
}

void IconStore::lookNext()
{
    while (m_running < mostAtOnce)
        if (const auto turn = next(m_waiting))
            look(*turn);
        else
            break;
    if (m_waiting.empty() && m_running == 0 && !m_isRunningLong)
        if (const auto turn = next(m_postponed))
            look(*turn);
    if (!isBusy())
        m_resting.start();
}

void IconStore::look(const Turn &turn)
{
    if (turn.time > firstTime)
        m_isRunningLong = true;
    else
        ++m_running;
    m_resting.stop();
    const auto looking =
        m_work.ask([machine = m_machine, painter = m_painter, turn, theme = QIcon::themeName()] {
            const auto &[key, time] = turn;
            return painter->draw(machine->icons->picture(key.owner, {key.pixels, theme}), key.pixels, time);
        });
    whenDone(this, looking, [this, turn](const std::optional<QImage> &icon) { take(turn, icon); });
}

void IconStore::take(const Turn &turn, const std::optional<QImage> &icon)
{
    const auto &[key, time] = turn;
    if (time > firstTime)
        m_isRunningLong = false;
    else
        --m_running;
    if (!icon && time < mostTime) {
        m_postponed.push_back({key, std::min(growth * time, mostTime)});
    } else {
        const QImage picture = icon.value_or(QImage());
        m_askers.remove(key);
        m_known.insert(key, new QImage(picture), std::max(leastCost, picture.sizeInBytes()));
        Q_EMIT found(key);
    }
    lookNext();
}

} // namespace swabby
