#include "platform/files/sha256.h"

#include <openssl/evp.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace quorvel {
namespace {

EVP_MD_CTX* context(void* state) { return static_cast<EVP_MD_CTX*>(state); }

/// Looked up once: the library's own search costs more than the sum of a short text.
const EVP_MD* method() {
    static const EVP_MD* const sha256 = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    return sha256;
}

} // namespace

Sha256::Sha256() : state_(EVP_MD_CTX_new(), [](void* state) { EVP_MD_CTX_free(context(state)); }) {
    EVP_DigestInit_ex(context(state_.get()), method(), nullptr);
}

void Sha256::add(std::string_view bytes) {
    EVP_DigestUpdate(context(state_.get()), bytes.data(), bytes.size());
}

std::string Sha256::hex() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
    unsigned length = 0;
    EVP_DigestFinal_ex(context(state_.get()), bytes.data(), &length);
    std::string digits;
    digits.reserve(2 * length);
    for (unsigned i = 0; i < length; ++i) {
        digits += "0123456789abcdef"[bytes[i] >> 4];
        digits += "0123456789abcdef"[bytes[i] & 15];
    }
    return digits;
}

std::string sha256(std::string_view bytes) {
    Sha256 sum;
    sum.add(bytes);
    return sum.hex();
}

std::string sha256_of_file(const std::filesystem::path& file) {
    Sha256 sum;
    errno = 0;
    std::ifstream in(file, std::ios::binary);
    std::vector<char> part(std::size_t{1} << 20);
    while (in.read(part.data(), static_cast<std::streamsize>(part.size())) || in.gcount() > 0)
        sum.add({part.data(), static_cast<std::size_t>(in.gcount())});
    if (in.bad() || !in.eof())
        throw std::runtime_error("No se puede leer " + file.string() +
                                 (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
    return sum.hex();
}

} // namespace quorvel
