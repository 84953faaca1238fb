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

QString KeyView::sentence() const
{
    switch (m_standing) {
    case Standing::unknown:
        return m_isBusy ? QStringLiteral("Looking for your key…") : QString();
    case Standing::none:
        return QStringLiteral("No key of yours is stored.");
    case Standing::stored:
        return QStringLiteral("Your key is stored with your passwords.");
    case Standing::notKept:
        return QStringLiteral("The key could not be kept, so it was stored nowhere.");
    case Standing::notRemoved:
        return QStringLiteral("The key could not be removed. It is still stored.");
    }
    return {};
}

void KeyView::look()
{
    begin([](SecretStore &store) { return hasKey(store) ? Standing::stored : Standing::none; });
}

void KeyView::save(const QString &key)
{
    const QString trimmed = key.trimmed();
    if (!trimmed.isEmpty())
        begin([trimmed](SecretStore &store) {
            return KeychainStore::write(store, trimmed, account()) ? Standing::stored : Standing::notKept;
        });
}

void KeyView::remove()
{
    begin([](SecretStore &store) {
        KeychainStore::erase(store, account());
        return hasKey(store) ? Standing::notRemoved : Standing::none;
    });
}

void KeyView::begin(std::function<Standing(SecretStore &)> task)
{
    if (m_isBusy || m_machine == nullptr)
        return;
    m_isBusy = true;
    Q_EMIT changed();
    const auto asking =
        m_work.ask([machine = m_machine, task = std::move(task)] { return task(*machine->secrets); });
    whenDone(this, asking, [this](Standing standing) {
        m_standing = standing;
        m_isBusy = false;
        Q_EMIT changed();
    });
}

} // namespace swabby
