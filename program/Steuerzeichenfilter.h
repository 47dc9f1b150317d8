// Keeps what stands in a practice's rows from driving the user's terminal.
#pragma once

#include <ios>
#include <streambuf>

namespace orvostat {

// Hands UTF-8 on to another buffer with a blank for each control character. Only ends of lines pass, LF and CR LF.
class CSteuerzeichenfilter : public std::streambuf {
public:
    // The target outlives the object.
    explicit CSteuerzeichenfilter(std::streambuf * pZiel) : m_pZiel(pZiel) {}

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char * p, std::streamsize n) override;
    int sync() override;

private:
    bool Gib(const char * p, std::streamsize n) { return m_pZiel->sputn(p, n) == n; }
    bool GibVorige(char cNach);

    std::streambuf * m_pZiel;
    char m_cVorige = 0; // CR or the first byte of U+0080 to U+00BF, whose next byte is not here yet
};

// Lets all that goes to a stream pass the filter while the object lives.
class CSauber {
public:
    explicit CSauber(std::ios & strom)
        : m_strom(strom), m_filter(strom.rdbuf()), m_pVorher(strom.rdbuf(&m_filter)) {}
    ~CSauber() {
        m_filter.pubsync();
        m_strom.rdbuf(m_pVorher);
    }
    CSauber(const CSauber &) = delete;
    CSauber & operator=(const CSauber &) = delete;

private:
    std::ios & m_strom;
    CSteuerzeichenfilter m_filter;
    std::streambuf * m_pVorher;
};

} // namespace orvostat
