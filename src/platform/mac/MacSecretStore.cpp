#include "platform/mac/MacSecretStore.h"

#include "platform/Utf8.h"
#include "platform/mac/Keychain.h"

namespace swabby {

SecretReading MacSecretStore::read(const QString &account, Unlocking unlocking, const StopToken &stop)
{
    const auto time = unlocking == Unlocking::mayAsk ? m_patience.asking : m_patience.reading;
    const auto reading =
        m_question.ask(time, stop, m_stop, [name = account.toUtf8()] { return readKeychain(name); });
    if (!reading)
        return {.value = std::nullopt, .keeper = SecretReading::Keeper::silent};
    if (reading->status != keychainSuccess && reading->status != keychainHasNone)
        return {.value = std::nullopt, .keeper = SecretReading::Keeper::locked};
    if (!reading->data || !isUtf8(reading->data->toStdString()))
        return {};
    return {QString::fromUtf8(*reading->data)};
}

bool MacSecretStore::write(const QString &value, const QString &account)
{
    return m_question.ask(m_patience.writing, {}, m_stop, [name = account.toUtf8(), data = value.toUtf8()] {
        const bool isThere = readKeychain(name).data.has_value();
        return isThere ? updateKeychain(name, data) : addToKeychain(name, data);
    }) == keychainSuccess;
}

void MacSecretStore::remove(const QString &account)
{
    m_question.ask(m_patience.writing, {}, m_stop,
                   [name = account.toUtf8()] { return removeFromKeychain(name); });
}

} // namespace swabby
