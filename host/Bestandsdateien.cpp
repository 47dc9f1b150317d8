// Files as rows of the practice's own store.
#include "orvostatbs/host/Dateispeicher.h"
#include "orvostatbs/host/TabellenDatei.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace orvostat {

namespace {

constexpr int NAME_MAX_LAENGE = 255; // of a part of a path, as on a disk

// Reading goes through the handle that writes, so that a group that is still open is seen.
CMxDatabase & Handle() { return dbDatabase.Speicher() ? dbDatabase : dbDatabaseRO; }

int Fehlerursache() {
    const auto pSpeicher = Handle().Speicher();
    switch (pSpeicher ? pSpeicher->Fehlerursache() : EZeilenursache::Unbekannt) {
    case EZeilenursache::KeinZugriff:
        return URSACHE_KEIN_ZUGRIFF;
    case EZeilenursache::Geraet:
        return URSACHE_GERAET;
    case EZeilenursache::Voll:
        return URSACHE_VOLL;
    case EZeilenursache::Unbekannt:
        break;
    }
    return URSACHE_SONST;
}

int Ursache(int iZeile) {
    switch (iZeile) {
    case ZEILE_OK:
        return URSACHE_KEINE;
    case ZEILE_KEINE:
        return URSACHE_KEINE_DATEI;
    case ZEILE_VERWEIGERT:
        return URSACHE_KEIN_ZUGRIFF;
    default:
        return Fehlerursache();
    }
}

// A file below the data directory is named from there: the practice may lie elsewhere tomorrow.
CString Name(const CString & sPfad) {
    const CString sDaten = GetOrvoDataPath(0);
    const bool bDarunter = !sDaten.IsEmpty() && sPfad.Left(sDaten.GetLength()) == sDaten;
    return bDarunter ? sPfad.Mid(sDaten.GetLength()) : sPfad;
}

bool IstName(const CString & sName) {
    std::vector<CString> vTeile;
    SeparatedStrToVec(sName, '\\', vTeile);
    return std::all_of(vTeile.begin(), vTeile.end(),
                       [](const CString & s) { return s.GetLength() <= NAME_MAX_LAENGE; });
}

CString Stuecknummer(std::uint64_t i) { return RightFix(itoc(static_cast<std::int64_t>(i)), 8, '0'); }

// Reads the row of a piece, 0 for the head.
int LiesStueck(CTDatei & zeile, const CString & sName, std::uint64_t iStueck) {
    zeile.Init();
    if (sName.IsEmpty()) return ZEILE_KEINE;
    zeile.m_DATEINAME = sName;
    zeile.m_STUECK = Stuecknummer(iStueck);
    return zeile.GetByK1();
}

int LoescheZeilen(const CString & sName) {
    CTDatei zeile(dbDatabase);
    if (const int i = LiesStueck(zeile, sName, 0); i != ZEILE_OK) return i;
    zeile.ClearKey();
    zeile.m_DATEINAME = sName;
    const int iErste = zeile.GetByK1(MATCH_ALLE);
    return iErste == ZEILE_OK ? zeile.DeleteRows() : iErste;
}

class CBestandszugriff final : public CDateizugriff {
public:
    explicit CBestandszugriff(CString sName) : m_sName(std::move(sName)) {}
    ~CBestandszugriff() override {
        m_zeile.InitI();
        if (m_bGruppe) dbDatabase.Beende(false);
    }

    // A cause.
    int Oeffne(unsigned iModus) {
        if (!IstName(m_sName)) return URSACHE_PFAD;
        if ((iModus & DATEI_SCHREIBEN) != 0 && (dbDatabase.NurLesen() || !dbDatabase.Speicher()))
            return URSACHE_KEIN_ZUGRIFF;
        const int iDa = m_sName.IsEmpty() ? static_cast<int>(ZEILE_KEINE) : LiesStueck(m_zeile, m_sName, 0);
        const bool bAnlegen = (iModus & DATEI_SCHREIBEN) != 0 && (iModus & DATEI_ANLEGEN) != 0;
        if (iDa == ZEILE_OK && !(bAnlegen && (iModus & DATEI_BEHALTEN) == 0)) return LiesLaenge();
        if (iDa != ZEILE_OK && (iDa != ZEILE_KEINE || !bAnlegen || m_sName.IsEmpty())) return Ursache(iDa);
        return LegeAn(iDa == ZEILE_OK);
    }

    int Lies(std::uint64_t iPos, std::span<char> acZiel, std::size_t & iGelesen) override {
        iGelesen = 0;
        while (iGelesen < acZiel.size() && iPos < m_iLaenge) {
            if (const int iUrsache = Hole(iPos / LAENGE); iUrsache != URSACHE_KEINE) return iUrsache;
            const std::size_t iAb = iPos % LAENGE;
            if (iAb >= m_sStueck.size()) return URSACHE_GERAET; // a piece is missing or too short
            const std::size_t n = std::min(m_sStueck.size() - iAb, acZiel.size() - iGelesen);
            std::memcpy(acZiel.data() + iGelesen, m_sStueck.data() + iAb, n);
            iGelesen += n;
            iPos += n;
        }
        return URSACHE_KEINE;
    }

    int Schreibe(std::uint64_t iPos, std::string_view sBytes) override {
        if (const int iUrsache = BeginneGruppe(); iUrsache != URSACHE_KEINE) return iUrsache;
        while (!sBytes.empty()) {
            if (const int iUrsache = Hole(iPos / LAENGE); iUrsache != URSACHE_KEINE) return iUrsache;
            const std::size_t iAb = iPos % LAENGE;
            if (iAb > m_sStueck.size()) return URSACHE_GERAET;
            const std::string_view sTeil = sBytes.substr(0, LAENGE - iAb);
            m_sStueck.replace(iAb, sTeil.size(), sTeil);
            m_bGeaendert = true;
            sBytes.remove_prefix(sTeil.size());
            iPos += sTeil.size();
            m_iLaenge = std::max(m_iLaenge, iPos);
        }
        return URSACHE_KEINE;
    }

    std::uint64_t Laenge() override { return m_iLaenge; }

    int Sichere() override {
        const int iUrsache = SchreibeStueck();
        m_zeile.InitI();
        if (!m_bGruppe) return iUrsache;
        m_bGruppe = false;
        const int iEnde = Ursache(dbDatabase.Beende(iUrsache == URSACHE_KEINE));
        return iUrsache != URSACHE_KEINE ? iUrsache : iEnde;
    }
    int Schliesse() override { return Sichere(); }

private:
    static constexpr std::uint64_t LAENGE = CTDatei::STUECK_LAENGE;
    static constexpr std::uint64_t KEINES = ~0ULL;

    int BeginneGruppe() {
        if (m_bGruppe) return URSACHE_KEINE;
        const int i = dbDatabase.Beginne();
        m_bGruppe = i == ZEILE_OK;
        return Ursache(i);
    }
    int LegeAn(bool bDa) {
        if (const int iUrsache = BeginneGruppe(); iUrsache != URSACHE_KEINE) return iUrsache;
        m_zeile.InitI();
        if (const int i = bDa ? LoescheZeilen(m_sName) : ZEILE_OK; i != ZEILE_OK) return Ursache(i);
        m_zeile.Init();
        m_zeile.m_DATEINAME = m_sName;
        m_zeile.m_STUECK = Stuecknummer(0);
        return Ursache(m_zeile.Write());
    }
    int LiesLaenge() {
        m_zeile.Init();
        m_zeile.SetKey(1, false);
        m_zeile.m_DATEINAME = m_sName;
        const int i = m_zeile.GetByK1(MATCH_ALLE);
        if (i != ZEILE_OK) return Ursache(i);
        const auto iLetztes = static_cast<std::uint64_t>(std::max<std::int64_t>(Zahl64(m_zeile.m_STUECK), 0));
        if (iLetztes > 0)
            m_iLaenge = (iLetztes - 1) * LAENGE + static_cast<std::uint64_t>(m_zeile.m_INHALT.GetLength());
        m_zeile.Init();
        return URSACHE_KEINE;
    }
    // Brings a piece into memory; one right behind the end is new and empty.
    int Hole(std::uint64_t iStueck) {
        if (iStueck == m_iStueck) return URSACHE_KEINE;
        if (const int iUrsache = SchreibeStueck(); iUrsache != URSACHE_KEINE) return iUrsache;
        const int i = LiesStueck(m_zeile, m_sName, iStueck + 1);
        if (i != ZEILE_OK && (i != ZEILE_KEINE || iStueck * LAENGE != m_iLaenge))
            return i == ZEILE_KEINE ? static_cast<int>(URSACHE_GERAET) : Ursache(i);
        m_bNeu = i == ZEILE_KEINE;
        m_iStueck = iStueck;
        m_sStueck = m_bNeu ? std::string_view() : m_zeile.m_INHALT.Sicht().Text();
        return URSACHE_KEINE;
    }
    int SchreibeStueck() {
        if (!std::exchange(m_bGeaendert, false)) return URSACHE_KEINE;
        const int iDa = m_bNeu ? static_cast<int>(ZEILE_OK) : LiesStueck(m_zeile, m_sName, m_iStueck + 1);
        if (iDa != ZEILE_OK) return Ursache(iDa);
        m_zeile.m_DATEINAME = m_sName;
        m_zeile.m_STUECK = Stuecknummer(m_iStueck + 1);
        m_zeile.m_INHALT = CString(std::string_view(m_sStueck));
        const int i = m_bNeu ? m_zeile.Write() : m_zeile.RewriteRec();
        m_bNeu = false;
        return Ursache(i);
    }

    CString m_sName;
    CTDatei m_zeile{Handle()};
    std::uint64_t m_iLaenge = 0;
    bool m_bGruppe = false;           // a group of writes is open
    std::uint64_t m_iStueck = KEINES; // the piece in memory, from 0
    std::string m_sStueck;
    bool m_bGeaendert = false; // in memory only
    bool m_bNeu = false;       // has no row yet
};

class CBestandsdateien final : public CDateispeicher {
public:
    std::unique_ptr<CDateizugriff> Oeffne(const CString & sPfad, unsigned iModus, int & iUrsache) override {
        auto pZugriff = std::make_unique<CBestandszugriff>(Name(sPfad));
        iUrsache = pZugriff->Oeffne(iModus);
        return iUrsache == URSACHE_KEINE ? std::move(pZugriff) : nullptr;
    }
    int Loesche(const CString & sPfad) override {
        if (!IstName(Name(sPfad))) return URSACHE_PFAD;
        if (const int i = dbDatabase.Beginne(); i != ZEILE_OK) return Ursache(i);
        const int i = LoescheZeilen(Name(sPfad));
        const int iEnde = dbDatabase.Beende(i == ZEILE_OK);
        return Ursache(i != ZEILE_OK ? i : iEnde);
    }
    bool Existiert(const CString & sPfad) override {
        CTDatei zeile(Handle());
        return LiesStueck(zeile, Name(sPfad), 0) == ZEILE_OK;
    }
    std::vector<SDateieintrag> Suche(const CString & sMuster) override {
        const CString sGanz = Name(sMuster);
        const CString sOrdner = Ordnerteil(sGanz);
        const std::string sMaske(sGanz.Mid(sOrdner.GetLength()).Sicht().Text());
        std::vector<SDateieintrag> vEintraege;
        CTDatei zeile(Handle());
        for (CString sAb = sOrdner; NaechsterKopf(zeile, sAb, sOrdner); sAb = zeile.m_DATEINAME + '\x01')
            if (const auto eintrag = Eintrag(zeile.m_DATEINAME, sOrdner.GetLength());
                PasstAufMuster(eintrag.sName.Sicht(), sMaske) &&
                (vEintraege.empty() || vEintraege.back().sName != eintrag.sName))
                vEintraege.push_back(eintrag);
        return vEintraege;
    }

private:
    // Reads the head of the first file from the name on that lies below the folder.
    static bool NaechsterKopf(CTDatei & zeile, const CString & sAb, const CString & sOrdner) {
        zeile.Init();
        zeile.AddKeysBW(sAb, sOrdner + CString('\xFF', NAME_MAX_LAENGE));
        return zeile.GetByK1(MATCH_ALLE) == ZEILE_OK;
    }
    static SDateieintrag Eintrag(const CString & sName, int iOrdner) {
        const CString sRest = sName.Mid(iOrdner);
        const int iStrich = sRest.Find('\\');
        return iStrich < 0 ? SDateieintrag{sRest, false} : SDateieintrag{sRest.Left(iStrich), true};
    }
};

constinit CDateispeicher * s_pBestand = nullptr; // null is the default

} // namespace

CDateispeicher & Bestandsdateien() {
    static CBestandsdateien s_dateien;
    return s_pBestand != nullptr ? *s_pBestand : s_dateien;
}
CDateispeicher * SetzeBestandsdateien(CDateispeicher * pSpeicher) {
    return std::exchange(s_pBestand, pSpeicher);
}

} // namespace orvostat
