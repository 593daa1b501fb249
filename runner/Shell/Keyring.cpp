#include "Shell/Keyring.h"

#include "Shell/GObjects.h"

#include <libsecret/secret.h>

namespace wrapio {

namespace {

using Finish = std::function<void(std::optional<std::string>)>;

const SecretSchema* keySchema() {
    static const SecretSchema schema{"chrome_libsecret_os_crypt_password_v2",
                                     SECRET_SCHEMA_DONT_MATCH_NAME,
                                     {{"application", SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                     0,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr};
    return &schema;
}

void found(GObject*, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Finish> finish(static_cast<Finish*>(data));
    GError* error = nullptr;
    char* password = secret_password_lookup_finish(result, &error);
    g_clear_error(&error);
    (*finish)(password != nullptr ? std::optional<std::string>(password) : std::nullopt);
    secret_password_free(password);
}

}  // namespace

void lookUpBrowserKey(const std::string& owner, Finish finish) {
    secret_password_lookup(keySchema(), nullptr, &found, new Finish(std::move(finish)), "application", owner.c_str(),
                           nullptr);
}

}  // namespace wrapio
