#include "ui/qmltypes/KeyView.h"

#include "ai/CloudAI.h"
#include "ai/KeychainStore.h"
#include "flows/ai/AssistantNotes.h"
#include "platform/WhenDone.h"
#include "state/AppState.h"

namespace swabby {
namespace {

QString account()
{
    return QLatin1String(KeychainStore::apiKeyAccount);
}

/// Otherwise: what it means that there is one.
KeyStanding standingIn(SecretStore &store, KeyStanding otherwise)
{
    const SecretReading key = KeychainStore::read(store, account());
    if (key.keeper != SecretReading::Keeper::open)
        return KeyStanding::locked;
    return key.value.value_or(QString()).isEmpty() ? KeyStanding::none : otherwise;
}

} // namespace

KeyView::KeyView(const UserInterfaceContext &context, QObject *parent) : QObject(parent), m_context(context)
{
}

void KeyView::look()
{
    begin([](SecretStore &store) { return standingIn(store, KeyStanding::stored); });
}

void KeyView::save(const QString &key)
{
    const QString trimmed = key.trimmed();
    if (!trimmed.isEmpty())
        begin(
            [trimmed](SecretStore &store) {
                return KeychainStore::write(store, trimmed, account()) ? KeyStanding::stored
                                                                       : KeyStanding::notKept;
            },
            &KeyView::tryOut);
}

void KeyView::remove()
{
    begin([](SecretStore &store) {
        KeychainStore::erase(store, account());
        return standingIn(store, KeyStanding::notRemoved);
    });
}

void KeyView::begin(std::function<KeyStanding(SecretStore &)> task, void (KeyView::*then)(KeyStanding))
{
    if (m_isBusy)
        return;
    m_isBusy = true;
    Q_EMIT changed();
    const auto asking =
        m_context.systemCalls.ask([machine = m_context.state.sharedMachine(), task = std::move(task)] {
            return task(*machine->secrets);
        });
    whenDone(this, asking, [this, then](KeyStanding standing) { (this->*then)(standing); });
}

void KeyView::settle(KeyStanding standing)
{
    m_standing = standing;
    m_isBusy = false;
    Q_EMIT changed();
}

void KeyView::tryOut(KeyStanding standing)
{
    if (standing != KeyStanding::stored) {
        settle(standing);
        return;
    }
    m_standing = standing;
    Q_EMIT changed();
    tryKey();
}

QCoro::Task<> KeyView::tryKey()
{
    const StopToken stop = m_trial.begin().stop;
    const auto failure = co_await m_context.ai.tryOut();
    if (stop.stopRequested())
        co_return;
    m_reason = AssistantNotes::reason(failure);
    settle(failure ? KeyStanding::worksNot : KeyStanding::works);
}

} // namespace swabby
