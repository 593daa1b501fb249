#include "BrowserSessions/ChromiumCrypt.h"

#include <nettle/aes.h>
#include <nettle/cbc.h>
#include <nettle/pbkdf2.h>
#include <nettle/sha2.h>

namespace wrapio {

namespace {

constexpr std::string_view salt = "saltysalt";
constexpr std::size_t blockSize = AES_BLOCK_SIZE;

const std::uint8_t* bytesOf(std::string_view text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

}  // namespace

ChromiumKey chromiumKey(std::string_view password) {
    ChromiumKey key{};
    nettle_pbkdf2_hmac_sha1(password.size(), bytesOf(password), 1, salt.size(), bytesOf(salt), key.size(), key.data());
    return key;
}

std::optional<std::string> decryptChromium(std::string_view encrypted, const ChromiumKey& key) {
    if (encrypted.empty() || encrypted.size() % blockSize != 0)
        return std::nullopt;
    aes128_ctx context{};
    aes128_set_decrypt_key(&context, key.data());
    std::array<std::uint8_t, blockSize> vector{};
    vector.fill(' ');
    std::string text(encrypted.size(), '\0');
    cbc_decrypt(&context, reinterpret_cast<nettle_cipher_func*>(aes128_decrypt), blockSize, vector.data(), text.size(),
                reinterpret_cast<std::uint8_t*>(text.data()), bytesOf(encrypted));
    // A wrong key hardly ever leaves padding that is right in each of its bytes.
    const auto padding = static_cast<std::uint8_t>(text.back());
    if (padding == 0 || padding > blockSize ||
        text.find_first_not_of(static_cast<char>(padding), text.size() - padding) != std::string::npos)
        return std::nullopt;
    text.resize(text.size() - padding);
    return text;
}

std::string sha256(std::string_view text) {
    sha256_ctx context{};
    sha256_init(&context);
    sha256_update(&context, text.size(), bytesOf(text));
    std::string digest(SHA256_DIGEST_SIZE, '\0');
    sha256_digest(&context, digest.size(), reinterpret_cast<std::uint8_t*>(digest.data()));
    return digest;
}

}  // namespace wrapio
