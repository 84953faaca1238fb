// GLib's headers use names that Qt's would otherwise make keywords of.
#include <libsecret/secret.h>

#include "platform/linux/LinuxSecretStore.h"

#include "platform/Utf8.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace swabby {
namespace {

const SecretSchema *schema()
{
    // No schema name: another program that filed the key under the same two attributes is found as well.
    static const SecretSchema keys = {"com.swabby.app.secrets",
                                      SECRET_SCHEMA_DONT_MATCH_NAME,
                                      {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                       {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                       {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                      0,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      nullptr};
    return &keys;
}

struct Unreference {
    void operator()(GHashTable *table) const { g_hash_table_unref(table); }
    void operator()(SecretValue *value) const { secret_value_unref(value); }
    void operator()(gpointer object) const { g_object_unref(object); }
};

using Attributes = std::unique_ptr<GHashTable, Unreference>;
using Secret = std::unique_ptr<SecretValue, Unreference>;
template <typename Type>
using Object = std::unique_ptr<Type, Unreference>;

Attributes attributesFor(const std::string &account)
{
    return Attributes(
        secret_attributes_build(schema(), "service", secretService, "account", account.c_str(), nullptr));
}

using Service = Object<SecretService>;

/// A conversation of its own: the one that the library keeps for the whole process goes on with a service
/// that has ended since. Null when there is no service.
Service openService(GCancellable *cancellable)
{
    return Service(secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION,
                                            cancellable, nullptr));
}

/// The account's item; null when there is none or the service does not say.
Object<SecretItem> findItem(SecretService *service, const std::string &account, SecretSearchFlags flags,
                            GCancellable *cancellable)
{
    GList *items = secret_service_search_sync(service, schema(), attributesFor(account).get(), flags,
                                              cancellable, nullptr);
    Object<SecretItem> item(items ? SECRET_ITEM(g_object_ref(items->data)) : nullptr);
    g_list_free_full(items, g_object_unref);
    return item;
}

std::optional<QString> readNow(const std::string &account, GCancellable *cancellable)
{
    const Service service = openService(cancellable);
    const auto item =
        service ? findItem(service.get(), account, SECRET_SEARCH_LOAD_SECRETS, cancellable) : nullptr;
    const Secret value(item && !secret_item_get_locked(item.get()) ? secret_item_get_secret(item.get())
                                                                   : nullptr);
    if (!value)
        return std::nullopt;
    gsize size = 0;
    const gchar *bytes = secret_value_get(value.get(), &size);
    return isUtf8({bytes, size}) ? std::optional(textOf({bytes, size})) : std::nullopt;
}

bool writeNow(const std::string &secret, const std::string &account, GCancellable *cancellable)
{
    const Service service = openService(cancellable);
    if (!service)
        return false;
    const Secret value(secret_value_new(secret.data(), static_cast<gssize>(secret.size()), "text/plain"));
    if (const auto item = findItem(service.get(), account, SECRET_SEARCH_UNLOCK, cancellable))
        return secret_item_set_secret_sync(item.get(), value.get(), cancellable, nullptr) != 0;
    return secret_service_store_sync(service.get(), schema(), attributesFor(account).get(),
                                     SECRET_COLLECTION_DEFAULT, "Swabby: key of the AI assistant",
                                     value.get(), cancellable, nullptr) != 0;
}

void removeNow(const std::string &account, GCancellable *cancellable)
{
    if (const Service service = openService(cancellable))
        secret_service_clear_sync(service.get(), schema(), attributesFor(account).get(), cancellable,
                                  nullptr);
}

/// What a call shares with the thread that carries it out, which may outlive the call's patience.
template <typename Result>
struct Call {
    std::mutex mutex;
    std::condition_variable changed;
    std::optional<Result> result;
    Object<GCancellable> cancellable{g_cancellable_new()};
};

/// Threads whose service has not even reacted to being called off.
std::atomic<int> stuckThreads = 0;
constexpr int mostStuckThreads = 4;

/// Carries the work out on a thread of its own and gives what it gave, or otherwise when that takes longer.
template <typename Result>
Result waitBounded(std::function<Result(GCancellable *)> work, Result otherwise,
                   std::chrono::milliseconds patience, const StopToken &stop)
{
    if (stuckThreads >= mostStuckThreads || stop.stopRequested())
        return otherwise;
    const auto call = std::make_shared<Call<Result>>();
    ++stuckThreads;
    std::thread([call, work = std::move(work)] {
        Result result = work(call->cancellable.get());
        --stuckThreads;
        const std::lock_guard lock(call->mutex);
        call->result = std::move(result);
        call->changed.notify_all();
    }).detach();

    const auto isDone = [&] { return call->result.has_value(); };
    constexpr std::chrono::milliseconds glance{50};
    std::unique_lock lock(call->mutex);
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!isDone() && std::chrono::steady_clock::now() < end && !stop.stopRequested())
        call->changed.wait_for(lock, glance, isDone);
    if (!isDone())
        g_cancellable_cancel(call->cancellable.get());
    return isDone() ? *call->result : otherwise;
}

} // namespace

LinuxSecretStore::LinuxSecretStore(Patience patience, StopToken stop)
    : m_patience(patience), m_stop(std::move(stop))
{
}

std::optional<QString> LinuxSecretStore::read(const QString &account)
{
    return waitBounded<std::optional<QString>>(
        [name = account.toStdString()](GCancellable *cancellable) { return readNow(name, cancellable); },
        std::nullopt, m_patience.reading, m_stop);
}

bool LinuxSecretStore::write(const QString &value, const QString &account)
{
    // A stored password ends at its first zero byte.
    if (value.contains(QChar::Null))
        return false;
    return waitBounded<bool>([secret = value.toStdString(), name = account.toStdString()](
                                 GCancellable *cancellable) { return writeNow(secret, name, cancellable); },
                             false, m_patience.writing, m_stop);
}

void LinuxSecretStore::remove(const QString &account)
{
    waitBounded<bool>(
        [name = account.toStdString()](GCancellable *cancellable) {
            removeNow(name, cancellable);
            return true;
        },
        false, m_patience.writing, m_stop);
}

} // namespace swabby
