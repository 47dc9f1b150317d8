// A checksum of bytes: the first 32 digits of their SHA-256.
#pragma once

#include <memory>
#include <string>
#include <string_view>

struct evp_md_ctx_st;

namespace orvostat {

class CPruefsumme {
public:
    CPruefsumme();
    ~CPruefsumme();
    CPruefsumme(const CPruefsumme &) = delete;
    CPruefsumme & operator=(const CPruefsumme &) = delete;
    void Nimm(std::string_view sBytes);
    // The sum of what was taken since the last end; the next one begins.
    [[nodiscard]] std::string Ende();

private:
    evp_md_ctx_st * m_p;
};

} // namespace orvostat
