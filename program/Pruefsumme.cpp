#include "Pruefsumme.h"

#include <array>
#include <new>

#include <fmt/format.h>
#include <openssl/evp.h>

namespace orvostat {

CPruefsumme::CPruefsumme() : m_p(EVP_MD_CTX_new()) {
    if (m_p == nullptr || EVP_DigestInit_ex(m_p, EVP_sha256(), nullptr) != 1) throw std::bad_alloc();
}

CPruefsumme::~CPruefsumme() { EVP_MD_CTX_free(m_p); }

void CPruefsumme::Nimm(std::string_view sBytes) { EVP_DigestUpdate(m_p, sBytes.data(), sBytes.size()); }

std::string CPruefsumme::Ende() {
    constexpr std::size_t GEZEIGT = 16;
    std::array<unsigned char, EVP_MAX_MD_SIZE> ac{};
    EVP_DigestFinal_ex(m_p, ac.data(), nullptr);
    if (EVP_DigestInit_ex(m_p, EVP_sha256(), nullptr) != 1) throw std::bad_alloc();
    std::string s;
    for (std::size_t i = 0; i < GEZEIGT; ++i)
        s += fmt::format("{:02x}", ac[i]);
    return s;
}

} // namespace orvostat
