#include "platform/linux/LinuxSecretStore.h"

#include "platform/linux/BusCall.h"
#include "platform/linux/keyring/Keyring.h"
#include "platform/posix/LateLibrary.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace swabby {
namespace {

/// What a call shares with the thread that carries it out, which may outlive the call's patience.
template <typename Result>
struct Call {
    std::mutex mutex;
    std::condition_variable changed;
    std::optional<Result> result;
    std::unique_ptr<Keyring> keyring;
};

/// Threads whose service has not even reacted to being called off.
std::atomic<int> stuckThreads = 0;
constexpr int mostStuckThreads = 4;

/// Carries the work out on a thread of its own and gives what it gave, or otherwise when that takes longer.
template <typename Result>
Result waitBounded(std::function<Result(Keyring &)> work, Result otherwise, Steady::time_point end,
                   const StopToken &stop, const StopToken &callers = {})
{
    if (stuckThreads >= mostStuckThreads || stop.stopRequested())
        return otherwise;
    const auto makeKeyring = lateFunction<KeyringMaker>(keyringLibrary, keyringMaker);
    if (makeKeyring == nullptr)
        return otherwise;
    const auto call = std::make_shared<Call<Result>>();
    call->keyring.reset(makeKeyring());
    ++stuckThreads;
    std::thread([call, work = std::move(work)] {
        Result result = work(*call->keyring);
        --stuckThreads;
        const std::lock_guard lock(call->mutex);
        call->result = std::move(result);
        call->changed.notify_all();
    }).detach();

    const auto isDone = [&] { return call->result.has_value(); };
    constexpr std::chrono::milliseconds glance{50};
    constexpr std::chrono::milliseconds farewell{200};
    std::unique_lock lock(call->mutex);
    while (!isDone() && Steady::now() < end && !stop.stopRequested() && !callers.stopRequested())
        call->changed.wait_for(lock, glance, isDone);
    if (isDone())
        return *call->result;
    call->keyring->callOff();
    // What it asked the person goes from the screen before this program may end.
    call->changed.wait_for(lock, farewell, isDone);
    return otherwise;
}

/// Whether the bus answers the question about the service's name with yes. A service that could be started
/// for a call counts, one that nobody has installed does not.
bool hasSecretService(const std::string &address, Steady::time_point end, const StopToken &stop)
{
    constexpr auto service = "org.freedesktop.secrets";
    const Bus bus = connectBus(address, end, stop);
    if (!bus)
        return false;
    for (const char *const list : {"ListNames", "ListActivatableNames"}) {
        const BusMessage answer =
            busAnswer(bus.get(),
                      busQuestion(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", list, ServiceStart::never),
                      end);
        const char *name = nullptr;
        if (!answer || sd_bus_message_enter_container(answer.get(), 'a', "s") < 0)
            continue;
        while (sd_bus_message_read(answer.get(), "s", &name) > 0)
            if (std::string_view(name) == service)
                return true;
    }
    return false;
}

} // namespace

LinuxSecretStore::LinuxSecretStore(std::string sessionBus, Patience patience, StopToken stop)
    : m_sessionBus(std::move(sessionBus)), m_patience(patience), m_stop(std::move(stop))
{
}

SecretReading LinuxSecretStore::read(const QString &account, Unlocking unlocking, const StopToken &stop)
{
    const auto now = Steady::now();
    if (!hasSecretService(m_sessionBus, now + m_patience.reading, m_stop))
        return {};
    const bool mayAsk = unlocking == Unlocking::mayAsk;
    return waitBounded<SecretReading>(
        [account, unlocking](Keyring &keyring) { return keyring.read(account, unlocking); },
        {.value = std::nullopt, .keeper = SecretReading::Keeper::silent},
        now + (mayAsk ? m_patience.asking : m_patience.reading), m_stop, stop);
}

bool LinuxSecretStore::write(const QString &value, const QString &account)
{
    const auto end = Steady::now() + m_patience.writing;
    // A stored password ends at its first zero byte.
    if (value.contains(QChar::Null) || !hasSecretService(m_sessionBus, end, m_stop))
        return false;
    return waitBounded<bool>([value, account](Keyring &keyring) { return keyring.write(value, account); },
                             false, end, m_stop);
}

void LinuxSecretStore::remove(const QString &account)
{
    const auto end = Steady::now() + m_patience.writing;
    if (!hasSecretService(m_sessionBus, end, m_stop))
        return;
    waitBounded<bool>(
        [account](Keyring &keyring) {
            keyring.remove(account);
            return true;
        },
        false, end, m_stop);
}

} // namespace swabby
