// GLib's headers use names that Qt's would otherwise make keywords of.
#include <libsecret/secret.h>

#include "platform/SecretStore.h"
#include "platform/Utf8.h"
#include "platform/linux/keyring/Keyring.h"

#include <memory>

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

class SecretServiceKeyring final : public Keyring {
public:
    SecretReading read(const QString &account, Unlocking unlocking) override
    {
        const Service service = openService(m_cancellable.get());
        const int flags = SECRET_SEARCH_LOAD_SECRETS |
                          (unlocking == Unlocking::mayAsk ? SECRET_SEARCH_UNLOCK : SECRET_SEARCH_NONE);
        const auto item = service ? findItem(service.get(), account.toStdString(),
                                             static_cast<SecretSearchFlags>(flags), m_cancellable.get())
                                  : nullptr;
        if (item && secret_item_get_locked(item.get()))
            return {.value = std::nullopt, .keeper = SecretReading::Keeper::locked};
        const Secret value(item ? secret_item_get_secret(item.get()) : nullptr);
        if (!value)
            return {};
        gsize size = 0;
        const gchar *bytes = secret_value_get(value.get(), &size);
        return {isUtf8({bytes, size}) ? std::optional(textOf({bytes, size})) : std::nullopt};
    }

    bool write(const QString &text, const QString &account) override
    {
        const Service service = openService(m_cancellable.get());
        if (!service)
            return false;
        const std::string name = account.toStdString();
        const std::string bytes = text.toStdString();
        const Secret value(secret_value_new(bytes.data(), static_cast<gssize>(bytes.size()), "text/plain"));
        if (const auto item = findItem(service.get(), name, SECRET_SEARCH_UNLOCK, m_cancellable.get()))
            return secret_item_set_secret_sync(item.get(), value.get(), m_cancellable.get(), nullptr) != 0;
        return secret_service_store_sync(service.get(), schema(), attributesFor(name).get(),
                                         SECRET_COLLECTION_DEFAULT, "Swabby: key of the AI assistant",
                                         value.get(), m_cancellable.get(), nullptr) != 0;
    }

    void remove(const QString &account) override
    {
        if (const Service service = openService(m_cancellable.get()))
            secret_service_clear_sync(service.get(), schema(), attributesFor(account.toStdString()).get(),
                                      m_cancellable.get(), nullptr);
    }

    void callOff() override { g_cancellable_cancel(m_cancellable.get()); }

private:
    const Object<GCancellable> m_cancellable{g_cancellable_new()};
};

} // namespace
} // namespace swabby

extern "C" Q_DECL_EXPORT swabby::Keyring *swabbyMakeKeyring()
{
    return new swabby::SecretServiceKeyring;
}
