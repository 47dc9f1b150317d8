// The fields of the records beside the hit's, for cases by name. Each list has every field, in the class's order.
#pragma once

#include "orvostatbs/records/BehErrors.h"
#include "orvostatbs/records/Gebuehr.h"
#include "orvostatbs/records/NebenHits.h"
#include "orvostatbs/records/Pat.h"
#include "orvostatbs/records/Plan.h"
#include "orvostatbs/records/Stammdaten.h"

#include <concepts>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>

namespace orvostat {

namespace detail {

// Calls f with the names of a list, one after the other, and its values.
template <class F, class... T> void MitNamen(const char * pNamen, F f, T &... werte) {
    std::istringstream ein(pNamen);
    std::string sName;
    ((ein >> sName, sName.erase(sName.find_last_not_of(',') + 1), f(sName, werte)), ...);
}

} // namespace detail

// clang-format off
#define ORVO_SATZ(KLASSE, ...)                                                                               \
    template <class T, class F> requires std::same_as<std::remove_const_t<T>, KLASSE>                        \
    void JedesFeld(T & satz, F f) {                                                                          \
        std::apply([&](const auto &... p) { detail::MitNamen(#__VA_ARGS__, f, satz.*p...); },      \
                   std::tuple(ORVO_ZEIGERLISTE(KLASSE, __VA_ARGS__)));                                       \
    }
#define ORVO_KLAMMER ()
#define ORVO_NOCHMAL(...) ORVO_N3(ORVO_N3(ORVO_N3(ORVO_N3(__VA_ARGS__))))
#define ORVO_N3(...) ORVO_N2(ORVO_N2(ORVO_N2(ORVO_N2(__VA_ARGS__))))
#define ORVO_N2(...) ORVO_N1(ORVO_N1(ORVO_N1(ORVO_N1(__VA_ARGS__))))
#define ORVO_N1(...) __VA_ARGS__
#define ORVO_ZEIGERLISTE(KLASSE, ...) ORVO_NOCHMAL(ORVO_SCHRITT(KLASSE, __VA_ARGS__))
#define ORVO_SCHRITT(KLASSE, NAME, ...)                                                                      \
    &KLASSE::NAME __VA_OPT__(, ORVO_WEITER ORVO_KLAMMER (KLASSE, __VA_ARGS__))
#define ORVO_WEITER() ORVO_SCHRITT

ORVO_SATZ(CMdStruct, m_sMdId, m_sMdName, m_sMdAdr4, m_sMdAb, m_sMdInfo, m_sMdCodes, m_sMdAdr3, m_sMdAdr4b,
          m_sMdAdr1, m_sMdAdr2, m_sMdVollName)
ORVO_SATZ(CLebStruct, m_sLeb, m_sLebAnr, m_sPersId, m_sLebName, m_sMdKasse, m_sMdPrivat, m_sProvision,
          m_iAbschlagGOZ, m_iAbschlagU, m_bLebKz, m_sLebInfo)
ORVO_SATZ(CVDesc, PATNR, m_sVDescNr, VDABDATUM, VDBISDATUM, EINLESEDATUM, KASKUERZEL, VNACHWEIS,
          m_cSonderKsArt, m_sVDescFeld, MFRDIG, RSA, WSO, WSO_ERG, m_sVDescExtra, m_bKostenerstattung,
          GEBUEHRENBEFREITBIS, BPG)
ORVO_SATZ(CBill, PATNR, PATBILL, PRAXISNR, ABRART, KASSENABR, m_bAbrArtE, m_sKennung1, m_sFakt2, m_sFakt2Alt,
          m_sKKFakt, m_sKennung2, m_sFakt1, m_sFakt1Alt, PLANNR, m_sBillInfo1, m_sBillInfo2)
ORVO_SATZ(CKas, KASKUERZEL, m_sKasFeld0, m_sGueltigAb, m_bKasKz, KASSENPWGRP, m_sKasIk, BKVKASNR, KASSENART,
          m_sKasFeld1, m_sKasFeld2, m_sKasSort, KASSTATISTIKART, KASMEDSTATISTIKART, KASSENGRP, m_iKasFlag2,
          FREMDKASSE, m_cKasKz)
ORVO_SATZ(CPw, m_sPwGrp, m_cPwLArt, m_sPwAb, m_PwWest, m_PwOst, m_sPwInfo)
ORVO_SATZ(CBehErrors, PATNR, DATUM, LSTIN, KASKUERZEL, MFRDIG, WSO, WSO_ERG, m_iFehler, SITZUNG, LFDBEHEINTRAG,
          GOART)
ORVO_SATZ(CPwGrp, m_sPwGrp, m_sPwGrpName)
ORVO_SATZ(CGOStruct, m_sLst, m_sKuerzel, m_sLstLower, m_sKuerzelLower, m_cGoArt, m_cGoSubArt, m_sDruckbild,
          m_cPwLArt, m_cStatArt, m_sGoFeld1, m_sGoFeld2, m_sGoFeld3, m_iGebPkt, m_iPunkte2, m_iPunkte3,
          m_iPunkte4, m_Zuschlag, m_Betrag2, m_Einfachsatz, m_EinfachsatzV, m_iF100AEV, m_iPruefZeitT,
          m_iPruefZeitQ, m_cGoKz, m_sGoText, m_sProvGrp, m_sFaktor, m_sStdFaktor, m_sGoWert3Text)
ORVO_SATZ(CPat, PATNR, SELEKTION, m_sAdrNr, PATTITEL, PATVORNAME, PATZUSATZ, PATNAME, PATGEBDATUM, PATSTRASSE,
          PATPLZ, PATORT, PATANREDE, PATTELEFON, m_sTelefon2, m_sTelefon3, m_sTelefon4, PATEMAIL, m_sTelefon6,
          TELEFONPRIO, LASTBEHDATUM, GESCHLECHT, UEBERWARZT, HAUSARZT, EINTRDATUM, RISIKOANAMNESE, RECALLART,
          RECALLITV, LASTRECALL, BENACHRICHTIGUNG, m_sPatFeld1, m_bPatValid, BEHANDLERNR, m_iPatProzent,
          m_bPatGelesen, BEHDAUER, FRUEHERENAMEN, FRUCHT, m_sPflegegrad, m_sPflegegradEnde, m_sPatFeld2,
          m_sFallBesonderheit, INDEXMARKERS, m_sPatFeld3)
ORVO_SATZ(CPlan, PATNR, PLANNR, m_sPlanArt, m_iKasProzent, m_sPlanFeld, m_bPlanOk, m_bMitLst5, m_bMitAbschlag,
          m_sPlanDatum, m_PlanPw, m_MischPw, m_sBevA, m_sBevB)
ORVO_SATZ(CGipsHitLine, GIPSNR, PATNR, DATUM, GIPSART, BEHANDLERNR, BESCHREIBUNG, GEDRUCKT, ARCHIVIERT, PATNAME,
          PATVORNAME, PATTITEL, PATZUSATZ, PATGEBDATUM, m_iGipsFrei, m_bGipsFrei1, m_bGipsFrei2)
ORVO_SATZ(CGlabHitLine, LABORKUNDE, LFDGLBLOC, m_bGlabStatus, m_sGlab1, m_sGlab2, m_sGlab3, m_sGlab4, m_sGlab5,
          m_sGlab6, m_sGlab7, m_sGlab8, m_sGlab9, m_sGlab10, m_sGlab11, m_sGlab12, m_sGlab13, m_sGlab14,
          TECHNLST, MATERIAL, METALL, PRAXMAT, USTGES, NETTO, GESAMT)
ORVO_SATZ(CGlabFaktHitLine, PRAXISNR, LABORKUNDE, LFDGLKUFAKT, m_sGlabFakt1, FAKTDATUM, VONDATUM, BISDATUM,
          ANZGLBLOCKS, BEGLICHEN, SKONTOPROZENT, STORNIERT, TECHNLST, MATERIAL, METALL, PRAXMAT, USTGES, NETTO,
          GESAMT)
ORVO_SATZ(CRechHitLine, PRAXISNR, PATNR, FAKT1, FORTLFDJAHR, FORTLFDFAKT, DATUM, FORMULARNR, PATNAME,
          PATVORNAME, RECHBETRAG, RECHBETRAGK, HONORAR, HONMWSTBETRAG, ELABGESAMT, FLABGESAMT, ELABMWSTBETRAG,
          BEGLICHEN, AUSGEBUCHT, STORNIERT, MAHNSTUFE, KTRAEGER, KASKUERZEL, PATTELEFON, BEHANDLERNR,
          CASHDATUM, ZAHLUNGSWEGDESC)
ORVO_SATZ(CVerordnungHitLine, m_sVoKey1, m_sVoKey2, m_sVoName, m_sVoGebDatum, m_sVoFeld, m_sVoSchluessel,
          m_bVoBlanko, m_sVoIcd1, m_sVoIcd2, m_sVoIcdListe, m_iVoAnzahl, m_VoBetrag)
// clang-format on

} // namespace orvostat
