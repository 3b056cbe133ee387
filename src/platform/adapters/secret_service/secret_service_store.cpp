#include "platform/adapters/secret_service/secret_service_store.h"

#include <libsecret/secret.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "base/text.h"

namespace tessary {
namespace {

using Kind = SecretFailure::Kind;
template <class T>
using Result = SecretStore::Result<T>;

constexpr int kMostTries = 20;

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
    void operator()(SecretValue* value) const { secret_value_unref(value); }
    void operator()(GHashTable* table) const { g_hash_table_unref(table); }
    void operator()(GList* list) const { g_list_free(list); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(char* text) const { g_free(text); }
};
template <class T>
using Ref = std::unique_ptr<T, Unref>;

/// Receives the error of one call.
class ErrorSlot {
public:
    ErrorSlot() = default;
    ErrorSlot(const ErrorSlot&) = delete;
    ErrorSlot& operator=(const ErrorSlot&) = delete;
    ~ErrorSlot() { g_clear_error(&error_); }

    [[nodiscard]] GError** out() { return &error_; }
    [[nodiscard]] const GError* get() const { return error_; }
    [[nodiscard]] bool is(GQuark domain, int code) const { return g_error_matches(error_, domain, code) != 0; }

private:
    GError* error_ = nullptr;
};

/// The thread's main context for as long as this lives. GLib delivers a proxy's signals there; without it they would
/// pile up in the default context, which perhaps nobody runs.
class ContextScope {
public:
    ContextScope() : context_(g_main_context_new()) { g_main_context_push_thread_default(context_); }
    ContextScope(const ContextScope&) = delete;
    ContextScope& operator=(const ContextScope&) = delete;
    ~ContextScope() {
        while (g_main_context_iteration(context_, FALSE) != 0) {
        }
        g_main_context_pop_thread_default(context_);
        g_main_context_unref(context_);
    }

    void waitForOne() { g_main_context_iteration(context_, TRUE); }

private:
    GMainContext* context_;
};

struct Cancel {
    GCancellable* cancellable;
    void operator()() const { g_cancellable_cancel(cancellable); }
};

/// The schema's name is stored, but not looked for: a locked keyring does not find its items by it.
const SecretSchema kSchema = {"com.vorlek.Notara.Secret",
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

bool meansNoService(const ErrorSlot& error) {
    constexpr int kCodes[] = {G_DBUS_ERROR_SERVICE_UNKNOWN,
                              G_DBUS_ERROR_NAME_HAS_NO_OWNER,
                              G_DBUS_ERROR_SPAWN_EXEC_FAILED,
                              G_DBUS_ERROR_SPAWN_FORK_FAILED,
                              G_DBUS_ERROR_SPAWN_CHILD_EXITED,
                              G_DBUS_ERROR_SPAWN_CHILD_SIGNALED,
                              G_DBUS_ERROR_SPAWN_FAILED,
                              G_DBUS_ERROR_SPAWN_SETUP_FAILED,
                              G_DBUS_ERROR_SPAWN_CONFIG_INVALID,
                              G_DBUS_ERROR_SPAWN_SERVICE_INVALID,
                              G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND,
                              G_DBUS_ERROR_SPAWN_PERMISSIONS_INVALID,
                              G_DBUS_ERROR_SPAWN_FILE_INVALID,
                              G_DBUS_ERROR_SPAWN_NO_MEMORY};
    if (error.is(G_IO_ERROR, G_IO_ERROR_CLOSED)) return true;  // the bus went away
    return std::ranges::any_of(kCodes, [&](int code) { return error.is(G_DBUS_ERROR, code); });
}

/// Somebody else removed the item meanwhile.
bool meansGone(const ErrorSlot& error) {
    return error.is(SECRET_ERROR, SECRET_ERROR_NO_SUCH_OBJECT) || error.is(G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_OBJECT) ||
           error.is(G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD);
}

/// GLib's text without the remote error's name in front, on one line.
std::string messageOf(const GError* error) {
    const Ref<GError> copy(g_error_copy(error));
    g_dbus_error_strip_remote_error(copy.get());
    std::string message = scrubbedUtf8(copy->message);
    std::ranges::replace_if(message, [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return message;
}

std::unexpected<SecretFailure> failed(Kind kind, std::string message) {
    return std::unexpected(SecretFailure{kind, std::move(message)});
}

/// D-Bus carries only Unicode, and C strings end at a zero.
bool isUsable(std::string_view text) { return isValidUtf8(text) && text.find('\0') == std::string_view::npos; }

/// One exchange with the keychain on the calling thread.
class Conversation {
public:
    using Items = std::vector<Ref<SecretItem>>;

    explicit Conversation(std::stop_token stop)
        : cancellable_(g_cancellable_new()), onStop_(std::move(stop), Cancel{cancellable_.get()}) {}

    /// The first thing to do.
    Result<void> open();
    /// All items of this name, the unlocked ones first, and of those the newest.
    Result<Items> find(const SecretName& name);
    /// Asks the user where needed.
    Result<void> unlock(const Items& items);
    /// Absent when somebody else removed it meanwhile.
    Result<std::optional<std::string>> secretOf(SecretItem* item);
    Result<Ref<SecretItem>> create(const SecretName& name, std::string_view label, std::string_view secret);
    /// Tells whether it was still there.
    Result<bool> erase(SecretItem* item);

private:
    [[nodiscard]] std::unexpected<SecretFailure> failureOf(const ErrorSlot& error) const;
    Result<void> unlock(GList* objects);
    Result<Ref<SecretCollection>> defaultCollection();
    /// Asks the user for its password. Absent when there is none after all.
    Ref<SecretCollection> createDefaultCollection(ErrorSlot& error);

    [[nodiscard]] SecretService* service() const { return service_.get(); }
    [[nodiscard]] GCancellable* cancellable() const { return cancellable_.get(); }

    ContextScope context_;
    Ref<GCancellable> cancellable_;
    Ref<SecretService> service_;
    std::stop_callback<Cancel> onStop_;  // last: it ends before what it cancels
};

std::unexpected<SecretFailure> Conversation::failureOf(const ErrorSlot& error) const {
    if (g_cancellable_is_cancelled(cancellable()) != 0) return failed(Kind::cancelled, "The request was cancelled.");
    if (error.get() == nullptr) return failed(Kind::refused, "The keychain did not do it, and gave no reason.");
    if (error.is(SECRET_ERROR, SECRET_ERROR_IS_LOCKED)) return failed(Kind::locked, "The keychain is locked.");
    return failed(meansNoService(error) ? Kind::noService : Kind::refused, messageOf(error.get()));
}

Result<void> Conversation::open() {
    ErrorSlot error;
    if (g_cancellable_is_cancelled(cancellable()) != 0) return failureOf(error);
    // Threads that connect at the same time share the attempt: were it cancelled here, it would fail for all of them.
    const Ref<GDBusConnection> connection(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, error.out()));
    if (!connection) return failed(Kind::noService, messageOf(error.get()));
    g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
    service_.reset(secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION, cancellable(),
                                            error.out()));
    if (!service_) return failureOf(error);
    return {};
}

Ref<GHashTable> attributesOf(const SecretName& name) {
    return Ref<GHashTable>(
        secret_attributes_build(&kSchema, "service", name.service.c_str(), "account", name.account.c_str(), nullptr));
}

/// libsecret reads the properties of each item after it was found or made. When somebody else removes one in between,
/// the whole fails, and is tried again.
template <class T, class Attempt>
T* untilNothingVanishes(ErrorSlot& error, Attempt attempt) {
    T* result = attempt();
    for (int tries = 1; tries < kMostTries && meansGone(error); ++tries) {
        g_clear_error(error.out());
        result = attempt();
    }
    return result;
}

Result<Conversation::Items> Conversation::find(const SecretName& name) {
    ErrorSlot error;
    const Ref<GList> found(untilNothingVanishes<GList>(error, [&] {
        return secret_service_search_sync(service(), &kSchema, attributesOf(name).get(), SECRET_SEARCH_ALL,
                                          cancellable(), error.out());
    }));
    Items items;
    for (const GList* node = found.get(); node != nullptr; node = node->next) {
        items.emplace_back(static_cast<SecretItem*>(node->data));
    }
    if (error.get() != nullptr) return failureOf(error);
    const auto rank = [](const Ref<SecretItem>& item) {
        return std::pair(secret_item_get_locked(item.get()) == FALSE, secret_item_get_modified(item.get()));
    };
    std::ranges::stable_sort(items, std::ranges::greater{}, rank);
    return items;
}

Result<void> Conversation::unlock(GList* objects) {
    ErrorSlot error;
    // Some services name fewer objects than they unlocked; what is still locked fails when it is used.
    if (secret_service_unlock_sync(service(), objects, cancellable(), nullptr, error.out()) > 0) return {};
    if (error.get() != nullptr || g_cancellable_is_cancelled(cancellable()) != 0) return failureOf(error);
    return failed(Kind::locked, "The keychain stayed locked.");
}

Result<void> Conversation::unlock(const Items& items) {
    Ref<GList> locked;
    for (const Ref<SecretItem>& item : items) {
        if (secret_item_get_locked(item.get()) == FALSE) continue;
        locked.reset(g_list_prepend(locked.release(), item.get()));
    }
    if (!locked) return {};
    return unlock(locked.get());
}

Result<std::optional<std::string>> Conversation::secretOf(SecretItem* item) {
    ErrorSlot error;
    if (secret_item_load_secret_sync(item, cancellable(), error.out()) == FALSE) {
        if (meansGone(error)) return std::nullopt;
        return failureOf(error);
    }
    const Ref<SecretValue> value(secret_item_get_secret(item));
    if (!value) return failureOf(error);
    gsize size = 0;
    const char* bytes = secret_value_get(value.get(), &size);
    return std::string(bytes, size);
}

Ref<SecretCollection> Conversation::createDefaultCollection(ErrorSlot& error) {
    // The variant that waits by itself leaks the prompt's subscriptions.
    Ref<GAsyncResult> result;
    const auto keep = [](GObject*, GAsyncResult* ended, gpointer slot) {
        static_cast<Ref<GAsyncResult>*>(slot)->reset(static_cast<GAsyncResult*>(g_object_ref(ended)));
    };
    secret_collection_create(service(), "Default keyring", SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_CREATE_NONE,
                             cancellable(), keep, &result);
    while (!result) context_.waitForOne();
    return Ref<SecretCollection>(secret_collection_create_finish(result.get(), error.out()));
}

Result<Ref<SecretCollection>> Conversation::defaultCollection() {
    ErrorSlot error;
    Ref<SecretCollection> collection(secret_collection_for_alias_sync(
        service(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, cancellable(), error.out()));
    if (!collection && error.get() != nullptr) return failureOf(error);
    if (!collection) {
        collection = createDefaultCollection(error);
        if (!collection && g_cancellable_is_cancelled(cancellable()) != 0) return failureOf(error);
        if (!collection) return failed(Kind::refused, "The keychain has no default keyring, and none was created.");
        return collection;
    }
    if (secret_collection_get_locked(collection.get()) != FALSE) {
        const Ref<GList> objects(g_list_prepend(nullptr, collection.get()));
        if (const Result<void> unlocked = unlock(objects.get()); !unlocked) return std::unexpected(unlocked.error());
    }
    return collection;
}

Result<Ref<SecretItem>> Conversation::create(const SecretName& name, std::string_view label, std::string_view secret) {
    const Result<Ref<SecretCollection>> collection = defaultCollection();
    if (!collection) return std::unexpected(collection.error());
    const Ref<SecretValue> value(secret_value_new(secret.data(), static_cast<gssize>(secret.size()), "text/plain"));
    ErrorSlot error;
    Ref<SecretItem> item(untilNothingVanishes<SecretItem>(error, [&] {
        return secret_item_create_sync(collection->get(), &kSchema, attributesOf(name).get(),
                                       std::string(label).c_str(), value.get(), SECRET_ITEM_CREATE_REPLACE,
                                       cancellable(), error.out());
    }));
    if (!item) return failureOf(error);
    return item;
}

Result<bool> Conversation::erase(SecretItem* item) {
    ErrorSlot error;
    if (secret_item_delete_sync(item, cancellable(), error.out()) != FALSE) return true;
    if (meansGone(error)) return false;
    return failureOf(error);
}

Result<void> checked(const SecretName& name, std::string_view label = {}) {
    if (isUsable(name.service) && isUsable(name.account) && isUsable(label)) return {};
    return failed(Kind::refused, "The keychain takes only names that are valid Unicode text.");
}

std::string_view pathOf(SecretItem* item) { return g_dbus_proxy_get_object_path(G_DBUS_PROXY(item)); }

}  // namespace

SecretStore::Result<std::optional<std::string>> SecretServiceStore::read(const SecretName& name, std::stop_token stop) {
    if (const Result<void> usable = checked(name); !usable) return std::unexpected(usable.error());
    Conversation keychain(std::move(stop));
    if (const Result<void> opened = keychain.open(); !opened) return std::unexpected(opened.error());
    Result<Conversation::Items> items = keychain.find(name);
    if (!items) return std::unexpected(items.error());
    if (items->empty()) return std::nullopt;
    items->resize(1);
    if (const Result<void> unlocked = keychain.unlock(*items); !unlocked) return std::unexpected(unlocked.error());
    return keychain.secretOf(items->front().get());
}

SecretStore::Result<void> SecretServiceStore::write(const SecretName& name, std::string_view label,
                                                    std::string_view secret, std::stop_token stop) {
    if (const Result<void> usable = checked(name, label); !usable) return usable;
    Conversation keychain(std::move(stop));
    if (const Result<void> opened = keychain.open(); !opened) return opened;
    const Result<Ref<SecretItem>> written = keychain.create(name, label, secret);
    if (!written) return std::unexpected(written.error());
    Result<Conversation::Items> others = keychain.find(name);
    if (!others) return std::unexpected(others.error());
    std::erase_if(*others, [&](const auto& item) { return pathOf(item.get()) == pathOf(written->get()); });
    if (const Result<void> unlocked = keychain.unlock(*others); !unlocked) return unlocked;
    for (const Ref<SecretItem>& other : *others) {
        if (const Result<bool> erased = keychain.erase(other.get()); !erased) return std::unexpected(erased.error());
    }
    return {};
}

SecretStore::Result<bool> SecretServiceStore::remove(const SecretName& name, std::stop_token stop) {
    if (const Result<void> usable = checked(name); !usable) return std::unexpected(usable.error());
    Conversation keychain(std::move(stop));
    if (const Result<void> opened = keychain.open(); !opened) return std::unexpected(opened.error());
    const Result<Conversation::Items> items = keychain.find(name);
    if (!items) return std::unexpected(items.error());
    if (const Result<void> unlocked = keychain.unlock(*items); !unlocked) return std::unexpected(unlocked.error());
    bool removed = false;
    for (const Ref<SecretItem>& item : *items) {
        const Result<bool> erased = keychain.erase(item.get());
        if (!erased) return erased;
        removed = removed || *erased;
    }
    return removed;
}

}  // namespace tessary
