#include "orvostatbs/service/LSSum.h"

#include "Gruppen.h"
#include "Posten.h"
#include "Register.h"
#include "Summenlauf.h"

#include <algorithm>

namespace orvostat {

namespace {

// Above this many hits a run shows its progress.
constexpr std::size_t HITS_OHNE_FORTSCHRITT = 1000;

// The progress of a run; without a box it says and asks nothing.
class CFortschritt {
public:
    CFortschritt(HWND hWnd, std::size_t iHits) : m_iHits(static_cast<long>(iHits)) {
        if (iHits > HITS_OHNE_FORTSCHRITT)
            m_bOffen = OrvoOpenProgressBox(hWnd, "Auswertung gestartet..."_t, "Bitte ein wenig Geduld..."_t);
    }
    ~CFortschritt() {
        if (m_bOffen) OrvoCloseProgressBox();
    }
    CFortschritt(const CFortschritt &) = delete;
    CFortschritt & operator=(const CFortschritt &) = delete;

    // True if the user wants to stop.
    [[nodiscard]] bool Abgebrochen(std::size_t iPos) const {
        return m_bOffen && !OrvoUpdateProgressBox2(static_cast<long>(iPos), m_iHits) &&
               SollIch("Vorgang abbrechen..."_t, "Möchten Sie wirklich den Vorgang abbrechen?"_t, 0) ==
                   SOLLICH_JA;
    }

private:
    bool m_bOffen = false;
    long m_iHits;
};

// True if all hits were taken.
bool NimmAlle(CSummenlauf & lauf, const CLSSum & sum, const CString & sPraxis,
              const std::vector<CBehHitLine> & vHits, HWND hWnd) {
    const CFortschritt fortschritt(hWnd, vHits.size());
    for (std::size_t i = 0; i < vHits.size(); ++i) {
        if (fortschritt.Abgebrochen(i)) return false;
        if (sum.TestBehSelOk(vHits[i], sPraxis)) lauf.Nimm(vHits[i]);
    }
    return true;
}

// The sum of the group at a position; an empty one for none.
const CLSLst & Gruppensumme(const std::vector<CLSLstGrp> & vLstGrp, int i) {
    static const CLSLst s_leer;
    return i < 0 ? s_leer : vLstGrp[static_cast<std::size_t>(i)].m_Sum;
}

} // namespace

CLSSum::SRegister::SRegister() = default;
CLSSum::SRegister::~SRegister() = default;
CLSSum::SRegister & CLSSum::SRegister::operator=(const SRegister &) {
    p.reset();
    return *this;
}

CLSSum::CLSSum() { ClearAll(); }
CLSSum::~CLSSum() = default;
CLSSum::CLSSum(const CLSSum &) = default;
CLSSum & CLSSum::operator=(const CLSSum &) = default;

void CLSSum::ClearAll() {
    m_Praxis.Clear();
    m_vBeh.clear();
    m_vKas.clear();
    m_KasSum.Clear();
    m_100F.Clear();
    m_vFaelle.clear();
    m_vKasData.clear();
    m_KasSel.Clear();
    m_vBehTage.clear();
    m_vPraxisTage.clear();
    m_register.p.reset();
}

void CLSSum::Analyse(const CString & sPraxis, const std::vector<CBehHitLine> & vHits, HWND hWnd) {
    BeginWaitCursor();
    m_register.p.reset(); // the list of cases changes without it
    CSummenlauf lauf(*this, sPraxis);
    const bool bGanz = NimmAlle(lauf, *this, sPraxis, vHits, hWnd);
    lauf.Verteile();
    // A cancelled run leaves the wait cursor on: the screen that cancelled goes on to close itself.
    if (!bGanz) return;
    lauf.HaengeTageAn();
    DoPraxisAnteile();
    DoBehandlerAnteile();
    EndWaitCursor();
}

bool CLSSum::TestBehSelOk(const CBehHitLine & hit, const CString & sPraxis) const {
    if (hit.GOSTATISTIKART == 0) return false;
    if (hit.GOSTATISTIKART == 'n' && (IstKassenArt(hit.GOART) || IstGozArt(hit.GOART))) return false;
    if (hit.GOSUBART == '3' && (hit.GOART == 'b' || IstAlternativArt(hit.GOART))) return false;
    if (hit.LSTIN.IsEmpty()) return false;
    return sPraxis.IsEmpty() || sPraxis == hit.PRAXISNR;
}

int CLSSum::FindBeh(const CBehHitLine & hit) const {
    const auto it = std::find(m_vBeh.begin(), m_vBeh.end(), hit);
    return it == m_vBeh.end() ? -1 : static_cast<int>(it - m_vBeh.begin());
}

int CLSSum::FindKas(const std::vector<CLSKasLstGrp> & vKas, const CBehHitLine & hit) const {
    const auto it = std::find(vKas.rbegin(), vKas.rend(), hit);
    return static_cast<int>(vKas.rend() - it) - 1;
}

int CLSSum::FindLSLstGrp(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                         CChar cStatArt) const {
    CLSLstGrp gesucht;
    gesucht.m_cZahler = cZahler;
    gesucht.m_cGoTyp = cGoTyp;
    gesucht.m_cStatArt = cStatArt;
    const auto it = std::find(vLstGrp.begin(), vLstGrp.end(), gesucht);
    return it == vLstGrp.end() ? -1 : static_cast<int>(it - vLstGrp.begin());
}

CDBetrag CLSSum::GetLstGrpBetrag(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                                 CChar cStatArt) const {
    return Gruppensumme(vLstGrp, FindLSLstGrp(vLstGrp, cZahler, cGoTyp, cStatArt)).BETRAG;
}

int CLSSum::GetLstGrpPunkte(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                            CChar cStatArt) const {
    return Gruppensumme(vLstGrp, FindLSLstGrp(vLstGrp, cZahler, cGoTyp, cStatArt)).PUNKTE;
}

int CLSSum::GetLstGrpPxAnteil(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                              CChar cStatArt) const {
    return Gruppensumme(vLstGrp, FindLSLstGrp(vLstGrp, cZahler, cGoTyp, cStatArt)).ANTEILPRAXIS;
}

int CLSSum::GetLstGrpBehAnteil(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                               CChar cStatArt) const {
    return Gruppensumme(vLstGrp, FindLSLstGrp(vLstGrp, cZahler, cGoTyp, cStatArt)).ANTEILBEH;
}

int CLSSum::GetLstGrpKasAnteil(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                               CChar cStatArt) const {
    return Gruppensumme(vLstGrp, FindLSLstGrp(vLstGrp, cZahler, cGoTyp, cStatArt)).ANTEILKAS;
}

long CLSSum::GetAnzStatLines() const {
    std::size_t iZeilen = 1 + m_Praxis.m_vLstGrp.size() + 1;
    for (const CLSBehLstGrp & beh : m_vBeh)
        iZeilen += 1 + beh.m_vLstGrp.size();
    return static_cast<long>(iZeilen);
}

} // namespace orvostat
