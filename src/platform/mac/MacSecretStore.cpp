#include "platform/mac/MacSecretStore.h"

#include "platform/Utf8.h"
#include "platform/mac/Keychain.h"

#include <future>
#include <memory>
#include <thread>

namespace swabby {
namespace {

using namespace std::chrono_literals;

/// What the call gives within that time. No value when it has not come back by then, or before a stop; it is
/// then left alone, since nothing ends a question of the system's.
template <typename Call>
auto within(std::chrono::milliseconds time, const StopToken &stop, const StopToken &end, Call call)
    -> std::optional<decltype(call())>
{
    std::packaged_task<decltype(call())()> task(std::move(call));
    auto answer = task.get_future();
    std::thread(std::move(task)).detach();
    for (const auto giveUp = std::chrono::steady_clock::now() + time;
         !stop.stopRequested() && !end.stopRequested() && std::chrono::steady_clock::now() < giveUp;)
        if (answer.wait_for(20ms) == std::future_status::ready)
            return answer.get();
    return std::nullopt;
}

} // namespace

SecretReading MacSecretStore::read(const QString &account, Unlocking unlocking, const StopToken &stop)
{
    const auto time = unlocking == Unlocking::mayAsk ? m_patience.asking : m_patience.reading;
    const auto reading = within(time, stop, m_stop, [name = account.toUtf8()] { return readKeychain(name); });
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
    return within(m_patience.writing, {}, m_stop, [name = account.toUtf8(), data = value.toUtf8()] {
               const bool isThere = readKeychain(name).data.has_value();
               return isThere ? updateKeychain(name, data) : addToKeychain(name, data);
           }) == keychainSuccess;
}

void MacSecretStore::remove(const QString &account)
{
    within(m_patience.writing, {}, m_stop, [name = account.toUtf8()] { return removeFromKeychain(name); });
}

} // namespace swabby
