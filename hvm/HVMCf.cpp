#include "orvostatbs/hvm/HVMCf.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <cstdlib>
#include <ranges>
#include <utility>

namespace orvostat {

namespace {

// Lengths of the stored values.
constexpr int LAENGE_EINSTELL = 21;
constexpr int LAENGE_FLAGS = 20; // all other rows of flags
constexpr int LAENGE_DATUM = 8;
constexpr int LAENGE_LEISTUNG = 7;
constexpr int LEISTUNGEN_JE_ZEILE = 11;
constexpr int MAX_URLAUBE = 5;

// Places of a row key: "bg-01c", "ur-0120240", "at-012024".
constexpr int STELLE_GRUPPE = 1;
constexpr int STELLE_MANDANT = 3;
constexpr int LAENGE_MANDANT = 2;
constexpr int STELLE_ART = 5;
constexpr int STELLE_JAHR = 5;
constexpr int LAENGE_JAHR = 4;

constexpr char TRENNER = '|';

// The words of the pots, for GetSelText. A pot's letter is no billing kind, though most look alike: "i", "2" and "e"
// are the pots' own.
constexpr struct {
    char cArt;
    const char * pText;
} POTTEXTE[] = {{'c', "KCH"}, {'z', "ZE"},  {'k', "KFO"}, {'b', "KBR"},
                {'p', "PAR"}, {'i', "IMP"}, {'2', "ZE"},  {'e', "PAR"}};

bool NurZiffern(const CString & s, int iStellen) {
    return s.GetLength() == iStellen && std::ranges::all_of(CSicht(s).Text(), ismxdigit);
}

// The date at a place of a stored value; empty where there is none.
CString Datum(const CString & sWert, int iStelle) {
    const CString s = sWert.Mid(iStelle, LAENGE_DATUM);
    return NurZiffern(s, LAENGE_DATUM) ? s : CString();
}

CString MandantKey(const CString & sMandant) { return RightFix(sMandant, LAENGE_MANDANT); }

bool GleicherMandant(const CString & sA, const CString & sB) { return MandantKey(sA) == MandantKey(sB); }

CString BgKey(const CString & sMandant, char cArt, char cGruppe) {
    return CString("b") + cGruppe + "-" + MandantKey(sMandant) + cArt;
}

CString ZweiStellen(int i) {
    CString s;
    s.Format("%02d", i);
    return s;
}

// The integer value of one character of a stored value; 0 behind its end.
int Ziffer(const CString & sWert, int iStelle) {
    const char c = sWert.GetAt(iStelle);
    return ismxdigit(c) ? c - '0' : 0;
}

bool LiesFlag(const CString & sWert, int iStelle, EHvmLesen eLesen) {
    if (eLesen == EHvmLesen::AusserNull) return sWert.GetAt(iStelle) != '0';
    if (eLesen == EHvmLesen::FehlendWahr && iStelle >= sWert.GetLength()) return true;
    return Ziffer(sWert, iStelle) != 0;
}

// A row of flags, filled up with "0".
CString FlagsWert(std::span<const bool> abFlags) {
    CString sWert('0', LAENGE_FLAGS);
    for (std::size_t i = 0; i < abFlags.size(); ++i)
        if (abFlags[i]) sWert.SetAt(static_cast<int>(i), '1');
    return sWert;
}

void LiesFlags(const CString & sWert, std::span<bool> abFlags) {
    for (std::size_t i = 0; i < abFlags.size(); ++i)
        abFlags[i] = Ziffer(sWert, static_cast<int>(i)) != 0;
}

// Former versions doubled the "e" that stands for an empty selection.
CString OhneDoppelE(CString s) {
    while (s.GetAt(0) == 'e' && s.GetAt(1) == 'e')
        s = s.Mid(1);
    return s;
}

void LiesHauptzeile(CHVMBgParam & bg, const CString & sKuerzel, const CString & sWert) {
    bg.m_sMandant = sKuerzel.Mid(STELLE_MANDANT, LAENGE_MANDANT);
    bg.m_cArt = sKuerzel.GetAt(STELLE_ART);
    CString & sAuswahl = bg.m_mSel[sKuerzel.GetAt(STELLE_GRUPPE)][CString()];
    sAuswahl.Empty();
    bg.m_bBudget = false;
    bg.m_iWert = -1;
    bg.m_bAktiv = false;
    int iAb = 0;
    for (int iFeld = 0; iFeld < 4; ++iFeld) {
        const int iEnde = sWert.Find(TRENNER, iAb);
        if (iEnde < 0) return;
        const CString sFeld = sWert.Mid(iAb, iEnde - iAb);
        iAb = iEnde + 1;
        switch (iFeld) {
        case 0:
            sAuswahl = OhneDoppelE(sFeld);
            break;
        case 1:
            bg.m_bBudget = Zahl(sFeld) != 0;
            break;
        case 2:
            bg.m_iWert = Zahl(sFeld);
            break;
        default:
            bg.m_bAktiv = Zahl(sFeld) != 0;
            break;
        }
    }
}

void LiesExtrazeile(CHVMBgParam & bg, const CString & sKuerzel, const CString & sWert) {
    const int iTrenner = sWert.Find(TRENNER);
    if (iTrenner < 1) return;
    bg.m_mSel[sKuerzel.GetAt(STELLE_GRUPPE)][sWert.Mid(iTrenner + 1)] = OhneDoppelE(sWert.Left(iTrenner));
}

CString HauptWert(const CHVMBgParam & bg, const std::map<CString, CString> & mSel) {
    const auto it = mSel.find(CString());
    CString sAuswahl = it == mSel.end() ? CString() : it->second;
    if (!bg.m_bBudget && sAuswahl.IsEmpty()) sAuswahl = "e";
    CString sWert;
    for (const CString & sFeld : {sAuswahl, itoc(bg.m_bBudget), itoc(bg.m_iWert), itoc(bg.m_bAktiv)})
        sWert += sFeld + TRENNER;
    return sWert;
}

} // namespace

CString HvmFeiertagKuerzel() { return "feiertag"_t; }

void LiesHvmFeiertage(const CString & sWert, bool (&abFeiertag)[HVM_FEIERTAGE]) {
    LiesFlags(sWert, abFeiertag);
}

const CString CHVMCf::s_sBgGruppen = "gpeinlosbavtxzdhkrc"_t;

CHVMCf::CHVMCf()
    : m_sGruppe(RightFix(itoc(HVM_GRUPPE), 3)), m_sEinstell("einstell"_t), m_sEinstellX("einstellx"_t),
      m_sFeiertagKey(HvmFeiertagKuerzel()), m_sBgArten("czkmbp -123456789"_t) {
    Init();
}

void CHVMCf::Init() {
    SetzeSchalter();
    std::fill(std::begin(m_abFeiertag), std::end(m_abFeiertag), false);
    m_vBgParam.clear();
    m_vUrParam.clear();
    m_vLeistungen.clear();
    m_bVollstaendig = true;
}

void CHVMCf::SetzeSchalter() {
    for (const SHvmSchalter & schalter : HVM_SCHALTER)
        if (schalter.pFlag)
            this->*schalter.pFlag = schalter.bStart;
        else
            this->*schalter.pZahl = 0;
}

// ---- single rows

void CHVMCf::SetzeSchluessel(const CString & sKuerzel) {
    m_ParPool.m_GRUPPE = m_sGruppe;
    m_ParPool.m_KUERZEL = sKuerzel;
}

// Whether a read has given a row; notes where it has failed.
bool CHVMCf::Gelesen(int iErgebnis) {
    m_bVollstaendig = m_bVollstaendig && (iErgebnis == ZEILE_OK || iErgebnis == ZEILE_KEINE);
    return iErgebnis == ZEILE_OK;
}

// A row is enough: the walk, which would lock the practice's file, ends here.
bool CHVMCf::LiesZeile(const CString & sKuerzel, MatchMode mode) {
    SetzeSchluessel(sKuerzel);
    const bool bZeile = Gelesen(m_ParPool.GetByK1(mode));
    m_ParPool.InitI();
    return bZeile;
}

bool CHVMCf::Schreibe(const CString & sKuerzel, const CString & sWert) {
    SetzeSchluessel(sKuerzel);
    m_ParPool.m_WERT = sWert;
    return m_ParPool.Write() == ZEILE_OK;
}

// Reads anew after each row: only so does a store that fails on the way to the next one show it.
bool CHVMCf::DeleteParPool(const CString & sKuerzel) {
    int iErgebnis = ZEILE_OK;
    while (iErgebnis == ZEILE_OK) {
        SetzeSchluessel(sKuerzel);
        iErgebnis = m_ParPool.GetByK1(MATCH_ALLE);
        if (iErgebnis == ZEILE_OK && m_ParPool.Delete() != ZEILE_OK) return false;
    }
    return iErgebnis == ZEILE_KEINE;
}

bool CHVMCf::DeleteParPoolAll(const CString & sKuerzel) {
    int iErgebnis = ZEILE_OK;
    while (iErgebnis == ZEILE_OK) {
        SetzeSchluessel(sKuerzel);
        iErgebnis = m_ParPool.GetByTeilKuerzel();
        if (iErgebnis == ZEILE_OK && m_ParPool.Delete() != ZEILE_OK) return false;
    }
    return iErgebnis == ZEILE_KEINE;
}

bool CHVMCf::ExistHVMConf() { return LiesZeile(CString(), MATCH_ALLE); }

// ---- a group of writes

// A store that cannot begin a group is not written to at all. The first failure ends the writing, since the store
// may have given up the group by itself and would take further rows one by one.
void CHVMCf::Gruppiert(bool (CHVMCf::*pSchreibe)()) {
    m_bGespeichert = false;
    if (!m_bVollstaendig) return;
    CMxGruppe gruppe(m_ParPool.Datenbank());
    const bool bGeschrieben = gruppe.Offen() && (this->*pSchreibe)();
    m_ParPool.InitI(); // no walk stays open across the end
    m_bGespeichert = gruppe.Beende(bGeschrieben);
}

bool CHVMCf::WriteParPool() {
    Gruppiert(&CHVMCf::WriteAlles);
    return true;
}

bool CHVMCf::WriteAlles() { return WriteEi() && WriteBg() && WriteUr() && WriteLs(); }

// ---- switches and holidays

void CHVMCf::LiesSchalter(EHvmZeile eZeile) {
    const CString & sWert = m_ParPool.m_WERT;
    for (const SHvmSchalter & schalter : HVM_SCHALTER) {
        if (schalter.eZeile != eZeile) continue;
        if (schalter.pFlag)
            this->*schalter.pFlag = LiesFlag(sWert, schalter.iStelle, schalter.eLesen);
        else
            this->*schalter.pZahl = Ziffer(sWert, schalter.iStelle);
    }
}

CString CHVMCf::SchalterWert(EHvmZeile eZeile) const {
    CString sWert('0', eZeile == EHvmZeile::Einstell ? LAENGE_EINSTELL : LAENGE_FLAGS);
    for (const SHvmSchalter & schalter : HVM_SCHALTER) {
        if (schalter.eZeile != eZeile) continue;
        const int iWert = schalter.pFlag ? this->*schalter.pFlag : std::abs(this->*schalter.pZahl % 10);
        sWert.SetAt(schalter.iStelle, static_cast<char>('0' + iWert));
    }
    return sWert;
}

bool CHVMCf::ReadEi() {
    SetzeSchalter();
    const bool bEinstell = LiesZeile(m_sEinstell);
    if (bEinstell) LiesSchalter(EHvmZeile::Einstell);
    if (!LiesZeile(m_sEinstellX)) return false;
    LiesSchalter(EHvmZeile::EinstellX);
    return bEinstell;
}

bool CHVMCf::WriteEi() {
    return Ersetze(m_sEinstell, SchalterWert(EHvmZeile::Einstell)) &&
           Ersetze(m_sEinstellX, SchalterWert(EHvmZeile::EinstellX));
}

bool CHVMCf::ReadFt() {
    std::fill(std::begin(m_abFeiertag), std::end(m_abFeiertag), false);
    if (!LiesZeile(m_sFeiertagKey)) return false;
    m_sFeiertag = m_ParPool.m_WERT;
    LiesHvmFeiertage(m_sFeiertag, m_abFeiertag);
    return true;
}

bool CHVMCf::WriteFt() {
    Gruppiert(&CHVMCf::WriteFeiertage);
    return true;
}

bool CHVMCf::WriteFeiertage() { return Ersetze(m_sFeiertagKey, FlagsWert(m_abFeiertag)); }

// ---- pots

bool CHVMCf::ReadBg(const CString & sMandant) {
    const CSicht arten(m_sBgArten);
    const CSicht gruppen(s_sBgGruppen);
    for (const char cArt : arten.Text()) {
        m_BgArbeit = CHVMBgParam();
        m_BgArbeit.m_sMandant = sMandant;
        m_BgArbeit.m_cArt = cArt;
        for (const char cGruppe : gruppen.Text())
            LiesBgGruppe(sMandant, cArt, cGruppe);
        m_vBgParam.push_back(m_BgArbeit);
    }
    if (!LiesZeile(CString("bw-") + MandantKey(sMandant))) return true;
    for (CHVMBgParam & bg : m_vBgParam)
        if (GleicherMandant(bg.m_sMandant, sMandant)) bg.m_iBw = Zahl(m_ParPool.m_WERT);
    return true;
}

void CHVMCf::LiesBgGruppe(const CString & sMandant, char cArt, char cGruppe) {
    const CString sKey = BgKey(sMandant, cArt, cGruppe);
    SetzeSchluessel(sKey);
    for (int i = m_ParPool.GetByTeilKuerzel(); Gelesen(i); i = m_ParPool.Next()) {
        if (m_ParPool.m_KUERZEL.GetLength() == sKey.GetLength())
            LiesHauptzeile(m_BgArbeit, m_ParPool.m_KUERZEL, m_ParPool.m_WERT);
        else
            LiesExtrazeile(m_BgArbeit, m_ParPool.m_KUERZEL, m_ParPool.m_WERT);
    }
}

bool CHVMCf::WriteBg() {
    const CHVMBgParam * pVorher = nullptr;
    for (const CHVMBgParam & bg : m_vBgParam) {
        for (const auto & [cGruppe, mSel] : bg.m_mSel)
            if (!WriteBgGruppe(bg, cGruppe, mSel)) return false;
        const bool bNeuerMandant = !pVorher || !GleicherMandant(bg.m_sMandant, pVorher->m_sMandant);
        if (bNeuerMandant && !Ersetze(CString("bw-") + MandantKey(bg.m_sMandant), itoc(bg.m_iBw)))
            return false;
        pVorher = &bg;
    }
    return true;
}

bool CHVMCf::WriteBgGruppe(const CHVMBgParam & bg, char cGruppe, const std::map<CString, CString> & mSel) {
    if (bg.m_cArt == 0 || cGruppe == 0) return true; // no key can hold them
    const CString sKey = BgKey(bg.m_sMandant, bg.m_cArt, cGruppe);
    if (!DeleteParPoolAll(sKey) || !Schreibe(sKey, HauptWert(bg, mSel))) return false;
    int iNummer = 0;
    for (const auto & [sName, sAuswahl] : mSel)
        if (!sName.IsEmpty() && !Schreibe(sKey + ZweiStellen(++iNummer), sAuswahl + TRENNER + sName))
            return false;
    return true;
}

int CHVMCf::FindBgParam(const CString & sMandant, CChar cArt) const {
    const auto it = std::ranges::find_if(m_vBgParam, [&](const CHVMBgParam & bg) {
        return bg.m_cArt == cArt && GleicherMandant(bg.m_sMandant, sMandant);
    });
    return it == m_vBgParam.end() ? -1 : static_cast<int>(it - m_vBgParam.begin());
}

CString CHVMCf::GetSelText(const CString & sMandant) const {
    CString sText;
    for (const CHVMBgParam & bg : m_vBgParam) {
        if (!bg.m_bAktiv || !GleicherMandant(bg.m_sMandant, sMandant)) continue;
        for (const auto & [cArt, pText] : POTTEXTE) {
            if (cArt != bg.m_cArt) continue;
            if (!sText.IsEmpty()) sText += '+';
            sText += CString(pText);
        }
    }
    return sText;
}

// ---- working days and vacations

// The owner's entry for a year of four digits, a fresh one if there is none.
CHVMUrParam & CHVMCf::UrParam(const CString & sMandant, const CString & sJahr) {
    const auto it = std::ranges::find_if(m_vUrParam, [&](const CHVMUrParam & ur) {
        return ur.m_sJahr.Left(LAENGE_JAHR) == sJahr && GleicherMandant(ur.m_sMandant, sMandant);
    });
    CHVMUrParam & ur = it == m_vUrParam.end() ? m_vUrParam.emplace_back() : *it;
    ur.m_sMandant = sMandant;
    ur.m_sJahr = sJahr + "0101";
    return ur;
}

// Rows whose key is not of the stored form are left alone, here and in writing: read, they would come back beside their
// copies, once more with each write.
template <class F>
void CHVMCf::LiesUrZeilen(const CString & sVorsatz, const CString & sMandant, F fUebernimm) {
    SetzeSchluessel(sVorsatz + MandantKey(sMandant));
    for (int i = m_ParPool.GetByK1(MATCH_TEIL); Gelesen(i); i = m_ParPool.Next()) {
        const CString & sKuerzel = m_ParPool.m_KUERZEL;
        const CString sMandantDerZeile = sKuerzel.Mid(STELLE_MANDANT, LAENGE_MANDANT);
        if (!GleicherMandant(sMandantDerZeile, sMandant)) return;
        const CString sJahr = sKuerzel.Mid(STELLE_JAHR, LAENGE_JAHR);
        const CString sNummer = sKuerzel.Mid(STELLE_JAHR + LAENGE_JAHR);
        if (NurZiffern(sJahr, LAENGE_JAHR)) fUebernimm(sMandantDerZeile, sJahr, sNummer, m_ParPool.m_WERT);
    }
}

bool CHVMCf::ReadUr(const CString & sMandant) {
    LiesUrZeilen("ur-", sMandant,
                 [this](const CString & sEigner, const CString & sJahr, const CString & sNummer,
                        const CString & sWert) {
                     const CString sVon = Datum(sWert, 0);
                     // an empty first day is before every day: the owner would never have worked
                     if (sVon.IsEmpty() || !NurZiffern(sNummer, 1) || Zahl(sNummer) >= MAX_URLAUBE) return;
                     UrParam(sEigner, sJahr).m_vUrlaub.emplace_back(sVon, Datum(sWert, LAENGE_DATUM));
                 });
    LiesUrZeilen("at-", sMandant,
                 [this](const CString & sEigner, const CString & sJahr, const CString & sNummer,
                        const CString & sWert) {
                     if (sNummer.IsEmpty()) LiesFlags(sWert, UrParam(sEigner, sJahr).m_abArbeitstag);
                 });
    return true;
}

bool CHVMCf::WriteUr() {
    return std::ranges::all_of(m_vUrParam, [this](const CHVMUrParam & ur) { return WriteUrJahr(ur); });
}

bool CHVMCf::WriteUrJahr(const CHVMUrParam & ur) {
    const CString sJahr = ur.m_sJahr.Left(LAENGE_JAHR);
    if (!NurZiffern(sJahr, LAENGE_JAHR)) return true; // no key can hold it
    const CString sKey = MandantKey(ur.m_sMandant) + sJahr;
    if (!Ersetze(CString("at-") + sKey, FlagsWert(ur.m_abArbeitstag))) return false;
    for (int i = 0; i < MAX_URLAUBE; ++i) {
        const CString sUrKey = CString("ur-") + sKey + itoc(i);
        if (!DeleteParPool(sUrKey)) return false;
        if (static_cast<std::size_t>(i) >= ur.m_vUrlaub.size()) continue;
        const auto & [sVon, sBis] = ur.m_vUrlaub[static_cast<std::size_t>(i)];
        if (!Schreibe(sUrKey, LeftFix(sVon, LAENGE_DATUM) + LeftFix(sBis, LAENGE_DATUM))) return false;
    }
    return true;
}

int CHVMCf::FindUrParam(const CString & sMandant, CString sJahr) const {
    if (sJahr.GetLength() == LAENGE_JAHR) sJahr += "0101";
    const auto it = std::ranges::find_if(m_vUrParam, [&](const CHVMUrParam & ur) {
        return ur.m_sJahr == sJahr && GleicherMandant(ur.m_sMandant, sMandant);
    });
    return it == m_vUrParam.end() ? -1 : static_cast<int>(it - m_vUrParam.begin());
}

// ---- services

bool CHVMCf::ReadLs() {
    m_vLeistungen.clear();
    SetzeSchluessel("leistung"_t);
    for (int i = m_ParPool.GetByK1(MATCH_TEIL); Gelesen(i); i = m_ParPool.Next())
        for (int iAb = 0; iAb < m_ParPool.m_WERT.GetLength(); iAb += LAENGE_LEISTUNG) {
            const CString sLeistung = TrimRight(m_ParPool.m_WERT.Mid(iAb, LAENGE_LEISTUNG));
            if (sLeistung.GetLength() > 1) m_vLeistungen.push_back(sLeistung);
        }
    return true;
}

bool CHVMCf::WriteLs() {
    const CString sKuerzel = "leistung"_t;
    if (!DeleteParPoolAll(sKuerzel)) return false;
    CString sAlle;
    for (const CString & sLeistung : m_vLeistungen)
        sAlle += LeftFix(sLeistung, LAENGE_LEISTUNG);
    constexpr int LAENGE_ZEILE = LEISTUNGEN_JE_ZEILE * LAENGE_LEISTUNG;
    for (int i = 0; i * LAENGE_ZEILE < sAlle.GetLength(); ++i)
        if (!Schreibe(sKuerzel + ZweiStellen(i), sAlle.Mid(i * LAENGE_ZEILE, LAENGE_ZEILE))) return false;
    return true;
}

} // namespace orvostat
