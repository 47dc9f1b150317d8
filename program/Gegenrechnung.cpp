#include "Gegenrechnung.h"

#include "SqliteZeiger.h"

#include <cstdlib>
#include <map>
#include <memory>
#include <tuple>
#include <utility>

namespace orvostat {

namespace {

constexpr std::int64_t EINHEITEN_JE_CENT = 1000000;

// What stands below says the rules of letters and values a second time on purpose: it recounts without the engine.
//
// The small tables as SQL wants them: indexed by their texts, numbers as numbers, letters as letters. A period counts
// only where its insurer has a row of exactly its code. A point value is NULL unless it is in euro and unsigned.
constexpr const char * VORBEREITUNG = R"sql(
CREATE TEMP TABLE HIT(NR INTEGER PRIMARY KEY, PATNR TEXT, DATUM TEXT, SITZUNG TEXT, LFD TEXT, LST TEXT);
CREATE TEMP TABLE RECHNUNG AS
  SELECT PATNR, PATBILL, PLANNR,
    CASE WHEN SUBSTR(ABRART,1,1) IN ('1','a') THEN 'c'
         WHEN SUBSTR(ABRART,1,1) IN ('2','b') THEN 'z'
         WHEN SUBSTR(ABRART,1,1) IN ('3','c','p') THEN 'k'
         WHEN SUBSTR(ABRART,1,1) IN ('4','d') THEN 'b'
         WHEN SUBSTR(ABRART,1,1) IN ('5','e') THEN 'p'
         WHEN SUBSTR(ABRART,1,1) = '6' THEN 'i'
         WHEN SUBSTR(ABRART,1,1) IN ('7','8','g','t') THEN 'e'
         WHEN SUBSTR(ABRART,1,1) = 'n' THEN 'r' ELSE 's' END AS ABR
  FROM BILL;
CREATE INDEX temp.RECHNUNG1 ON RECHNUNG(PATNR, PATBILL);
CREATE TEMP TABLE KASSE AS
  SELECT KASKUERZEL AS KURZ, GUELTIGAB AS AB, LOWER(KASSENPWGRP) AS GRP FROM ORVOKAS, temp.AUFTRAG
  WHERE KASFLAG1 = '1' OR NOT GESETZLICHE;
CREATE INDEX temp.KASSE1 ON KASSE(KURZ, AB);
CREATE TEMP TABLE PERIODE AS
  SELECT PATNR, VDABDATUM AS AB, VDBISDATUM AS BIS, VDESCNR, KASKUERZEL, WSO, SUBSTR(KSART,1,1) AS BESONDERS,
    VNACHWEIS IN ('p','P','O') OR (EEB = '1' AND SUBSTR(VNACHWEIS,1,1) = 'p') AS PRIVAT
  FROM VDESC WHERE KASKUERZEL <> '' AND KASKUERZEL IN (SELECT KURZ FROM temp.KASSE);
CREATE INDEX temp.PERIODE1 ON PERIODE(PATNR, AB);
CREATE TEMP TABLE WERT AS
  SELECT LOWER(PWGRP) AS GRP, SUBSTR(PWLART,1,1) AS ART, PWAB AS AB,
    CASE WHEN PWWEST GLOB 'e[0-9]*' AND SUBSTR(PWWEST,2) NOT GLOB '*[^0-9.]*' THEN CAST(SUBSTR(PWWEST,2) AS REAL) END AS WEST,
    CASE WHEN PWOST GLOB 'e[0-9]*' AND SUBSTR(PWOST,2) NOT GLOB '*[^0-9.]*' THEN CAST(SUBSTR(PWOST,2) AS REAL) END AS OST
  FROM PUNKTWERT WHERE PWGRP <> '';
CREATE INDEX temp.WERT1 ON WERT(GRP, ART, AB);
CREATE TEMP TABLE ZEILE AS
  SELECT GOART, LOWER(LSTNR) AS LST, SUBSTR(GOSUBART,1,1) AS SUB, SUBSTR(PWLART,1,1) AS LART,
    CAST(GEBPKT AS INTEGER) AS PUNKTE, EINFACHSATZ,
    CASE WHEN CAST(FAKTOR AS INTEGER) = 0 THEN STDFAKTOR ELSE FAKTOR END AS FAKTOR, MIN(LFD) AS LFD
  FROM GO GROUP BY GOART, LOWER(LSTNR);
CREATE INDEX temp.ZEILE1 ON ZEILE(GOART, LST);
CREATE TEMP TABLE PUNKTE AS SELECT GOART, LOWER(LSTNR) AS LST, PKTAB AS AB, CAST(PUNKTE AS INTEGER) AS N FROM GOPUNKTE;
CREATE INDEX temp.PUNKTE1 ON PUNKTE(GOART, LST, AB);
)sql";

// Each hit with what it is valued by, then its amount in hundred-millionths of a euro or, where SQL does not value it,
// NULL and the reason.
constexpr const char * BEWERTUNG = R"sql(
WITH
LQ(F) AS (SELECT IFNULL((SELECT CASE WHEN CAST(K.LQ AS INTEGER) = 0 THEN 10000 ELSE CAST(K.LQ AS INTEGER) END
                         FROM KZV K WHERE K.KZVNR = (SELECT P.KZVNR FROM PRAXIS P ORDER BY P.PRAXISID LIMIT 1)), 10000)),
ENTRY AS (
  SELECT H.NR, LOWER(H.LST) AS LAUFLST, B.PATNR, B.DATUM, B.GOART AS ART, B.BETRAG, B.ABRMERKMAL AS MARKE,
    B.ENTFERNUNG, B.ICDNOTATIONSKZ AS NOTATION, B.FAKTOR,
    LOWER(B.LSTNR) || CASE WHEN B.GOART IN ('k','g') AND B.LSTNR IN ('13a','13b','13c','13d') AND B.DTAGRUND = 'f' THEN '0'
                           WHEN B.GOART IN ('k','g') AND B.LSTNR IN ('13a','13b','13c','13d') AND B.DTAGRUND = 'i' THEN '1'
                           ELSE '' END AS LST,
    CASE WHEN CAST(SUBSTR(B.ANZAHL,2) AS INTEGER) = 0 THEN 100 ELSE CAST(SUBSTR(B.ANZAHL,2) AS INTEGER) END AS ANZAHL,
    R.PLANNR, R.ABR
  FROM temp.HIT H
  JOIN BEH B ON B.SCHLUESSEL1 = CAST(RTRIM(H.PATNR) || X'00' || H.DATUM || X'00' || RTRIM(H.SITZUNG) || X'00' || RTRIM(H.LFD) || X'00' AS BLOB)
  LEFT JOIN temp.RECHNUNG R ON R.PATNR = B.PATNR AND R.PATBILL = B.PATBILL AND TRIM(B.PATBILL) <> ''),
MIT AS (
  SELECT E.*, Z.SUB, Z.LART, Z.EINFACHSATZ,
    IFNULL((SELECT N FROM temp.PUNKTE P WHERE P.GOART = E.ART AND P.LST = E.LST AND P.AB <= E.DATUM ORDER BY AB DESC LIMIT 1),
           Z.PUNKTE) AS PUNKTE,
    CAST(CASE WHEN E.FAKTOR = '' THEN Z.FAKTOR ELSE E.FAKTOR END AS INTEGER) AS F,
    (SELECT V.ROWID FROM temp.PERIODE V WHERE V.PATNR = E.PATNR AND V.AB <= E.DATUM AND (V.BIS = '' OR V.BIS >= E.DATUM)
     ORDER BY V.PRIVAT, CASE WHEN V.PRIVAT THEN 0 ELSE V.BESONDERS NOT IN ('','a') END, V.AB DESC, V.VDESCNR DESC LIMIT 1)
      AS PERIODE
  FROM ENTRY E LEFT JOIN temp.ZEILE Z ON Z.GOART = E.ART AND Z.LST = E.LST),
ARTEN AS (
  SELECT M.*, V.WSO, V.BESONDERS, V.KASKUERZEL,
    CASE WHEN M.LART IN ('c','d','e') THEN M.LART
         WHEN M.ABR = 'k' AND M.SUB NOT IN ('7','8','5','6') AND M.LART IN ('a','b') THEN M.LART
         WHEN M.ABR = 'c' THEN 'a' WHEN M.ABR = 'k' THEN 'i' WHEN M.ABR = 'b' THEN 'h' WHEN M.ABR = 'p' THEN 'g'
         WHEN M.ABR = 'z' THEN 'f' WHEN M.ABR = 'i' THEN 'j' ELSE M.LART END AS WART
  FROM MIT M LEFT JOIN temp.PERIODE V ON V.ROWID = M.PERIODE),
GRUPPEN AS (
  SELECT A.*,
    IFNULL((SELECT K.GRP FROM temp.KASSE K WHERE K.KURZ = A.KASKUERZEL AND K.AB <= A.DATUM ORDER BY K.AB DESC LIMIT 1),
           (SELECT K.GRP FROM temp.KASSE K WHERE K.KURZ = A.KASKUERZEL ORDER BY K.AB LIMIT 1)) AS GRP
  FROM ARTEN A),
WERTE AS (
  SELECT G.*,
    (SELECT CASE WHEN G.WSO = '9' THEN W.OST ELSE W.WEST END FROM temp.WERT W
     WHERE W.GRP = G.GRP AND W.ART = G.WART AND W.AB <= G.DATUM ORDER BY W.AB DESC LIMIT 1) AS PW
  FROM GRUPPEN G),
GRUENDE AS (
  SELECT W.*,
    CASE
      WHEN ERSATZ AND LAUFLST <> LST THEN 'Ersatzleistung'
      WHEN ANTEIL AND (ABR = 'k' OR (ABR = 'z' AND PLANNR <> '')) THEN 'Kassenanteil'
      WHEN DATUM < '20020101' OR SUBSTR(BETRAG,1,1) = ' ' THEN 'alte Währung'
      WHEN MARKE = '=' THEN
        CASE WHEN ART = 'g' OR SUBSTR(BETRAG,1,1) <> 'e' OR INSTR(BETRAG,'.') > 0 THEN 'gespeicherter Betrag' END
      WHEN LST = '' THEN 'ohne Leistung'
      WHEN SUB IS NULL THEN 'fehlende Zeile'
      WHEN ART NOT IN ('q','p','k','g') OR (ART = 'p' AND SUB = '1') OR BESONDERS = 'V' THEN 'Gebührenart'
      WHEN NOTATION IN ('s','t','n','v') THEN 'Behandlerabschlag'
      WHEN ART IN ('q','p') THEN
        CASE WHEN SUB = '1' THEN NULL
             WHEN SUB IN ('t','u','r','s','n','p','o','q','y','v','w','z') THEN 'Gebührenart'
             WHEN SUBSTR(EINFACHSATZ,1,1) <> 'e' OR INSTR(EINFACHSATZ,'.') > 0 THEN 'Einfachsatz' END
      WHEN PLANNR <> '' THEN 'Plan'
      WHEN UPPER(SUBSTR(ENTFERNUNG,1,1)) = 'K' THEN 'Entfernung'
      WHEN PW IS NULL THEN 'ohne Punktwert'
    END AS GRUND,
    F * CASE WHEN SUB = '1' THEN PUNKTE * 562421 ELSE CAST(SUBSTR(EINFACHSATZ,2) AS INTEGER) * 100000 END AS EINZELN
  FROM WERTE W, temp.AUFTRAG)
SELECT NR, GRUND,
  CASE
    WHEN GRUND IS NOT NULL THEN NULL
    WHEN MARKE = '=' THEN CAST(REPLACE(SUBSTR(BETRAG,2),' ','') AS INTEGER) * 1000000
    WHEN ART IN ('q','p') THEN
      (EINZELN + CASE WHEN EINZELN < 0 THEN -500000000 ELSE 500000000 END) / 1000000000 * ANZAHL *
      CASE WHEN MARKE = '<' THEN 10000 ELSE (SELECT F FROM LQ) END
    ELSE ROUND(PUNKTE * ANZAHL * PW)
  END
FROM GRUENDE
)sql";

bool FuelleHits(sqlite3 * pDatei, const std::vector<CBehHitLine> & vHits) {
    const CSqliteAnweisung p = Bereite(pDatei, "INSERT INTO temp.HIT VALUES(?,?,?,?,?,?)");
    if (!p) return false;
    for (std::size_t i = 0; i < vHits.size(); ++i) {
        const CBehHitLine & hit = vHits[i];
        sqlite3_bind_int64(p.get(), 1, static_cast<sqlite3_int64>(i));
        int iSpalte = 2;
        for (const CString & s : {hit.PATNR, hit.DATUM, CString(hit.SITZUNG), hit.LFDBEHEINTRAG, hit.LSTNR}) {
            const std::string sUtf8 = s.Utf8();
            sqlite3_bind_text(p.get(), iSpalte++, sUtf8.data(), static_cast<int>(sUtf8.size()),
                              SQLITE_TRANSIENT);
        }
        if (sqlite3_step(p.get()) != SQLITE_DONE) return false;
        sqlite3_reset(p.get());
    }
    return true;
}

using CSchluessel = std::tuple<CString, CString, char>;

void Verbuche(std::map<CSchluessel, SGegensumme> & map, const CBehHitLine & hit, std::int64_t iSql) {
    SGegensumme & summe = map[{hit.BEHANDLERNR, hit.LSTNR, hit.GOART}];
    summe.sBehandler = hit.BEHANDLERNR;
    summe.sLeistung = hit.LSTNR;
    summe.cGoArt = hit.GOART;
    ++summe.iHits;
    CDBetrag euro(hit.BETRAG);
    summe.iLauf += euro.ToW('e').GetEinheiten();
    summe.iSql += iSql;
}

bool FuehreAus(sqlite3 * pDatei, const std::string & sSql) {
    return sqlite3_exec(pDatei, sSql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool LegeTafelnAn(sqlite3 * pDatei, const SGegenauftrag & auftrag) {
    const auto Zahl = [](bool b) { return std::string(b ? "1" : "0"); };
    return FuehreAus(pDatei, "PRAGMA temp_store = MEMORY; BEGIN; CREATE TEMP TABLE AUFTRAG AS SELECT " +
                                 Zahl(auftrag.bErsatz) + " AS ERSATZ, " + Zahl(auftrag.bKassenanteil) +
                                 " AS ANTEIL, " + Zahl(auftrag.bNurGesetzliche) + " AS GESETZLICHE") &&
           FuehreAus(pDatei, VORBEREITUNG);
}

std::string Grund(sqlite3_stmt * p) {
    const auto * pText = reinterpret_cast<const char *>(sqlite3_column_text(p, 1));
    return pText == nullptr ? "fehlende Zeile" : pText;
}

// Compares hit by hit. A hit that no row comes back for is no treatment of the file but an entry of a laboratory.
bool Vergleiche(sqlite3 * pDatei, const std::vector<CBehHitLine> & vHits, SGegenrechnung & ergebnis) {
    const CSqliteAnweisung p = Bereite(pDatei, BEWERTUNG);
    if (!p) return false;
    std::map<CSchluessel, SGegensumme> map;
    std::vector<bool> vGesehen(vHits.size());
    int iSchritt = 0;
    while ((iSchritt = sqlite3_step(p.get())) == SQLITE_ROW) {
        const auto iHit = static_cast<std::size_t>(sqlite3_column_int64(p.get(), 0));
        const bool bBewertet = sqlite3_column_type(p.get(), 2) != SQLITE_NULL;
        if (bBewertet) Verbuche(map, vHits[iHit], sqlite3_column_int64(p.get(), 2));
        if (vGesehen[iHit]) continue;
        vGesehen[iHit] = true;
        ++(bBewertet ? ergebnis.iGeprueft : ergebnis.mapAusgelassen[Grund(p.get())]);
    }
    for (const bool bGesehen : vGesehen)
        if (!bGesehen) ++ergebnis.mapAusgelassen["Laboreintrag"];
    for (auto & [schluessel, summe] : map)
        ergebnis.vSummen.push_back(std::move(summe));
    return iSchritt == SQLITE_DONE;
}

} // namespace

bool SGegensumme::Verschieden() const { return std::llabs(iLauf - iSql) >= EINHEITEN_JE_CENT; }

SGegenrechnung RechneGegen(const std::string & sDatei, const std::vector<CBehHitLine> & vHits,
                           const SGegenauftrag & auftrag) {
    SGegenrechnung ergebnis;
    sqlite3 * pRoh = nullptr;
    const int iOffen = sqlite3_open_v2(sDatei.c_str(), &pRoh, SQLITE_OPEN_READONLY, nullptr);
    const CSqliteDatei pDatei(pRoh);
    ergebnis.bGerechnet = iOffen == SQLITE_OK && LegeTafelnAn(pRoh, auftrag) && FuelleHits(pRoh, vHits) &&
                          Vergleiche(pRoh, vHits, ergebnis);
    if (!ergebnis.bGerechnet) ergebnis.sFehler = sqlite3_errmsg(pRoh);
    return ergebnis;
}

} // namespace orvostat
