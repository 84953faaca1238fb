#include "ui/qmltypes/IconStore.h"

#include "platform/BackgroundWork.h"
#include "platform/WhenDone.h"
#include "ui/presentation/IconPicture.h"

#include <QtGui/QIcon>
#include <QtQml/QQmlEngine>

#include <algorithm>

namespace swabby {
namespace {

constexpr qsizetype mostBytes = 1024 * 1024;
/// What it takes to remember that a program has no icon.
constexpr qsizetype leastCost = 512;

} // namespace

std::size_t qHash(const IconKey &key, std::size_t seed)
{
    const std::string &program = key.owner.program.native();
    return qHashMulti(seed, QByteArrayView(program.data(), static_cast<qsizetype>(program.size())),
                      key.owner.application, key.pixels);
}

IconStore::IconStore(QQmlEngine *engine, std::shared_ptr<Machine> machine, BackgroundWork &work)
    : QObject(engine), m_machine(std::move(machine)), m_work(work), m_known(mostBytes)
{
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
    m_requests.push_back({key, asker});
    lookNext();
    return std::nullopt;
}

void IconStore::lookNext()
{
    while (!m_isLooking && !m_requests.empty()) {
        const Request request = std::move(m_requests.front());
        m_requests.pop_front();
        if (!request.asker)
            continue;
        if (m_known.contains(request.key)) {
            Q_EMIT found(request.key);
            continue;
        }
        m_isLooking = true;
        const auto looking = m_work.ask([machine = m_machine, key = request.key, theme = QIcon::themeName()] {
            return iconPicture(machine->icons->picture(key.owner, {key.pixels, theme}), key.pixels);
        });
        whenDone(this, looking, [this, key = request.key](const QImage &icon) {
            m_isLooking = false;
            m_known.insert(key, new QImage(icon), std::max(leastCost, icon.sizeInBytes()));
            Q_EMIT found(key);
            lookNext();
        });
    }
}

} // namespace swabby
