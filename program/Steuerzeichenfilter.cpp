#include "Steuerzeichenfilter.h"

#include <utility>

namespace orvostat {

namespace {

constexpr char C1 = '\xC2';

bool BrauchtNaechstes(char c) { return c == '\r' || c == C1; }

bool IstSteuerzeichen(char c) {
    const auto cByte = static_cast<unsigned char>(c);
    return (cByte < 0x20 && c != '\n') || cByte == 0x7F;
}

} // namespace

// Writes what was kept back, now that its next byte is known; 0 for none.
bool CSteuerzeichenfilter::GibVorige(char cNach) {
    switch (std::exchange(m_cVorige, '\0')) {
    case '\r':
        return cNach == '\n' ? Gib("\r", 1) : Gib(" ", 1);
    case C1:
        return static_cast<unsigned char>(cNach) < 0xA0 ? Gib(" ", 1) : Gib(&C1, 1);
    default:
        return true;
    }
}

std::streamsize CSteuerzeichenfilter::xsputn(const char * p, std::streamsize n) {
    std::streamsize iBis = 0; // what is written
    for (std::streamsize i = 0; i < n; ++i) {
        if (m_cVorige != 0) {
            const bool bZweites = m_cVorige == C1 && static_cast<unsigned char>(p[i]) < 0xA0;
            if (!GibVorige(p[i])) return iBis;
            iBis = i + (bZweites ? 1 : 0);
            if (bZweites) continue;
        }
        if (!BrauchtNaechstes(p[i]) && !IstSteuerzeichen(p[i])) continue;
        if (!Gib(p + iBis, i - iBis)) return iBis;
        if (BrauchtNaechstes(p[i]))
            m_cVorige = p[i];
        else if (!Gib(" ", 1))
            return i;
        iBis = i + 1;
    }
    return Gib(p + iBis, n - iBis) ? n : iBis;
}

CSteuerzeichenfilter::int_type CSteuerzeichenfilter::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char cByte = traits_type::to_char_type(c);
    return xsputn(&cByte, 1) == 1 ? c : traits_type::eof();
}

int CSteuerzeichenfilter::sync() { return GibVorige('\0') ? m_pZiel->pubsync() : -1; }

} // namespace orvostat
