#include "NeueDatei.h"

#include "Dateiablage.h"
#include "Praxis.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

bool IstMuster(const std::string & sDatei) {
    CString sMeldung;
    const auto pSpeicher = CSqliteSpeicher::OeffneDatei(sDatei, EModus::Lesen, sMeldung);
    return pSpeicher && pSpeicher->Herkunft() == HERKUNFT_MUSTER;
}

} // namespace

CNeueDatei::CNeueDatei(const std::string & sDatei, EVorhanden eVorhanden, const std::string & sVorbild)
    : m_sDatei(sDatei), m_sVorlaeufig(EigenerName(sDatei)), m_eVorhanden(eVorhanden) {
    const bool bErsetzt = PruefeZiel();
    if (bErsetzt || !sVorbild.empty()) m_iRechte = Rechte(sVorbild.empty() ? sDatei : sVorbild);
    CString sMeldung;
    m_pSpeicher = CSqliteSpeicher::OeffneDatei(m_sVorlaeufig, EModus::NeuUngesichert, sMeldung);
    if (!m_pSpeicher) {
        // The user knows the file by its own name.
        sMeldung.Replace(AusUtf8(m_sVorlaeufig), AusUtf8(m_sDatei));
        Verweigere(sMeldung.Utf8());
    }
    m_iHandle = open(m_sVorlaeufig.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (m_iHandle >= 0) return;
    const int iErrno = errno;
    m_pSpeicher.reset();
    unlink(m_sVorlaeufig.c_str());
    Scheitere(iErrno);
}

CNeueDatei::~CNeueDatei() {
    m_pSpeicher.reset();
    if (NochUnsere()) unlink(m_sVorlaeufig.c_str());
    if (m_iHandle >= 0) close(m_iHandle);
}

// Whether there is a file that may be replaced; ends the command where there is one that may not.
bool CNeueDatei::PruefeZiel() const {
    const std::string sName = '"' + m_sDatei + '"';
    if (!fs::path(m_sDatei).has_filename()) Verweigere(sName + " ist kein Dateiname.");
    std::error_code fehler;
    const fs::file_status status = fs::symlink_status(m_sDatei, fehler);
    const bool bDa = fs::exists(status);
    if (bDa && !fs::is_regular_file(status)) Verweigere(sName + " ist keine gewöhnliche Datei.");
    if (bDa && m_eVorhanden == EVorhanden::Bleibt)
        Verweigere(sName + " gibt es schon und wird nicht überschrieben.");
    // They would be taken for those of the new file, and destroy it.
    for (const char * pEndung : {"-journal", "-wal"})
        if (Steht(m_sDatei + pEndung))
            Verweigere(fmt::format("\"{}{}\" steht im Weg: {}.", m_sDatei, pEndung,
                                   bDa ? "ein anderes Programm schreibt gerade, oder eine Änderung ist "
                                         "unterbrochen worden (\"orvostat check\" nimmt sie zurück)"
                                       : "der Rest einer anderen Datei dieses Namens"));
    if (bDa && m_eVorhanden == EVorhanden::MusterWeicht && !IstMuster(m_sDatei))
        Verweigere(
            sName +
            " ist nicht als Musterpraxis erkennbar und wird nicht überschrieben; --wirklich tut auch das.");
    return bDa;
}

// Whether the name still leads to the open file.
bool CNeueDatei::NochUnsere() const {
    struct stat offen {};
    struct stat benannt {};
    return m_iHandle >= 0 && fstat(m_iHandle, &offen) == 0 && lstat(m_sVorlaeufig.c_str(), &benannt) == 0 &&
           offen.st_dev == benannt.st_dev && offen.st_ino == benannt.st_ino;
}

void CNeueDatei::Scheitere(int iErrno) const {
    if (iErrno == EEXIST) Verweigere('"' + m_sDatei + "\" gibt es schon und wird nicht überschrieben.");
    Verweigere('"' + m_sDatei + "\" lässt sich nicht anlegen: " + Systemgrund(iErrno) + ".");
}

void CNeueDatei::Fertig() {
    m_pSpeicher.reset();
    if (!NochUnsere())
        Verweigere('"' + m_sVorlaeufig + "\" ist verschoben oder gelöscht worden, bevor sie fertig war.");
    // Not every file system has permissions.
    if (fchmod(m_iHandle, m_iRechte) != 0 && errno == EIO) Scheitere(errno);
    if (fsync(m_iHandle) != 0) Scheitere(errno);
    const bool bErsetzen = PruefeZiel(); // what is there now may be another one
    if (!GibNamen(m_sVorlaeufig, m_sDatei, bErsetzen)) Scheitere(errno);
    if (!SichereVerzeichnis(m_sDatei))
        Verweigere('"' + m_sDatei +
                   "\" ist angelegt, aber vielleicht nicht dauerhaft: " + Systemgrund(errno) + ".");
}

} // namespace orvostat
