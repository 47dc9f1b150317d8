#include "Ausgabe.h"

#include "orvostatbs/host/Textfunktionen.h"

#include "orvostatbs/host/Datum.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <string_view>

namespace orvostat {

namespace {

constexpr std::size_t ZEILEN_FUER_BREITE = 500;

// Windows-1252 without control characters, which would break a line or drive a terminal.
std::string Sauber(const CString & s) {
    std::string sText(s.Sicht().Text());
    std::ranges::replace_if(
        sText, [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    return sText;
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
            m_viBreite.push_back(AusUtf8(spalte.pName).Sicht().Text().size());
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
        for (const SAusgabespalte & spalte : m_vSpalten)
            vTitel.emplace_back(AusUtf8(spalte.pName).Sicht().Text());
        Schreibe(vTitel);
        for (std::size_t i = 0; i < m_viBreite.size(); ++i)
            m_aus << (i == 0 ? "" : "  ") << std::string(m_viBreite[i], '-');
        m_aus << '\n';
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
        for (std::size_t i = 0; i < vTexte.size(); ++i) {
            const std::string sLuecke(m_viBreite[i] - std::min(m_viBreite[i], vTexte[i].size()), ' ');
            if (i > 0) sZeile += "  ";
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

class CCsvAusgabe final : public CAusgabe {
public:
    CCsvAusgabe(std::ostream & aus, std::span<const SAusgabespalte> vSpalten)
        : m_aus(aus), m_vSpalten(vSpalten) {
        m_aus << "\xEF\xBB\xBF";
        for (std::size_t i = 0; i < vSpalten.size(); ++i)
            m_aus << (i == 0 ? "" : ";") << vSpalten[i].pName;
        m_aus << "\r\n";
    }
    void Zeile(const std::vector<CString> & vZellen) override {
        for (std::size_t i = 0; i < m_vSpalten.size(); ++i)
            m_aus << (i == 0 ? "" : ";") << Zelle(Deutsch(vZellen[i], m_vSpalten[i].eZelle));
        m_aus << "\r\n";
    }
    void Ende() override {}

private:
    static std::string Zelle(const std::string & s1252) {
        std::string s = NachUtf8(s1252);
        if (s.find_first_of(";\"") == s.npos && (s.empty() || (s.front() != ' ' && s.back() != ' ')))
            return s;
        for (auto i = s.find('"'); i != s.npos; i = s.find('"', i + 2))
            s.insert(i, 1, '"');
        return '"' + s + '"';
    }

    std::ostream & m_aus;
    std::span<const SAusgabespalte> m_vSpalten;
};

// ---- json

class CJsonAusgabe final : public CAusgabe {
public:
    CJsonAusgabe(std::ostream & aus, std::span<const SAusgabespalte> vSpalten)
        : m_aus(aus), m_vSpalten(vSpalten) {}
    void Zeile(const std::vector<CString> & vZellen) override {
        m_aus << (m_bErste ? "[\n" : ",\n") << "  {";
        m_bErste = false;
        for (std::size_t i = 0; i < m_vSpalten.size(); ++i)
            m_aus << (i == 0 ? "" : ", ") << Text(m_vSpalten[i].pName) << ": "
                  << Zelle(vZellen[i], m_vSpalten[i].eZelle);
        m_aus << '}';
    }
    void Ende() override { m_aus << (m_bErste ? "[]\n" : "\n]\n"); }

private:
    static std::string Zelle(const CString & s, EZelle eZelle) {
        if (eZelle == EZelle::Text) return Text(s.Utf8());
        if (s.IsEmpty()) return "null";
        if (eZelle == EZelle::Zahl) return IstZahl(s.Utf8()) ? s.Utf8() : Text(s.Utf8());
        return GueltigesDatum(s) ? Text((s.Left(4) + '-' + s.Mid(4, 2) + '-' + s.Mid(6)).Utf8())
                                 : Text(s.Utf8());
    }
    // A number as the format writes it: no blanks, no leading zeros.
    static bool IstZahl(std::string_view s) {
        if (!s.empty() && s.front() == '-') s.remove_prefix(1);
        if (s.empty() || s.find_first_not_of("0123456789.") != s.npos || s.back() == '.' || s.front() == '.')
            return false;
        return std::ranges::count(s, '.') <= 1 && (s[0] != '0' || s.size() == 1 || s[1] == '.');
    }
    static std::string Text(std::string_view sUtf8) {
        std::string s = "\"";
        for (const char c : sUtf8) {
            if (c == '"' || c == '\\') {
                s += '\\';
                s += c;
            } else if (static_cast<unsigned char>(c) < 0x20) {
                std::array<char, 8> ac{};
                std::snprintf(ac.data(), ac.size(), "\\u%04x", static_cast<unsigned>(c));
                s += ac.data();
            } else {
                s += c;
            }
        }
        return s + '"';
    }

    std::ostream & m_aus;
    std::span<const SAusgabespalte> m_vSpalten;
    bool m_bErste = true;
};

} // namespace

std::unique_ptr<CAusgabe> CAusgabe::Neu(EFormat eFormat, std::ostream & aus,
                                        std::span<const SAusgabespalte> vSpalten) {
    switch (eFormat) {
    case EFormat::Csv:
        return std::make_unique<CCsvAusgabe>(aus, vSpalten);
    case EFormat::Json:
        return std::make_unique<CJsonAusgabe>(aus, vSpalten);
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

} // namespace orvostat
