#include "Summenpruefung.h"

#include "SqliteZeiger.h"

#include "orvostatbs/host/Datum.h"

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace orvostat {

namespace {

// The rules of payers, classes, buckets and cases stand here a second time on purpose.
//
// Z payer, G class ("KP": points and private fees are one), S kind, EIMER bucket, ABZ deducted, N count, B amount in
// hundred-millionths with tax and surcharge, P points. A tax that leaves less than that is cut.
constexpr const char * HITTAFEL = R"sql(
CREATE TABLE HIT(NR INTEGER PRIMARY KEY, PRAXIS TEXT, BEH TEXT, LSTNR TEXT, KURZ TEXT, LSTIN TEXT, ABR INTEGER,
  PRIVAT INTEGER, ART TEXT, SUB TEXT, STAT TEXT, MARKE TEXT, ANZAHL INTEGER, BETRAG INTEGER, STEUER INTEGER,
  ZUSCHLAG INTEGER, PUNKTE INTEGER, DATUM TEXT, PAT TEXT, KASSE TEXT, MFR TEXT, WSO TEXT, KASSENART TEXT,
  FREMD INTEGER, GRP TEXT);
CREATE TABLE IST(NAME TEXT PRIMARY KEY, WERT INTEGER) WITHOUT ROWID;
CREATE TABLE SOLL(NAME TEXT PRIMARY KEY, WERT INTEGER) WITHOUT ROWID;
)sql";

constexpr const char * POSTEN = R"sql(
CREATE TABLE FALL AS SELECT MIN(NR) AS NR FROM GENOMMEN GROUP BY CAST(PRAXIS AS INTEGER), CAST(PAT AS INTEGER), KASSE,
  MFR, WSO, SUBSTR(DATUM,1,4), (SUBSTR(DATUM,5,2) + 2) / 3;
CREATE TABLE EINZELN AS
WITH A AS (
  SELECT *, CASE WHEN ABR THEN '0' WHEN PRIVAT THEN '1' ELSE '2' END AS Z,
    ART >= '1' AND ART <= '9' AS TECHNISCH,
    (ART IN ('k','g') AND SUB = '6') OR (ART IN ('p','q') AND SUB IN ('o','q')) AS ABZ,
    NR IN (SELECT NR FROM FALL) AS NEU
  FROM GENOMMEN)
SELECT NR, PRAXIS, BEH, KASSE, LSTNR, KURZ, Z, ABZ, NEU, ABR, DATUM, ART, SUB, KASSENART, FREMD, GRP,
  CASE WHEN TECHNISCH THEN 'T' WHEN ART IN ('a','b','e','f','g','h','k','p','q','u') THEN 'KP' ELSE ART END AS G,
  CASE WHEN TECHNISCH THEN 'T' WHEN ART IN ('b','e','f','g','h','k') THEN 'K' WHEN ART IN ('a','p','q','u') THEN 'P'
       ELSE ART END AS TYP,
  CASE WHEN TECHNISCH THEN ART ELSE STAT END AS S,
  CASE WHEN NOT TECHNISCH AND STAT NOT IN ('k','l','m') THEN 'Std' WHEN STAT = 'k' THEN 'K' WHEN ABZ THEN 'Abz'
       ELSE 'LM' END AS EIMER,
  ANZAHL AS N,
  CASE WHEN MARKE IN ('o','n') THEN 0 ELSE BETRAG + BETRAG * STEUER / 100 + ZUSCHLAG END AS B,
  CASE WHEN MARKE IN ('o','n') THEN 0 ELSE PUNKTE * ANZAHL / 100 END AS P
FROM A;
)sql";

// What a 32-bit field of the engine holds of it.
#define ORVO_BEGRENZT(A) "MAX(MIN(" A ", 2147483647), -2147483648)"
#define ORVO_SUMMEN ORVO_BEGRENZT("SUM(N)") " AS N, SUM(B) AS B, " ORVO_BEGRENZT("SUM(P)") " AS P"
// A share as text for two amounts; NULL, which is no figure, where there is none.
#define ORVO_ANTEIL(B, BASIS)                                                                                \
    "CASE WHEN " B " > 0 AND " BASIS " <> 0 THEN CAST(" B " * 10000.0 / " BASIS " + 0.5 AS INTEGER) END"
#define ORVO_BASIS                                                                                           \
    "CASE WHEN G <> 'T' AND S NOT IN ('k','l','m') THEN 'SumStd' WHEN S = 'k' THEN 'SumK' ELSE 'SumLM' END"

// WER is "P" for the practice, "B|" and his number for a treater, "K|" with practice and short code for an insurer.
// ZEILE, GRUPPE and SUMME are what is added up; who has no sum of a name has none there.
constexpr const char * LEISTUNGEN = R"sql(
CREATE TABLE TEIL AS SELECT BEH, Z, G, S, EIMER, ABZ, LSTNR, SUM(N) AS N, SUM(B) AS B, SUM(P) AS P, MIN(NR) AS NR, TYP
  FROM EINZELN GROUP BY BEH, Z, G, S, EIMER, ABZ, LSTNR;
CREATE TABLE POSTEN AS SELECT 'P' AS WER, * FROM TEIL UNION ALL SELECT 'B|' || BEH, * FROM TEIL;
CREATE TABLE SUMME AS
  WITH NAMEN(Z, N) AS (VALUES ('0','Kasse'), ('1','Privat'), ('2','Sonst')),
  CUT AS (
    SELECT WER, 'Gesamt' AS NAME, P.N, B, P FROM POSTEN P
    UNION ALL SELECT WER, NAMEN.N || 'Ges', P.N, B, P FROM POSTEN P JOIN NAMEN USING(Z)
    UNION ALL SELECT WER, NAMEN.N || EIMER, P.N, B, P FROM POSTEN P JOIN NAMEN USING(Z)
    UNION ALL SELECT WER, 'Sum' || EIMER, P.N, B, P FROM POSTEN P WHERE EIMER <> 'Abz'
    UNION ALL SELECT WER, NAMEN.N || 'Netto', P.N, B, P FROM POSTEN P JOIN NAMEN USING(Z) WHERE NOT ABZ
    UNION ALL SELECT WER, 'SumNetto', P.N, B, P FROM POSTEN P WHERE NOT ABZ)
  SELECT WER, NAME, SUM(N) AS N, SUM(B) AS B, SUM(P) AS P,
    CASE WHEN NAME GLOB 'Sum*' OR NAME = 'Gesamt' OR NAME GLOB '*Abz' THEN NULL WHEN NAME GLOB '*Ges' THEN 'Gesamt'
         ELSE 'Sum' || REPLACE(REPLACE(REPLACE(NAME,'Kasse',''),'Privat',''),'Sonst','') END AS BASIS
  FROM CUT GROUP BY WER, NAME;
CREATE TABLE TAG AS SELECT DISTINCT CAST(BEH AS INTEGER) AS BEH, CAST(PRAXIS AS INTEGER) AS PRAXIS, DATUM FROM EINZELN;
INSERT INTO SOLL
  SELECT 'BT|' || BEH, COUNT(DISTINCT DATUM) FROM TAG WHERE BEH <> 0 GROUP BY BEH
  UNION ALL SELECT 'BT|0', COUNT(DISTINCT DATUM) FROM TAG
  UNION ALL SELECT 'PT|' || PRAXIS, COUNT(DISTINCT DATUM) FROM TAG WHERE PRAXIS <> 0 GROUP BY PRAXIS
  UNION ALL SELECT 'PT|0', COUNT(DISTINCT DATUM) FROM TAG
  UNION ALL SELECT 'Fälle', SUM(NEU) FROM EINZELN;
)sql";

// An insurer's sums have their own names; every group of his stands against his whole, and the practice has no sum but
// those that hold the whole. Where insurers are added up, the last one that has a group gives it its letter: the order
// of insurers is that of their first hits.
constexpr const char * KASSEN = R"sql(
CREATE TABLE TEIL AS SELECT 'K|' || PRAXIS || '|' || KASSE AS WER, ABR, Z, G, S, LSTNR, SUM(N) AS N, SUM(B) AS B,
  SUM(P) AS P, MIN(NR) AS NR, TYP, SUM(NEU) AS NEU FROM EINZELN GROUP BY PRAXIS, KASSE, ABR, Z, G, S, LSTNR;
CREATE TABLE ZUSAMMEN AS SELECT ABR, Z, G, S, LSTNR, N, B, P, -MIN(NR) OVER (PARTITION BY WER),
  FIRST_VALUE(TYP) OVER (PARTITION BY WER, Z, G, S ORDER BY NR), NEU FROM TEIL;
CREATE TABLE POSTEN AS SELECT * FROM TEIL UNION ALL SELECT 'KS', * FROM ZUSAMMEN UNION ALL SELECT 'P', * FROM ZUSAMMEN;
CREATE TABLE SUMME AS
  WITH CUT AS (
    SELECT WER, 'Gesamt' AS NAME, N, B, P FROM POSTEN
    UNION ALL SELECT WER, 'Sum', N, B, P FROM POSTEN WHERE WER <> 'P'
    UNION ALL SELECT WER, 'KasseGes', N, B, P FROM POSTEN WHERE ABR OR WER = 'P'
    UNION ALL SELECT 'P', 'KasseStd', N, B, P FROM POSTEN WHERE WER = 'P'
    UNION ALL SELECT 'P', 'SumStd', N, B, P FROM POSTEN WHERE WER = 'P')
  SELECT WER, NAME, SUM(N) AS N, SUM(B) AS B, SUM(P) AS P,
    CASE NAME WHEN 'KasseGes' THEN 'Gesamt' WHEN 'KasseStd' THEN 'SumStd' END AS BASIS
  FROM CUT GROUP BY WER, NAME;
INSERT INTO SOLL SELECT WER || '|Fälle', SUM(NEU) FROM POSTEN GROUP BY WER;
)sql";

constexpr const char * FIGUREN =
    R"sql(
CREATE TABLE ZEILE AS SELECT WER, Z, G, S, LSTNR, SUM(N) AS N, SUM(B) AS B, SUM(P) AS P
  FROM POSTEN GROUP BY WER, Z, G, S, LSTNR;
CREATE INDEX ZEILE1 ON ZEILE(WER, Z, G, S, LSTNR);
CREATE TABLE GRUPPE AS SELECT WER, Z, G, S, SUM(N) AS N, SUM(B) AS B, SUM(P) AS P, MIN(NR) AS NR, TYP
  FROM POSTEN GROUP BY WER, Z, G, S;
CREATE INDEX SUMME1 ON SUMME(WER, NAME);
CREATE TABLE BASIS AS SELECT WER, Z, G, S,
  IFNULL((SELECT B FROM SUMME X WHERE X.WER = Y.WER AND X.NAME = CASE WHEN Y.WER GLOB 'K*' THEN 'Sum' ELSE )sql" ORVO_BASIS
    R"sql( END), 0) AS EIGEN,
  IFNULL((SELECT B FROM SUMME X WHERE X.WER = 'P' AND X.NAME = CASE WHEN Y.WER GLOB 'K*' THEN 'SumStd' ELSE )sql" ORVO_BASIS
    R"sql( END), 0) AS PRAXIS
  FROM GRUPPE Y;
CREATE INDEX BASIS1 ON BASIS(WER, Z, G, S);
CREATE TABLE FIGUR AS
  SELECT S.WER || '|' || S.NAME AS NAME, S.N, S.B, S.P,
    CASE WHEN S.WER <> 'P' THEN )sql" ORVO_ANTEIL("S.B", "E.B") R"sql( END AS AB, )sql" ORVO_ANTEIL("S.B",
                                                                                                    "X.B")
        R"sql( AS AP
  FROM SUMME S LEFT JOIN SUMME E ON E.WER = S.WER AND E.NAME = S.BASIS
    LEFT JOIN SUMME X ON X.WER = 'P' AND X.NAME = S.BASIS
  UNION ALL
  SELECT WER || '|' || Z || '|' || G || '|' || S, N, B, P,
    CASE WHEN WER <> 'P' THEN )sql" ORVO_ANTEIL("B", "EIGEN") " END, " ORVO_ANTEIL("B", "PRAXIS") R"sql(
  FROM GRUPPE JOIN BASIS USING(WER, Z, G, S)
  UNION ALL
  SELECT L.WER || '|' || Z || '|' || G || '|' || S || '|' || LSTNR, L.N, L.B, L.P,
    CASE WHEN L.WER <> 'P' THEN )sql" ORVO_ANTEIL(
            "L.B",
            "EIGEN") " END, CASE WHEN L.WER = 'P' THEN " ORVO_ANTEIL("L.B",
                                                                     "PRAXIS") " ELSE " ORVO_ANTEIL("L.B",
                                                                                                    "X.B") R"sql( END
  FROM ZEILE L JOIN BASIS USING(WER, Z, G, S)
    LEFT JOIN (SELECT Z, G, S, LSTNR, B FROM ZEILE WHERE WER = 'P') X USING(Z, G, S, LSTNR);
INSERT INTO SOLL
  SELECT NAME || '|ANZAHL', )sql" ORVO_BEGRENZT("N") R"sql( FROM FIGUR UNION ALL SELECT NAME || '|BETRAG', B FROM FIGUR
  UNION ALL SELECT NAME || '|PUNKTE', )sql" ORVO_BEGRENZT("P") R"sql( FROM FIGUR
  UNION ALL SELECT NAME || '|ANTEILBEH', AB FROM FIGUR WHERE AB IS NOT NULL
  UNION ALL SELECT NAME || '|ANTEILPRAXIS', AP FROM FIGUR WHERE AP IS NOT NULL
  UNION ALL SELECT WER || '|' || Z || '|' || G || '|' || S || '|TYP', UNICODE(TYP) FROM GRUPPE;
)sql";

// Rounded to the nearest, halves away from zero, like the platform's MulDiv.
#define ORVO_GERUNDET(A, B)                                                                                  \
    "((ABS(" A ") + ABS(" B ") / 2) / ABS(" B ") * (CASE WHEN (" A " < 0) <> (" B " < 0) THEN -1 ELSE 1 "    \
    "END))"

constexpr const char * HUNDERT =
    R"sql(
CREATE TABLE TAG AS SELECT ART, DATUM,
    CASE WHEN UEBERGREIFEND THEN (SELECT MAX(AB) FROM NORM WHERE NORM.ART = H.ART)
         ELSE (SELECT MAX(AB) FROM NORM WHERE NORM.ART = H.ART AND AB <= H.DATUM) END AS AB
  FROM (SELECT DISTINCT ART, DATUM FROM EINZELN) H, AUFTRAG;
CREATE INDEX TAG1 ON TAG(ART, DATUM);
CREATE TABLE MITNORM AS
WITH D AS (SELECT MIN(NR) AS NR, LSTNR, KURZ, H.ART AS ART, SUB, KASSENART IN ('7','8') AS VDAK, FREMD, GRP = '9' AS NEUN,
    AB, SUM(N) AS N, SUM(B) AS B, SUM(P) AS P, SUM(NEU) AS NEU
  FROM EINZELN H JOIN TAG ON TAG.ART = H.ART AND TAG.DATUM = H.DATUM, AUFTRAG WHERE MITGRUPPE9 OR GRP <> '9'
  GROUP BY LSTNR, KURZ, H.ART, SUB, 6, FREMD, 8, AB)
SELECT D.*, IFNULL(M.GESAMT, 0) AS GESAMT, IFNULL(M.VDAK, 0) AS VDAKNORM, IFNULL(M.RVO, 0) AS RVO
  FROM D LEFT JOIN NORM M ON M.ART = D.ART AND M.AB = D.AB AND M.KURZ = D.KURZ;
CREATE TABLE SPALTE AS
  SELECT 0 AS I, *, GESAMT AS NORM FROM MITNORM
  UNION ALL SELECT 1, *, VDAKNORM FROM MITNORM WHERE VDAK
  UNION ALL SELECT 2 + FREMD, *, VDAKNORM FROM MITNORM WHERE VDAK
  UNION ALL SELECT 7, M.*, RVO FROM MITNORM M, AUFTRAG WHERE NOT VDAK AND GRUPPE9EXTRA AND NEUN
  UNION ALL SELECT 4, M.*, RVO FROM MITNORM M, AUFTRAG WHERE NOT VDAK AND NOT (GRUPPE9EXTRA AND NEUN)
  UNION ALL SELECT 5 + FREMD, M.*, RVO FROM MITNORM M, AUFTRAG WHERE NOT VDAK AND NOT (GRUPPE9EXTRA AND NEUN);
CREATE TABLE KOPF AS SELECT I, )sql" ORVO_SUMMEN R"sql(, SUM(NEU) AS FAELLE,
  CASE WHEN FEST THEN FALLZAHL ELSE SUM(NEU) END AS F FROM SPALTE, AUFTRAG GROUP BY I;
CREATE TABLE SEITE AS SELECT I,
  CASE WHEN ART IN ('1','2','3','4','7','8') OR (ART IN ('k','g') AND SUB IN ('5','6','7','8'))
         OR (ART IN ('p','q') AND SUB IN ('t','u','r','s','n','p','o','q')) THEN 'Neben' ELSE 'Haupt' END AS WAS,
  )sql" ORVO_SUMMEN
    R"sql( FROM SPALTE GROUP BY 1, 2;
CREATE TABLE ZEILE AS SELECT I, LSTNR, )sql" ORVO_SUMMEN
    R"sql(, MIN(NR) AS NR, NORM
  FROM SPALTE GROUP BY I, LSTNR;
CREATE TABLE FIGUR AS SELECT Z.I || '|' || LSTNR AS NAME, Z.N, Z.B, Z.P, NORM,
  CASE WHEN G.N <> 0 THEN )sql" ORVO_GERUNDET("(10000 * Z.N)", "G.N") R"sql( END AS ANTEIL,
  CASE WHEN K.F <> 0 THEN )sql" ORVO_GERUNDET("(100 * Z.N)", "K.F") R"sql( END AS JE,
  CASE WHEN NORM <> 0 AND K.F <> 0 THEN )sql" ORVO_GERUNDET("(1000000 * Z.N)", "(NORM * K.F)") R"sql( END AS R,
  )sql" ORVO_GERUNDET("(Z.N - " ORVO_GERUNDET("(K.F * NORM)", "100") ")", "100") R"sql( AS DIFF
  FROM ZEILE Z JOIN KOPF K USING(I) JOIN KOPF G ON G.I = 0;
INSERT INTO SOLL
  SELECT NAME || '|ANZAHL', N FROM FIGUR UNION ALL SELECT NAME || '|BETRAG', B FROM FIGUR
  UNION ALL SELECT NAME || '|PUNKTE', P FROM FIGUR UNION ALL SELECT NAME || '|NORM', NORM FROM FIGUR
  UNION ALL SELECT NAME || '|ANTEIL', )sql" ORVO_BEGRENZT("ANTEIL") R"sql( FROM FIGUR
  UNION ALL SELECT NAME || '|JE100', )sql" ORVO_BEGRENZT("JE") R"sql( FROM FIGUR
  UNION ALL SELECT NAME || '|ABWEICHUNG', CASE WHEN IFNULL(R, 0) <> 0 THEN )sql" ORVO_BEGRENZT(
        "R - 10000") R"sql( END FROM FIGUR
  UNION ALL SELECT NAME || '|DIFFERENZ', )sql" ORVO_BEGRENZT("DIFF") R"sql( FROM FIGUR
  UNION ALL SELECT I || '||Fälle', FAELLE FROM KOPF
  UNION ALL SELECT I || '||Gesamt|ANZAHL', N FROM KOPF UNION ALL SELECT I || '||Gesamt|BETRAG', B FROM KOPF
  UNION ALL SELECT I || '||Gesamt|PUNKTE', P FROM KOPF
  UNION ALL SELECT I || '||' || WAS || '|ANZAHL', N FROM SEITE UNION ALL SELECT I || '||' || WAS || '|BETRAG', B FROM SEITE
  UNION ALL SELECT I || '||' || WAS || '|PUNKTE', P FROM SEITE
  UNION ALL SELECT I || '||Verhältnis ' || V.NR || SEITE, SUM(N)
    FROM SPALTE JOIN VERHAELTNIS V ON INSTR(V.TEXT, ' ' || KURZ || ' ') > 0 GROUP BY I, V.NR, SEITE;
)sql";

constexpr const char * VERGLEICH = R"sql(
SELECT IFNULL(I.NAME, S.NAME), IFNULL(I.WERT, 0), IFNULL(S.WERT, 0) FROM IST I FULL JOIN SOLL S ON S.NAME = I.NAME
WHERE IFNULL(I.WERT, 0) <> IFNULL(S.WERT, 0) ORDER BY 1
)sql";

// A database in memory that collects the figures; after an error it does nothing.
class CRechner {
public:
    CRechner() {
        sqlite3 * p = nullptr;
        m_bOk = sqlite3_open(":memory:", &p) == SQLITE_OK;
        m_p.reset(p);
        Fuehre("PRAGMA journal_mode = OFF; BEGIN");
        Fuehre(HITTAFEL);
    }
    [[nodiscard]] bool Ok() const { return m_bOk; }
    void Fuehre(const std::string & sSql) {
        m_bOk = m_bOk && sqlite3_exec(m_p.get(), sSql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    void Setze(const char * pSql, std::initializer_list<CString> vTexte,
               std::initializer_list<std::int64_t> vZahlen) {
        if (!m_bOk) return;
        if (pSql != m_pSql) {
            m_anweisung = Bereite(m_p.get(), pSql);
            m_bOk = m_anweisung != nullptr;
            m_pSql = pSql;
        }
        int i = 0;
        for (const CString & s : vTexte) {
            const std::string sUtf8 = s.Utf8();
            sqlite3_bind_text(m_anweisung.get(), ++i, sUtf8.data(), static_cast<int>(sUtf8.size()),
                              SQLITE_TRANSIENT);
        }
        for (const std::int64_t iZahl : vZahlen)
            sqlite3_bind_int64(m_anweisung.get(), ++i, iZahl);
        m_bOk = m_bOk && sqlite3_step(m_anweisung.get()) == SQLITE_DONE;
        sqlite3_reset(m_anweisung.get());
    }
    // Figures that hold money are counted, but not compared.
    void OhneGeld() { m_bOhneGeld = true; }
    void Ist(const std::string & sName, std::int64_t iWert) {
        if (m_bOhneGeld && IstGeld(sName))
            ++m_iAusgelassen;
        else
            Setze("INSERT INTO IST VALUES(?, ?)", {AusUtf8(sName)}, {iWert});
    }
    void IstLst(const std::string & sName, const CLSLst & lst) {
        Ist(sName + "|ANZAHL", lst.ANZAHL);
        Ist(sName + "|BETRAG", lst.BETRAG.GetEinheiten());
        Ist(sName + "|PUNKTE", lst.PUNKTE);
    }
    void IstMitAnteil(const std::string & sName, const CLSLst & lst) {
        IstLst(sName, lst);
        Ist(sName + "|ANTEILBEH", lst.ANTEILBEH);
        Ist(sName + "|ANTEILPRAXIS", lst.ANTEILPRAXIS);
    }
    [[nodiscard]] SSummenpruefung Vergleiche() {
        SSummenpruefung ergebnis;
        m_anweisung.reset();
        ergebnis.iAusgelassen = m_iAusgelassen;
        if (m_bOhneGeld)
            for (const char * pGeld : GELD)
                Fuehre("DELETE FROM SOLL WHERE NAME GLOB '*" + std::string(pGeld) + "'");
        const CSqliteAnweisung vergleich = Bereite(m_p.get(), VERGLEICH);
        sqlite3_stmt * const p = vergleich.get();
        m_bOk = m_bOk && p != nullptr;
        int iSchritt = SQLITE_DONE;
        while (m_bOk && (iSchritt = sqlite3_step(p)) == SQLITE_ROW) {
            if (++ergebnis.iAbweichungen > 100) continue;
            ergebnis.vAbweichungen.push_back({reinterpret_cast<const char *>(sqlite3_column_text(p, 0)),
                                              sqlite3_column_int64(p, 1), sqlite3_column_int64(p, 2)});
        }
        ergebnis.bGerechnet = m_bOk && iSchritt == SQLITE_DONE;
        if (!ergebnis.bGerechnet) ergebnis.sFehler = sqlite3_errmsg(m_p.get());
        ergebnis.iFiguren = Zahl("SELECT COUNT(*) FROM IST");
        return ergebnis;
    }

private:
    static constexpr const char * GELD[] = {"|BETRAG", "|ANTEILBEH", "|ANTEILPRAXIS"};
    static bool IstGeld(const std::string & sName) {
        return std::ranges::any_of(GELD, [&](const char * pGeld) { return sName.ends_with(pGeld); });
    }
    std::int64_t Zahl(const char * pSql) {
        const CSqliteAnweisung p = Bereite(m_p.get(), pSql);
        return p != nullptr && sqlite3_step(p.get()) == SQLITE_ROW ? sqlite3_column_int64(p.get(), 0) : 0;
    }

    CSqliteDatei m_p;
    CSqliteAnweisung m_anweisung;
    const char * m_pSql = nullptr;
    bool m_bOk = false;
    bool m_bOhneGeld = false;
    std::int64_t m_iAusgelassen = 0;
};

CString Buchstabe(char c) { return c == 0 ? CString() : CString(c); }
std::string Text(char c) { return Buchstabe(c).Utf8(); }

// Amounts of one currency, whichever, are sums of whole numbers. Of several the engine's sums are converted in the
// order of the hits: counts, points, days and cases are compared all the same.
void FuelleHits(CRechner & rechner, const std::vector<CBehHitLine> & vHits) {
    constexpr const char * pSql =
        "INSERT INTO HIT(PRAXIS, BEH, LSTNR, KURZ, LSTIN, ART, SUB, STAT, MARKE, DATUM, PAT, KASSE, MFR, "
        "WSO, "
        "KASSENART, GRP, NR, ABR, PRIVAT, ANZAHL, BETRAG, STEUER, ZUSCHLAG, PUNKTE, FREMD) "
        "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
    std::set<char> setWaehrungen;
    std::int64_t iNr = 0;
    for (const CBehHitLine & hit : vHits) {
        for (const CDBetrag * pBetrag : {&hit.BETRAG, &hit.ZUSCHLAG})
            if (!pBetrag->IsEmpty()) setWaehrungen.insert(pBetrag->GetWaehrung());
        rechner.Setze(pSql,
                      {hit.PRAXISNR, hit.BEHANDLERNR, hit.LSTNR, hit.LSTKUERZEL, hit.LSTIN,
                       Buchstabe(hit.GOART), Buchstabe(hit.GOSUBART), Buchstabe(hit.GOSTATISTIKART),
                       Buchstabe(hit.ABRMERKMAL), hit.DATUM, hit.PATNR, hit.KASKUERZEL, hit.MFRDIG, hit.WSO,
                       hit.KASSENART, Buchstabe(hit.KASSENGRP)},
                      {iNr++, hit.KASSENABR, hit.ISPRIVATPATIENT, hit.ANZAHL, hit.BETRAG.GetEinheiten(),
                       hit.MWSTSATZ, hit.ZUSCHLAG.GetEinheiten(), hit.PUNKTE, hit.FREMDKASSE});
    }
    if (setWaehrungen.size() > 1) rechner.OhneGeld();
}

void Genommen(CRechner & rechner, const CString & sPraxis, const std::string & sBedingung) {
    rechner.Fuehre("CREATE TABLE AUSWAHL(PRAXIS TEXT)");
    rechner.Setze("INSERT INTO AUSWAHL VALUES(?)", {sPraxis}, {});
    rechner.Fuehre(
        "CREATE VIEW GENOMMEN AS SELECT H.* FROM HIT H, AUSWAHL A WHERE A.PRAXIS IN ('', H.PRAXIS) AND " +
        sBedingung);
    rechner.Fuehre(POSTEN);
}

const char * Klasse(char cGoTyp) { return cGoTyp == 'K' || cGoTyp == 'P' ? "KP" : nullptr; }

void IstGruppen(CRechner & rechner, const std::string & sWer, const std::vector<CLSLstGrp> & vGruppen) {
    for (const CLSLstGrp & grp : vGruppen) {
        const char * pKlasse = Klasse(grp.m_cGoTyp);
        const std::string sName = sWer + '|' + Text(grp.m_cZahler) + '|' +
                                  (pKlasse != nullptr ? pKlasse : Text(grp.m_cGoTyp)) + '|' +
                                  Text(grp.m_cStatArt);
        rechner.Ist(sName + "|TYP", static_cast<unsigned char>(grp.m_cGoTyp));
        rechner.IstMitAnteil(sName, grp.m_Sum);
        for (const CLSLst & lst : grp.m_vLst)
            rechner.IstMitAnteil(sName + '|' + lst.LSTNR.Utf8(), lst);
    }
}

// The sums that the practice and a treater have alike.
template <class T> void IstSummen(CRechner & rechner, const std::string & sWer, const T & t) {
    const std::pair<const char *, const CLSLst *> aSummen[] = {
        {"Gesamt", &t.m_Gesamt},         {"PrivatStd", &t.m_PrivatStd},
        {"PrivatK", &t.m_PrivatK},       {"PrivatLM", &t.m_PrivatLM},
        {"KasseStd", &t.m_KasseStd},     {"KasseK", &t.m_KasseK},
        {"KasseLM", &t.m_KasseLM},       {"SonstStd", &t.m_SonstStd},
        {"SonstK", &t.m_SonstK},         {"SonstLM", &t.m_SonstLM},
        {"SumStd", &t.m_SumStd},         {"SumK", &t.m_SumK},
        {"SumLM", &t.m_SumLM},           {"PrivatGes", &t.m_PrivatGes},
        {"KasseGes", &t.m_KasseGes},     {"SonstGes", &t.m_SonstGes},
        {"PrivatAbz", &t.m_PrivatAbz},   {"KasseAbz", &t.m_KasseAbz},
        {"SonstAbz", &t.m_SonstAbz},     {"SumNetto", &t.m_SumNetto},
        {"KasseNetto", &t.m_KasseNetto}, {"PrivatNetto", &t.m_PrivatNetto},
        {"SonstNetto", &t.m_SonstNetto}};
    for (const auto & [pName, pLst] : aSummen)
        rechner.IstMitAnteil(sWer + '|' + pName, *pLst);
    IstGruppen(rechner, sWer, t.m_vLstGrp);
}

void IstKasse(CRechner & rechner, const std::string & sWer, const CLSKasLstGrp & kas) {
    rechner.Ist(sWer + "|Fälle", kas.m_iAnzFaelle);
    rechner.IstMitAnteil(sWer + "|Gesamt", kas.m_Gesamt);
    rechner.IstMitAnteil(sWer + "|Sum", kas.m_Sum);
    rechner.IstMitAnteil(sWer + "|KasseGes", kas.m_KasseGes);
    IstGruppen(rechner, sWer, kas.m_vLstGrp);
}

// The hits of the service statistics, as SQL says it.
constexpr const char * IN_STATISTIK =
    "H.STAT <> '' AND NOT (H.STAT = 'n' AND H.ART IN ('k','g','p','q')) AND "
    "NOT (H.SUB = '3' AND H.ART IN ('b','e','f','h')) AND H.LSTIN <> ''";

} // namespace

SSummenpruefung PruefeLeistungen(const std::vector<CBehHitLine> & vHits, const CString & sPraxis,
                                 const CLSSum & sum) {
    CRechner rechner;
    FuelleHits(rechner, vHits);
    Genommen(rechner, sPraxis, IN_STATISTIK);
    rechner.Fuehre(LEISTUNGEN);
    rechner.Fuehre(FIGUREN);
    IstSummen(rechner, "P", sum.m_Praxis);
    rechner.Ist("Fälle", sum.m_Praxis.m_iAnzFaelle);
    for (const CLSBehLstGrp & beh : sum.m_vBeh)
        IstSummen(rechner, "B|" + beh.BEHANDLERNR.Utf8(), beh);
    for (const auto & [iNr, iTage] : sum.m_vBehTage)
        rechner.Ist("BT|" + std::to_string(iNr), iTage);
    for (const auto & [iNr, iTage] : sum.m_vPraxisTage)
        rechner.Ist("PT|" + std::to_string(iNr), iTage);
    return rechner.Vergleiche();
}

SSummenpruefung PruefeKassen(const std::vector<CBehHitLine> & vHits, const CString & sPraxis,
                             const CLSSum & sum) {
    CRechner rechner;
    FuelleHits(rechner, vHits);
    Genommen(rechner, sPraxis, "1");
    rechner.Fuehre(KASSEN);
    rechner.Fuehre(FIGUREN);
    rechner.Ist("P|Fälle", sum.m_Praxis.m_iAnzFaelle);
    rechner.IstMitAnteil("P|Gesamt", sum.m_Praxis.m_Gesamt);
    rechner.IstMitAnteil("P|KasseStd", sum.m_Praxis.m_KasseStd);
    rechner.IstMitAnteil("P|SumStd", sum.m_Praxis.m_SumStd);
    rechner.IstMitAnteil("P|KasseGes", sum.m_Praxis.m_KasseGes);
    IstGruppen(rechner, "P", sum.m_Praxis.m_vLstGrp);
    IstKasse(rechner, "KS", sum.m_KasSum);
    for (const CLSKasLstGrp & kas : sum.m_vKas)
        IstKasse(rechner, "K|" + kas.PRAXISNR.Utf8() + '|' + kas.KASKUERZEL.Utf8(), kas);
    return rechner.Vergleiche();
}

SSummenpruefung PruefeHundert(const std::vector<CBehHitLine> & vHits, const CString & sPraxis,
                              const CLSSum & sum, const SHundertauftrag & auftrag,
                              const std::string & sDatei) {
    CRechner rechner;
    FuelleHits(rechner, vHits);
    Genommen(rechner, sPraxis, "H.LSTIN <> ''");
    rechner.Fuehre("CREATE TABLE AUFTRAG(FEST, FALLZAHL, MITGRUPPE9, GRUPPE9EXTRA, UEBERGREIFEND)");
    rechner.Setze("INSERT INTO AUFTRAG VALUES(?,?,?,?,?)", {},
                  {auftrag.bFesteFallzahl, auftrag.iFallzahl, auftrag.bMitGruppe9, auftrag.bGruppe9Extra,
                   sum.m_100F.m_bQuartalsuebergreifend});
    rechner.Fuehre("CREATE TABLE VERHAELTNIS(TEXT, SEITE, NR)");
    std::int64_t iNr = 0;
    for (const CVerhLst & verh : CKasArt100F::s_vVerhLst) {
        rechner.Setze("INSERT INTO VERHAELTNIS VALUES(?, ?, ?)", {verh.m_sZaehler, CString("Z")}, {iNr});
        rechner.Setze("INSERT INTO VERHAELTNIS VALUES(?, ?, ?)", {verh.m_sNenner, CString("N")}, {iNr++});
    }
    rechner.Fuehre("COMMIT");
    rechner.Setze("ATTACH ? AS PRAXIS", {AusUtf8(sDatei)}, {});
    const std::string sSatz = auftrag.bZweiterSatz ? "MKG" : "";
    const auto Norm = [&](const std::string & sSpalte) {
        return "MAX(MIN(CAST(" + sSpalte + sSatz + " AS INTEGER), 2147483647), -2147483648) AS " + sSpalte;
    };
    rechner.Fuehre(
        "CREATE TABLE main.NORM AS SELECT GOART AS ART, LSTKUERZEL AS KURZ, GUELTIGAB AS AB, " +
        Norm("GESAMT") + ", " + Norm("VDAK") + ", " + Norm("RVO") +
        " FROM PRAXIS.GOBUDGET WHERE GOART IN ('k','g'); CREATE INDEX main.NORM1 ON NORM(ART, AB, KURZ)");
    rechner.Fuehre("BEGIN");
    rechner.Fuehre(HUNDERT);
    for (std::size_t i = 0; i < sum.m_100F.m_aSpalten.size(); ++i) {
        const CKasArt100F & spalte = sum.m_100F.m_aSpalten[i];
        const std::string sSpalte = std::to_string(i) + '|';
        rechner.Ist(sSpalte + "|Fälle", spalte.m_iAnzFaelle);
        rechner.IstLst(sSpalte + "|Gesamt", spalte.m_Gesamt);
        rechner.IstLst(sSpalte + "|Neben", spalte.m_Nebenleistung);
        rechner.IstLst(sSpalte + "|Haupt", spalte.m_Hauptleistung);
        for (std::size_t k = 0; k < spalte.m_vVerh.size(); ++k) {
            rechner.Ist(sSpalte + "|Verhältnis " + std::to_string(k) + 'Z', spalte.m_vVerh[k].first);
            rechner.Ist(sSpalte + "|Verhältnis " + std::to_string(k) + 'N', spalte.m_vVerh[k].second);
        }
        for (const CLSLst & lst : spalte.m_vLst) {
            const std::string sName = sSpalte + lst.LSTNR.Utf8();
            rechner.IstLst(sName, lst);
            rechner.Ist(sName + "|NORM", lst.m_iF100Soll);
            rechner.Ist(sName + "|ANTEIL", lst.m_iAnteilAnz);
            rechner.Ist(sName + "|JE100", lst.m_iAnzJe100Fall);
            rechner.Ist(sName + "|ABWEICHUNG", lst.m_iF100Abweichung);
            rechner.Ist(sName + "|DIFFERENZ", lst.m_iAnzDiff);
        }
    }
    return rechner.Vergleiche();
}

} // namespace orvostat
