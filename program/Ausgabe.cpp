#include "Ausgabe.h"

#include "BerichtHtml.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <string_view>
#include <utility>

namespace orvostat {

namespace {

constexpr std::size_t ZEILEN_FUER_BREITE = 500;

// The control characters of Windows-1252: the places that it leaves empty are ones in every other set.
bool IstSteuerzeichen(unsigned char c) {
    return c < 0x20 || c == 0x7F || c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D;
}

// Windows-1252 without control characters, which would break a line or drive a terminal.
std::string Sauber(const CString & s) {
    std::string sText(s.Sicht().Text());
    std::ranges::replace_if(sText, IstSteuerzeichen, ' ');
    return sText;
}
std::string Sauber(const std::string & sUtf8) { return NachUtf8(Sauber(AusUtf8(sUtf8))); }

std::string Titel(const SAusgabespalte & spalte) {
    return *spalte.pEinheit == 0 ? spalte.pName : std::string(spalte.pName) + ' ' + spalte.pEinheit;
}

// A cell as a German reader writes it, Windows-1252.
std::string Deutsch(const CString & sZelle, EZelle eZelle) {
    std::string s = Sauber(eZelle == EZelle::Datum ? Db2Date(sZelle) : sZelle);
    if (eZelle == EZelle::Zahl) std::ranges::replace(s, '.', ',');
    return s;
}

// ---- table

class CTabelleAusgabe final : public CAusgabe {
public:
    CTabelleAusgabe(std::ostream & aus, std::span<const SAusgabespalte> vSpalten)
        : m_aus(aus), m_vSpalten(vSpalten) {
        for (const SAusgabespalte & spalte : vSpalten)
            m_viBreite.push_back(AusUtf8(Titel(spalte)).Sicht().Text().size());
    }
    void Zeile(const std::vector<CString> & vZellen) override {
        std::vector<std::string> vTexte;
        for (std::size_t i = 0; i < m_vSpalten.size(); ++i)
            vTexte.push_back(Gekuerzt(Deutsch(vZellen[i], m_vSpalten[i].eZelle), m_vSpalten[i]));
        if (m_bKopf) return Schreibe(vTexte);
        for (std::size_t i = 0; i < vTexte.size(); ++i)
            m_viBreite[i] = std::max(m_viBreite[i], vTexte[i].size());
        m_vWartend.push_back(std::move(vTexte));
        if (m_vWartend.size() >= ZEILEN_FUER_BREITE) Ende();
    }
    void Ende() override {
        if (m_bKopf) return;
        m_bKopf = true;
        std::vector<std::string> vTitel;
        std::vector<std::string> vStriche;
        for (std::size_t i = 0; i < m_vSpalten.size(); ++i) {
            vTitel.emplace_back(AusUtf8(Titel(m_vSpalten[i])).Sicht().Text());
            vStriche.emplace_back(m_viBreite[i], '-');
        }
        Schreibe(vTitel);
        Schreibe(vStriche);
        for (const auto & vTexte : m_vWartend)
            Schreibe(vTexte);
        m_vWartend.clear();
    }

private:
    static std::string Gekuerzt(std::string s, const SAusgabespalte & spalte) {
        const auto iBreite = static_cast<std::size_t>(spalte.iBreite);
        if (spalte.eZelle == EZelle::Zahl || s.size() <= iBreite) return s;
        return s.substr(0, iBreite - 3) + "...";
    }
    void Schreibe(const std::vector<std::string> & vTexte) {
        std::string sZeile;
        const char * pTrenner = "";
        for (std::size_t i = 0; i < vTexte.size(); ++i) {
            if (m_vSpalten[i].bNurDaten) continue;
            const std::string sLuecke(m_viBreite[i] - std::min(m_viBreite[i], vTexte[i].size()), ' ');
            sZeile += std::exchange(pTrenner, "  ");
            sZeile += m_vSpalten[i].eZelle == EZelle::Zahl ? sLuecke + vTexte[i] : vTexte[i] + sLuecke;
        }
        sZeile.erase(sZeile.find_last_not_of(' ') + 1);
        m_aus << NachUtf8(sZeile) << '\n';
    }

    std::ostream & m_aus;
    std::span<const SAusgabespalte> m_vSpalten;
    std::vector<std::size_t> m_viBreite;
    std::vector<std::vector<std::string>> m_vWartend; // rows by which the widths are found
    bool m_bKopf = false;
};

// ---- csv

constexpr const char * BYTEMARKE = "\xEF\xBB\xBF";
constexpr std::string_view ZAHLZEICHEN = "0123456789,";

// Before a text that a spreadsheet would run an apostrophe makes it one; a number with a sign is none.
std::string Entschaerft(const std::string & s, EZelle eZelle) {
    const std::size_t iErstes = s.find_first_not_of(' ');
    if (iErstes == s.npos || std::string_view("=+-@").find(s[iErstes]) == std::string_view::npos) return s;
    const bool bZahl = eZelle == EZelle::Zahl && s.find_first_not_of(ZAHLZEICHEN, iErstes + 1) == s.npos &&
                       s[iErstes] == '-';
    return bZahl ? s : '\'' + s;
}

std::string CsvZelle(const std::string & sUtf8) {
    std::string s = sUtf8;
    if (s.find_first_of(";\"") == s.npos && (s.empty() || (s.front() != ' ' && s.back() != ' '))) return s;
    for (auto i = s.find('"'); i != s.npos; i = s.find('"', i + 2))
        s.insert(i, 1, '"');
    return '"' + s + '"';
}

class CCsvAusgabe final : public CAusgabe {
public:
    CCsvAusgabe(std::ostream & aus, std::span<const SAusgabespalte> vSpalten)
        : m_aus(aus), m_vSpalten(vSpalten) {
        for (std::size_t i = 0; i < vSpalten.size(); ++i)
            m_aus << (i == 0 ? "" : ";") << Titel(vSpalten[i]);
        m_aus << "\r\n";
    }
    void Zeile(const std::vector<CString> & vZellen) override {
        for (std::size_t i = 0; i < m_vSpalten.size(); ++i)
            m_aus << (i == 0 ? "" : ";") << Zelle(vZellen[i], m_vSpalten[i].eZelle);
        m_aus << "\r\n";
    }
    void Ende() override {}

private:
    static std::string Zelle(const CString & sZelle, EZelle eZelle) {
        return CsvZelle(NachUtf8(Entschaerft(Deutsch(sZelle, eZelle), eZelle)));
    }

    std::ostream & m_aus;
    std::span<const SAusgabespalte> m_vSpalten;
};

// ---- json

std::string JsonText(std::string_view sUtf8) {
    std::string s = "\"";
    const auto Maskiere = [&s](unsigned char c) {
        std::array<char, 8> ac{};
        std::snprintf(ac.data(), ac.size(), "\\u%04x", static_cast<unsigned>(c));
        s += ac.data();
    };
    for (std::size_t i = 0; i < sUtf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(sUtf8[i]);
        const auto cNach = static_cast<unsigned char>(i + 1 < sUtf8.size() ? sUtf8[i + 1] : 0);
        if (c < 0x20 || c == 0x7F) {
            Maskiere(c);
        } else if (c == 0xC2 && cNach < 0xA0) { // U+0080 to U+009F
            Maskiere(cNach);
            ++i;
        } else {
            if (c == '"' || c == '\\') s += '\\';
            s += sUtf8[i];
        }
    }
    return s + '"';
}

class CJsonAusgabe final : public CAusgabe {
public:
    // Ahead of each row stands sEinzug, two blanks more than before the end.
    CJsonAusgabe(std::ostream & aus, std::span<const SAusgabespalte> vSpalten, std::string sEinzug)
        : m_aus(aus), m_vSpalten(vSpalten), m_sEinzug(std::move(sEinzug)) {}
    void Zeile(const std::vector<CString> & vZellen) override {
        m_aus << (m_bErste ? "[\n" : ",\n") << m_sEinzug << "  ";
        m_bErste = false;
        Objekt(vZellen);
    }
    void Summe(const std::vector<CString> & vZellen) override { m_vSumme = vZellen; }
    void Ende() override {
        m_aus << (m_bErste ? "[]" : "\n" + m_sEinzug + "]");
        if (m_sEinzug.empty()) {
            m_aus << '\n';
        } else if (!m_vSumme.empty()) {
            m_aus << ",\n" << m_sEinzug << "\"gesamt\": ";
            Objekt(m_vSumme, true);
        }
    }

private:
    // Of a sum only what it adds up.
    void Objekt(const std::vector<CString> & vZellen, bool bSumme = false) {
        const char * pTrenner = "{";
        for (std::size_t i = 0; i < m_vSpalten.size(); ++i)
            if (!bSumme || (m_vSpalten[i].eZelle == EZelle::Zahl && !vZellen[i].IsEmpty()))
                m_aus << std::exchange(pTrenner, ", ") << JsonText(Titel(m_vSpalten[i])) << ": "
                      << Zelle(vZellen[i], m_vSpalten[i].eZelle);
        m_aus << (*pTrenner == '{' ? "{}" : "}");
    }
    static std::string Zelle(const CString & s, EZelle eZelle) {
        if (eZelle == EZelle::Text) return JsonText(s.Utf8());
        if (s.IsEmpty()) return "null";
        if (eZelle == EZelle::Zahl) return IstZahl(s.Utf8()) ? s.Utf8() : JsonText(s.Utf8());
        return GueltigesDatum(s) ? JsonText((s.Left(4) + '-' + s.Mid(4, 2) + '-' + s.Mid(6)).Utf8())
                                 : JsonText(s.Utf8());
    }
    // A number as the format writes it: no blanks, no leading zeros.
    static bool IstZahl(std::string_view s) {
        if (!s.empty() && s.front() == '-') s.remove_prefix(1);
        if (s.empty() || s.find_first_not_of("0123456789.") != s.npos || s.back() == '.' || s.front() == '.')
            return false;
        return std::ranges::count(s, '.') <= 1 && (s[0] != '0' || s.size() == 1 || s[1] == '.');
    }

    std::ostream & m_aus;
    std::span<const SAusgabespalte> m_vSpalten;
    std::string m_sEinzug;
    std::vector<CString> m_vSumme;
    bool m_bErste = true;
};

// ---- documents

class CTabelleDokument final : public CDokument {
public:
    explicit CTabelleDokument(std::ostream & aus) : m_aus(aus) {}
    void Kopf(const std::vector<SKopfzeile> & vKopf) override {
        std::size_t iBreite = 0;
        for (const SKopfzeile & zeile : vKopf)
            iBreite = std::max(iBreite, zeile.sName.size());
        for (const SKopfzeile & zeile : vKopf)
            m_aus << zeile.sName << std::string(iBreite + 2 - zeile.sName.size(), ' ') << Sauber(zeile.sWert)
                  << '\n';
        m_bLeerzeile = m_bAbsatz = true;
    }
    CAusgabe & Tabelle(const std::string & sTitel, std::span<const SAusgabespalte> vSpalten) override {
        if (std::exchange(m_bLeerzeile, true)) m_aus << '\n';
        if (!sTitel.empty()) m_aus << sTitel << '\n';
        m_bAbsatz = true;
        m_pTabelle = std::make_unique<CTabelleAusgabe>(m_aus, vSpalten);
        return *m_pTabelle;
    }
    [[nodiscard]] bool FuerPersonen() const override { return true; }
    void Satz(const std::string & sSatz) override {
        m_aus << (std::exchange(m_bAbsatz, false) ? "\n" : "") << Sauber(sSatz) << '\n';
        m_bLeerzeile = true;
    }
    void Ende(const std::string & sUnvollstaendig) override {
        if (!sUnvollstaendig.empty()) m_aus << '\n' << sUnvollstaendig << '\n';
    }

private:
    std::ostream & m_aus;
    bool m_bLeerzeile = false;
    bool m_bAbsatz = false; // before a sentence
    std::unique_ptr<CTabelleAusgabe> m_pTabelle;
};

class CCsvDokument final : public CDokument {
public:
    explicit CCsvDokument(std::ostream & aus) : m_aus(aus) { m_aus << BYTEMARKE; }
    void Kopf(const std::vector<SKopfzeile> & vKopf) override {
        for (const SKopfzeile & zeile : vKopf)
            m_aus << zeile.sName << ';' << CsvZelle(Entschaerft(Sauber(zeile.sWert), EZelle::Text)) << "\r\n";
        m_bLeerzeile = true;
    }
    CAusgabe & Tabelle(const std::string & sTitel, std::span<const SAusgabespalte> vSpalten) override {
        if (std::exchange(m_bLeerzeile, true)) m_aus << "\r\n";
        if (!sTitel.empty()) m_aus << sTitel << "\r\n";
        m_pTabelle = std::make_unique<CCsvAusgabe>(m_aus, vSpalten);
        return *m_pTabelle;
    }
    void Ende(const std::string & sUnvollstaendig) override {
        if (!sUnvollstaendig.empty()) m_aus << CsvZelle(sUnvollstaendig) << "\r\n";
    }

private:
    std::ostream & m_aus;
    bool m_bLeerzeile = false;
    std::unique_ptr<CCsvAusgabe> m_pTabelle;
};

class CJsonDokument final : public CDokument {
public:
    explicit CJsonDokument(std::ostream & aus) : m_aus(aus) { m_aus << "{\n"; }
    void Kopf(const std::vector<SKopfzeile> & vKopf) override {
        m_aus << "  \"kopf\": ";
        const char * pTrenner = "{";
        for (const SKopfzeile & zeile : vKopf)
            m_aus << std::exchange(pTrenner, ", ") << JsonText(zeile.sName) << ": " << JsonText(zeile.sWert);
        m_aus << (vKopf.empty() ? "{}" : "}") << ",\n";
    }
    CAusgabe & Tabelle(const std::string & sTitel, std::span<const SAusgabespalte> vSpalten) override {
        m_aus << (m_pTabelle ? "},\n    {" : "  \"tabellen\": [\n    {");
        if (!sTitel.empty()) m_aus << "\"titel\": " << JsonText(sTitel) << ",\n    ";
        m_aus << "\"zeilen\": ";
        m_pTabelle = std::make_unique<CJsonAusgabe>(m_aus, vSpalten, "    ");
        return *m_pTabelle;
    }
    void Ende(const std::string & sUnvollstaendig) override {
        m_aus << (m_pTabelle ? "}\n  ],\n" : "  \"tabellen\": [],\n");
        if (!sUnvollstaendig.empty()) m_aus << "  \"hinweis\": " << JsonText(sUnvollstaendig) << ",\n";
        m_aus << "  \"vollständig\": " << (sUnvollstaendig.empty() ? "true" : "false") << "\n}\n";
    }

private:
    std::ostream & m_aus;
    std::unique_ptr<CJsonAusgabe> m_pTabelle;
};

} // namespace

std::unique_ptr<CDokument> CDokument::Neu(EFormat eFormat, std::ostream & aus) {
    switch (eFormat) {
    case EFormat::Csv:
        return std::make_unique<CCsvDokument>(aus);
    case EFormat::Json:
        return std::make_unique<CJsonDokument>(aus);
    case EFormat::Html:
        return NeueBerichtseite(aus);
    case EFormat::Tabelle:
        break;
    }
    return std::make_unique<CTabelleDokument>(aus);
}

std::unique_ptr<CAusgabe> CAusgabe::Neu(EFormat eFormat, std::ostream & aus,
                                        std::span<const SAusgabespalte> vSpalten) {
    switch (eFormat) {
    case EFormat::Csv:
        aus << BYTEMARKE;
        return std::make_unique<CCsvAusgabe>(aus, vSpalten);
    case EFormat::Json:
        return std::make_unique<CJsonAusgabe>(aus, vSpalten, "");
    case EFormat::Html:
    case EFormat::Tabelle:
        break;
    }
    return std::make_unique<CTabelleAusgabe>(aus, vSpalten);
}

std::vector<std::pair<std::string, EFormat>> Formate() {
    return {{"table", EFormat::Tabelle}, {"csv", EFormat::Csv}, {"json", EFormat::Json}};
}

std::string Dezimal(std::int64_t iWert, int iStellen, int iMindestens, char cPunkt) {
    const auto iBetrag = static_cast<std::uint64_t>(iWert);
    std::string s = std::to_string(iWert < 0 ? 0 - iBetrag : iBetrag);
    const auto iNach = static_cast<std::size_t>(iStellen);
    if (s.size() <= iNach) s.insert(0, iNach + 1 - s.size(), '0');
    const std::size_t iVor = s.size() - iNach;
    while (s.size() > iVor + static_cast<std::size_t>(iMindestens) && s.back() == '0')
        s.pop_back();
    if (s.size() > iVor) s.insert(iVor, 1, cPunkt);
    return (iWert < 0 ? "-" : "") + s;
}

CString DezimalZelle(std::int64_t iWert, int iStellen) {
    return AusUtf8(Dezimal(iWert, iStellen, std::min(iStellen, 2), '.'));
}

CString BetragZelle(const CWBetragBasis & betrag) {
    CString s = betrag.ToExt(0, false);
    s.Replace(',', '.');
    return s;
}

CString GenauZelle(const CWBetragBasis & betrag) {
    return betrag.IsEmpty() ? CString() : AusUtf8(Dezimal(betrag.GetEinheiten(), 8, 2, '.'));
}

} // namespace orvostat
