#include "ui/qmltypes/KeyView.h"

#include "ai/KeychainStore.h"
#include "platform/WhenDone.h"

namespace swabby {
namespace {

QString account()
{
    return QLatin1String(KeychainStore::apiKeyAccount);
}

bool hasKey(SecretStore &store)
{
    return !KeychainStore::read(store, account()).value_or(QString()).isEmpty();
}

} // namespace

KeyView::KeyView(std::shared_ptr<Machine> machine, BackgroundWork &work, QObject *parent)
    : QObject(parent), m_machine(std::move(machine)), m_work(work)
{
}

void KeyView::look()
{
    begin([](SecretStore &store) { return hasKey(store) ? KeyStanding::stored : KeyStanding::none; });
}

void KeyView::save(const QString &key)
{
    const QString trimmed = key.trimmed();
    if (!trimmed.isEmpty())
        begin([trimmed](SecretStore &store) {
            return KeychainStore::write(store, trimmed, account()) ? KeyStanding::stored
                                                                   : KeyStanding::notKept;
        });
}

void KeyView::remove()
{
    begin([](SecretStore &store) {
        KeychainStore::erase(store, account());
        return hasKey(store) ? KeyStanding::notRemoved : KeyStanding::none;
    });
}

void KeyView::begin(std::function<KeyStanding(SecretStore &)> task)
{
    if (m_isBusy)
        return;
    m_isBusy = true;
    Q_EMIT changed();
    const auto asking =
        m_work.ask([machine = m_machine, task = std::move(task)] { return task(*machine->secrets); });
    whenDone(this, asking, [this](KeyStanding standing) {
        m_standing = standing;
        m_isBusy = false;
        Q_EMIT changed();
    });
}

} // namespace swabby
