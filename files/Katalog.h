// The catalogue of columns: index, title, form and the slot of the line record, each once.
#pragma once

#include "orvostatbs/files/StatLines.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace orvostat {

// How a slot is written as a column, and read back.
enum class EForm : std::uint8_t {
    Ohne,            // no slot: always empty
    Text,            // as it stands
    Zeichen,         // one character, 0 is empty
    Zeichenzahl,     // the same in an int
    FlaggeEins,      // "1" or "0"; true is only "1"
    FlaggeZahl,      // true is any number but 0
    FlaggeNichtNull, // true is any text but "0", the empty one too
    Zahl,            // decimal
};

// A slot of the line record. Its form follows from the field's type.
struct SSlot {
    EForm eForm = EForm::Ohne;
    union {
        CString CStatLines::*pText = nullptr;
        char CStatLines::*pZeichen;
        int CStatLines::*pZeichenzahl;
        bool CStatLines::*pFlagge;
        unsigned long CStatLines::*pZahl;
    };

    constexpr SSlot() = default;
    constexpr explicit SSlot(CString CStatLines::*p) : eForm(EForm::Text), pText(p) {}
    constexpr explicit SSlot(char CStatLines::*p) : eForm(EForm::Zeichen), pZeichen(p) {}
    constexpr explicit SSlot(int CStatLines::*p) : eForm(EForm::Zeichenzahl), pZeichenzahl(p) {}
    constexpr explicit SSlot(unsigned long CStatLines::*p) : eForm(EForm::Zahl), pZahl(p) {}
    constexpr SSlot(EForm e, bool CStatLines::*p) : eForm(e), pFlagge(p) {}
};

struct SSpalte {
    std::string_view sTitel; // its data end with a 0; null for none
    SSlot slot;
};

#define TITEL(NAME)                                                                                          \
    SSpalte { #NAME, SSlot(&CStatLines::NAME) }
#define GETEILT(NAME, FELD)                                                                                  \
    SSpalte { #NAME, SSlot(&CStatLines::FELD) }
#define FLAGGE(NAME, REGEL)                                                                                  \
    SSpalte { #NAME, SSlot(EForm::Flagge##REGEL, &CStatLines::NAME) }
#define OHNE(NAME)                                                                                           \
    SSpalte { #NAME, SSlot() }
#define UNBENANNT(NAME)                                                                                      \
    SSpalte { {}, SSlot(&CStatLines::NAME) }

// clang-format off
inline constexpr SSpalte KATALOG[] = {
    TITEL(ART), TITEL(PRAXISNR), TITEL(PRAXISNAME), TITEL(BEHANDLERNR), TITEL(BEHANDLERNAME), TITEL(PATNR),
    TITEL(PATNAME), TITEL(VNACHWEIS), TITEL(VERSNR), TITEL(MFRDIG), TITEL(RSA), TITEL(WSO), TITEL(WSO_ERG),
    TITEL(KASKUERZEL), TITEL(BKVKASNR), TITEL(KASSENART), TITEL(BKVKASNAME), TITEL(DATUM), TITEL(LSTNR),
    TITEL(TEETH), TITEL(LSTIN), TITEL(TEXT), TITEL(ABRART), TITEL(GOART), TITEL(LAGE), TITEL(UHRZEIT),
    TITEL(DTAGRUND), TITEL(TEXTART), TITEL(ERFASSER), TITEL(ERFNAME), TITEL(PLANNR), TITEL(EINFACHSATZ),
    TITEL(FAKT1), TITEL(FAKT2), TITEL(BEFUND), TITEL(ABRMERKMAL), FLAGGE(KASSENABR, Eins),
    OHNE(WAEHRUNG_OBSOLET), TITEL(BETRAG), TITEL(PUNKTE), TITEL(FAKTOR), TITEL(EINHEIT), TITEL(ANZAHL),
    TITEL(LSTKUERZEL), TITEL(GOSTATISTIKART), TITEL(GOSTATISTIKNAME), TITEL(GOSUBART),
    TITEL(KASSTATISTIKART), TITEL(KASMEDSTATISTIKART), TITEL(KASARTNAME), TITEL(SELEKTION),
    TITEL(KASSENPWGRP), TITEL(PUNKTWERT), TITEL(PWLART), TITEL(ENTFERNUNG), TITEL(SITZUNG),
    TITEL(LFDBEHEINTRAG), TITEL(FREMDKASSE), TITEL(DRUCKBILD), TITEL(LFDBEFENTRY), TITEL(ZAHNSTEIN),
    TITEL(MUNDKRANKHEIT), TITEL(VDABDATUM), TITEL(ANTEILBEH), TITEL(ANTEILPRAXIS), TITEL(ZUSCHLAG),
    TITEL(MWSTSATZ), TITEL(ANTEILKAS), TITEL(BETRAGJEFALL), TITEL(PUNKTEJEFALL), TITEL(PATTITEL),
    TITEL(PATVORNAME), TITEL(PATZUSATZ), TITEL(PATGEBDATUM), TITEL(F100RVO), TITEL(F100VDAK),
    TITEL(F100GESAMT), TITEL(PATORT), TITEL(PATPLZ), TITEL(PATTELEFON), TITEL(GESCHLECHT), TITEL(ELABGESAMT),
    TITEL(ELABNETTOGESAMT), OHNE(ELABNETTOMWST), OHNE(ELABMWSTSATZ), TITEL(ELABMWSTBETRAG),
    TITEL(LABLSTNETTO), OHNE(LABLSTMWST), TITEL(MATERIALNETTO), OHNE(MATERIALMWST), TITEL(METALLNETTO),
    OHNE(METALLMWST), TITEL(KASSENGRP), TITEL(ANZ01), TITEL(ANZKFONEUFALL), TITEL(ANZFAELLE),
    TITEL(ANZFALLJEABRART), TITEL(PROVISONSGRP), TITEL(PROVISONSWERT), TITEL(ISPRIVATPATIENT),
    TITEL(EINLESEDATUM), TITEL(RISIKOANAMNESE), TITEL(LASTRECALL), TITEL(UEBERWARZT), TITEL(LASTBEHDATUM),
    TITEL(RECHBETRAG), TITEL(HONORAR), TITEL(FLABGESAMT), TITEL(SONSTLAB), TITEL(WEGEGELD), TITEL(ISMKVREC),
    TITEL(KASSENZUSCHUSS), TITEL(ZUSATZKOSTEN), TITEL(FORMULARNR), TITEL(LFDLBLOCK), OHNE(F100PRIMAER),
    OHNE(F100FREMD), TITEL(F100AEV), TITEL(GIPSNR), TITEL(GIPSART), TITEL(BESCHREIBUNG), TITEL(ARCHIVIERT),
    FLAGGE(GEDRUCKT, Zahl), TITEL(EINTRDATUM), TITEL(MATBUCHUNG), OHNE(LABOR), TITEL(ENDGEWICHT),
    TITEL(DMBETRAG), TITEL(GESBETRAG), GETEILT(TECHNIKER, BEHANDLERNR), TITEL(SCHLEIFRESTE),
    TITEL(PREISOMWST), TITEL(SCHLEIFRESTEGES), TITEL(BESTANDOSR), GETEILT(BEMERKUNG, TEXT), TITEL(KTRAEGER),
    TITEL(BEGLICHEN), TITEL(AUSGEBUCHT), FLAGGE(STORNIERT, Zahl), TITEL(MAHNSTUFE), TITEL(VDBISDATUM),
    TITEL(PRUEFZEITT), TITEL(PRUEFZEITQ), TITEL(ROEGRAV), TITEL(ROEANZAHL), TITEL(ROEGERAET),
    TITEL(ROEBELICHTUNG), TITEL(ROEINDIKATION), TITEL(ROEBEMERKUNG), TITEL(ROELFDNR), TITEL(ROELASTDATUM),
    TITEL(ROELASTREGIO), TITEL(ROELASTPASSDRUCK), TITEL(FORTLFDJAHR), TITEL(FORTLFDFAKT), TITEL(LABORKUNDE),
    TITEL(LFDGLKUFAKT), TITEL(FAKTDATUM), TITEL(VONDATUM), TITEL(BISDATUM), TITEL(ANZGLBLOCKS),
    TITEL(SKONTOPROZENT), OHNE(DATUM2), OHNE(DATUM3), OHNE(DATUM4), OHNE(DATUM5), TITEL(TECHNLST),
    TITEL(MATERIAL), TITEL(METALL), TITEL(PRAXMAT), TITEL(USTGES), TITEL(NETTO), TITEL(GESAMT),
    TITEL(BENACHRICHTIGUNG), FLAGGE(ISELAB, NichtNull), FLAGGE(ISORVOPAT, NichtNull), TITEL(PATSTRASSE),
    TITEL(HAUSARZT), TITEL(SUCHKRITERIEN), TITEL(BEHDAUER), TITEL(RECALLART), TITEL(RECALLITV),
    TITEL(RECART), TITEL(LFDGLBLOC), TITEL(ICDNOTATIONSKZ), TITEL(PATBILL), TITEL(PATEMAIL),
    TITEL(CASHDATUM), TITEL(RECHBETRAGK), TITEL(FRUEHERENAMEN), TITEL(ICDCODE), TITEL(ROEXRAYMS),
    TITEL(ROEXRAYCURRENT), TITEL(ROEXRAYVOLTAGE), TITEL(TASCHENTIEFED), TITEL(TASCHENTIEFEM),
    TITEL(TASCHENTIEFEF), TITEL(TASCHENTIEFEO), TITEL(TASCHENTIEFED2), TITEL(TASCHENTIEFEM2), TITEL(FRUCHT),
    TITEL(GEBUEHRENBEFREITBIS), TITEL(LABLSTNETTO7), TITEL(LABLSTNETTOOUST), TITEL(METALLNETTO7),
    TITEL(TECHNMATNETTO), TITEL(TECHNMATNETTO7), TITEL(RECHNUNGSART), TITEL(HONMWSTBETRAG), TITEL(PRAXISID),
    TITEL(BPG), TITEL(PATANREDE), TITEL(INDEXMARKERS), TITEL(TELEFONPRIO), TITEL(LFDRECHNUNGSNR),
    TITEL(LABLSTNETTO5), TITEL(METALLNETTO5), TITEL(TECHNMATNETTO5), TITEL(ZAHLUNGSWEGDESC),
    TITEL(CHARGENNUMMER),
    UNBENANNT(m_sLuFrei220), UNBENANNT(m_sLuFrei221), UNBENANNT(m_sLuFrei222),
    SSpalte{{}, SSlot()},
};
// clang-format on

#undef TITEL
#undef GETEILT
#undef FLAGGE
#undef OHNE
#undef UNBENANNT

inline constexpr int KATALOG_LETZTER = 222; // the last index that the columns of a file use
static_assert(std::size(KATALOG) == 224);

// The index of a title, or of the number of a column without title; throws for any other text.
constexpr int Katalogindex(std::string_view sTitel) {
    if (sTitel == "220") return 220;
    if (sTitel == "221") return 221;
    if (sTitel == "222") return 222;
    for (int i = 0; i <= KATALOG_LETZTER; ++i)
        if (KATALOG[i].sTitel.size() == sTitel.size() && KATALOG[i].sTitel == sTitel) return i;
    throw std::invalid_argument("no such title");
}

// Titles are unique.
static_assert([] {
    for (int i = 0; i <= KATALOG_LETZTER; ++i)
        if (!KATALOG[i].sTitel.empty() && Katalogindex(KATALOG[i].sTitel) != i) return false;
    return true;
}());

} // namespace orvostat
