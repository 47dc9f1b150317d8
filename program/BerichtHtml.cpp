#include "BerichtHtml.h"

#include "EingebetteteDateien.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <sstream>
#include <string_view>
#include <utility>

#include <openssl/evp.h>

namespace orvostat {

namespace {

// Text for an element or an attribute in quotes, without control characters.
std::string Maskiert(std::string_view sUtf8) {
    std::string s;
    for (const char c : sUtf8) {
        switch (c) {
        case '&':
            s += "&amp;";
            break;
        case '<':
            s += "&lt;";
            break;
        case '>':
            s += "&gt;";
            break;
        case '"':
            s += "&quot;";
            break;
        case '\'':
            s += "&#39;";
            break;
        default:
            s += static_cast<unsigned char>(c) < 0x20 && c != '\n' ? ' ' : c;
        }
    }
    return s;
}

// "-1234.5" as "-1.234,5".
std::string DeutscheZahl(std::string s) {
    const std::size_t iPunkt = std::min(s.find('.'), s.size());
    if (iPunkt < s.size()) s[iPunkt] = ',';
    const std::size_t iErste = s.starts_with('-') ? 1 : 0;
    for (std::size_t i = iPunkt; i > iErste + 3;)
        s.insert(i -= 3, 1, '.');
    return s;
}

std::string Zelle(const CString & sZelle, EZelle eZelle) {
    switch (eZelle) {
    case EZelle::Zahl:
        return Maskiert(DeutscheZahl(sZelle.Utf8()));
    case EZelle::Datum:
        return Maskiert(Db2Date(sZelle).Utf8());
    case EZelle::Text:
        break;
    }
    return Maskiert(sZelle.Utf8());
}

// The source of a script for the page's policy: only those run that are the program's own.
std::string Quelle(std::string_view sSkript) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> acSumme{};
    unsigned iLaenge = 0;
    EVP_Digest(sSkript.data(), sSkript.size(), acSumme.data(), &iLaenge, EVP_sha256(), nullptr);
    std::array<unsigned char, 2 * EVP_MAX_MD_SIZE> acText{};
    const int iText = EVP_EncodeBlock(acText.data(), acSumme.data(), static_cast<int>(iLaenge));
    return "'sha256-" + std::string(acText.begin(), acText.begin() + iText) + '\'';
}

// ---- tables

class CHtmlTabelle final : public CAusgabe {
public:
    CHtmlTabelle(std::ostream & aus, const std::string & sTitel, std::span<const SAusgabespalte> vSpalten,
                 std::size_t iMarke)
        : m_aus(aus), m_vSpalten(vSpalten), m_iMarke(iMarke) {
        m_aus << "<div class=\"tafel\" role=\"region\" tabindex=\"0\" aria-label=\"" << Maskiert(sTitel)
              << "\"><table>\n<thead><tr>";
        for (const SAusgabespalte & spalte : vSpalten)
            m_aus << "<th scope=\"col\"" << (spalte.eZelle == EZelle::Zahl ? " class=\"z\">" : ">")
                  << Maskiert(spalte.pName) << Einheit(spalte) << "</th>";
        m_aus << "</tr></thead>\n<tbody>\n";
    }
    void Zeile(const std::vector<CString> & vZellen) override {
        ++m_iZeilen;
        Schreibe(vZellen, m_iMarke != 0 && !vZellen[m_iMarke].IsEmpty() ? "<tr class=\"ueber\">" : "<tr>");
    }
    void Summe(const std::vector<CString> & vZellen) override {
        m_aus << "</tbody>\n<tfoot>\n";
        m_bSumme = true;
        Schreibe(vZellen, "<tr>");
    }
    void Ende() override {
        m_aus << (m_bSumme ? "</tfoot>" : "</tbody>") << "</table></div>\n";
        if (m_iZeilen == 0) m_aus << "<p class=\"leer\">Nichts in diesem Zeitraum.</p>\n";
    }

private:
    static std::string Einheit(const SAusgabespalte & spalte) {
        return *spalte.pEinheit == 0 ? "" : " <small>" + Maskiert(spalte.pEinheit) + "</small>";
    }
    void Schreibe(const std::vector<CString> & vZellen, const char * pZeile) {
        m_aus << pZeile;
        for (std::size_t i = 0; i < m_vSpalten.size(); ++i) {
            const EZelle eZelle = m_vSpalten[i].eZelle;
            const bool bKopf = i == 0 && eZelle == EZelle::Text;
            m_aus << (bKopf                     ? "<th scope=\"row\">"
                      : eZelle == EZelle::Zahl  ? "<td class=\"z\">"
                      : i != 0 && i == m_iMarke ? "<td class=\"marke\">"
                                                : "<td>")
                  << Zelle(vZellen[i], eZelle) << (bKopf ? "</th>" : "</td>");
        }
        m_aus << "</tr>\n";
    }

    std::ostream & m_aus;
    std::span<const SAusgabespalte> m_vSpalten;
    std::size_t m_iMarke;
    std::size_t m_iZeilen = 0;
    bool m_bSumme = false;
};

// Rows of name, number and unit.
class CHtmlKarten final : public CAusgabe {
public:
    explicit CHtmlKarten(std::ostream & aus) : m_aus(aus) { m_aus << "<dl class=\"karten\">\n"; }
    void Zeile(const std::vector<CString> & vZellen) override {
        const bool bLeer = vZellen[1].IsEmpty();
        m_aus << "<div><dt>" << Zelle(vZellen[0], EZelle::Text) << "</dt><dd><span class=\"z\">"
              << (bLeer ? "–" : Zelle(vZellen[1], EZelle::Zahl)) << "</span> <small>"
              << Zelle(vZellen[2], EZelle::Text) << "</small></dd></div>\n";
    }
    void Ende() override { m_aus << "</dl>\n"; }

private:
    std::ostream & m_aus;
};

// ---- the page

class CBerichtseite final : public CDokument {
public:
    explicit CBerichtseite(std::ostream & aus) : m_aus(aus) {}
    void Kopf(const std::vector<SKopfzeile> & vKopf) override { m_vKopf = vKopf; }
    void Bild(const SBild & bild) override { m_bild = bild; }
    CAusgabe & Tabelle(const std::string & sTitel, std::span<const SAusgabespalte> vSpalten) override {
        if (!m_vTitel.empty()) m_inhalt << "</section>\n";
        m_vTitel.push_back(sTitel);
        m_inhalt << "<section id=\"t" << m_vTitel.size() << "\"><h2>" << Maskiert(sTitel) << "</h2>\n";
        const std::optional<SBild> bild = std::exchange(m_bild, std::nullopt);
        if (bild && bild->eBild == EBild::Karten) {
            m_pTabelle = std::make_unique<CHtmlKarten>(m_inhalt);
        } else {
            if (bild) Figur(*bild);
            m_pTabelle = std::make_unique<CHtmlTabelle>(m_inhalt, sTitel, vSpalten, bild ? bild->iMarke : 0);
        }
        return *m_pTabelle;
    }
    void Satz(const std::string & sSatz) override { m_inhalt << "<p>" << Maskiert(sSatz) << "</p>\n"; }
    [[nodiscard]] bool FuerPersonen() const override { return true; }
    void Ende(const std::string & sUnvollstaendig) override {
        if (!m_vTitel.empty()) m_inhalt << "</section>\n";
        Anfang();
        m_aus << "<body>\n<header><h1>" << Maskiert(Titel()) << "</h1>\n";
        if (!sUnvollstaendig.empty())
            m_aus << "<p class=\"warnung\">" << Maskiert(sUnvollstaendig) << "</p>\n";
        m_aus << "<dl class=\"kopf\">\n";
        for (const SKopfzeile & zeile : m_vKopf)
            m_aus << "<div><dt>" << Maskiert(zeile.sName) << "</dt><dd>" << Maskiert(zeile.sWert)
                  << "</dd></div>\n";
        m_aus << "</dl></header>\n<nav aria-label=\"Inhalt\"><ul>\n";
        for (std::size_t i = 0; i < m_vTitel.size(); ++i)
            m_aus << "<li><a href=\"#t" << i + 1 << "\">" << Maskiert(m_vTitel[i]) << "</a></li>\n";
        m_aus << "</ul></nav>\n<main>\n"
              << m_inhalt.str() << "</main>\n<footer><p>Die Bilder zeichnet Chart.js.</p>\n"
              << "<details><summary>Lizenz von Chart.js</summary><pre>" << Maskiert(CHART_LIZENZ)
              << "</pre></details></footer>\n<script>" << CHART_JS << "</script>\n<script>" << BERICHT_JS
              << "</script>\n</body>\n</html>\n";
    }

private:
    [[nodiscard]] std::string Titel() const {
        for (const SKopfzeile & zeile : m_vKopf)
            if (zeile.sName == "Zeitraum") return "Bericht " + zeile.sWert;
        return "Bericht";
    }

    void Anfang() {
        m_aus << "<!DOCTYPE html>\n<html lang=\"de\">\n<head>\n<meta charset=\"utf-8\">\n"
                 "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; "
                 "style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'; script-src "
              << Quelle(CHART_JS) << ' ' << Quelle(BERICHT_JS)
              << "\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                 "<meta name=\"color-scheme\" content=\"light dark\">\n<meta name=\"referrer\" "
                 "content=\"no-referrer\">\n<link rel=\"icon\" href=\"data:,\">\n<title>"
              << Maskiert(Titel()) << "</title>\n<style>\n"
              << BERICHT_CSS
              << "</style>\n<noscript><style>figure { display: none }</style></noscript>\n</head>\n";
    }

    // The script draws it from the table that comes next.
    void Figur(const SBild & bild) {
        static constexpr const char * ARTEN[] = {"karten", "saeulen", "balken", "abweichung"};
        m_inhalt << "<figure data-art=\"" << ARTEN[static_cast<std::size_t>(bild.eBild)]
                 << "\" data-reihen=\"";
        for (std::size_t i = 0; i < bild.viReihen.size(); ++i)
            m_inhalt << (i == 0 ? "" : " ") << bild.viReihen[i];
        m_inhalt << "\" data-einheit=\"" << Maskiert(bild.sEinheit) << "\" data-grenze=\"" << bild.iGrenze
                 << "\" data-marke=\"" << bild.iMarke << "\" data-zeilen=\"" << bild.iHoechstens << '"'
                 << (bild.bGestapelt ? " data-gestapelt" : "") << "><figcaption>" << Maskiert(bild.sTitel)
                 << (bild.sEinheit.empty() ? "" : " <small>in " + Maskiert(bild.sEinheit) + "</small>")
                 << "</figcaption><div class=\"bild\"><canvas role=\"img\" aria-label=\""
                 << Maskiert(bild.sTitel + ". " + bild.sText) << "\">" << Maskiert(bild.sText)
                 << "</canvas></div></figure>\n";
    }

    std::ostream & m_aus;
    std::ostringstream m_inhalt;
    std::vector<SKopfzeile> m_vKopf;
    std::vector<std::string> m_vTitel;
    std::optional<SBild> m_bild;
    std::unique_ptr<CAusgabe> m_pTabelle;
};

} // namespace

std::unique_ptr<CDokument> NeueBerichtseite(std::ostream & aus) {
    return std::make_unique<CBerichtseite>(aus);
}

} // namespace orvostat
