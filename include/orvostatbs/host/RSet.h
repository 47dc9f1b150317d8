// The record layer: database handles, record sets and the pool of record sets.
//
// A table object is a row and a cursor in one. Its key fields are set by plain assignment, a read puts the row found
// into its fields, and Next walks on through the set that the last read has opened. With a store behind both handles:
//
// ```
// const auto pSpeicher = std::make_shared<CMemorySpeicher>();
// dbDatabase.Verbinde(pSpeicher);   // reads and writes
// dbDatabaseRO.Verbinde(pSpeicher); // refuses every write
// for (const CString & sNr : {CString("2"), CString("1")}) {
//     CTBill bill(dbDatabase);
//     bill.m_PATNR = "      4711";
//     bill.m_PATBILL = sNr;
//     assert(bill.Write() == 0);
// }
//
// CString sNummern;
// CTBill bill(dbDatabaseRO);
// bill.m_PATNR = "      4711";      // all bills of the patient, in the order of the key
// for (int i = bill.GetByK1(MATCH_ALLE); i == 0; i = bill.Next())
//     sNummern += bill.m_PATBILL;
// assert(sNummern == "12");
// assert(bill.Next() == 1);         // no further row; the fields are those of the last
// assert(bill.m_PATBILL == "2" && bill.Write() == 3);
// ```
//
// Writes that belong together form a group, of which without Beende(true) nothing stays:
//
// ```
// {
//     CMxGruppe gruppe(dbDatabase);
//     CTPlan plan(dbDatabase);
//     plan.m_PATNR = "      4711";
//     plan.m_PLANNR = "1";
//     assert(plan.Write() == 0);
// }
// const CAutoRSet<CTPlan> pPlan;    // a ready object on dbDatabaseRO, given back at the end of the block
// assert(pPlan->GetAll() == 1);
// assert(dbDatabaseRO.Fehlschlaege() == 0); // that there is no row was no failure
// ```
//
// Every reading operation returns 0 when the fields hold the row, 1 when there is no (further) row, another value
// when the store failed. A failed Next leaves the fields as they are. A read that is refused, fails or has no store
// leaves no open set: First and Next are 1 then.
//
// A patient's or an address's number (a key that begins with PATNR or ADRNR) that is empty or all blank is nobody's:
// an exact read by it and a read that is given it are refused with 1, for no row. Only a read that asks for no number
// meets rows that carry none.
#pragma once

#include "orvostatbs/host/Faden.h"
#include "orvostatbs/host/Zeilenspeicher.h"

#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvostat {

struct SSelectPool;

// A handle on the practice's database. The two global ones share a store or have one each; who attaches a store
// decides. Without a store every read finds no row and every write is refused.
//
// A look-up that the store could not answer reads like one that found nothing, and the statistics go on. So the handle
// counts what has failed: who presents a result as whole, or writes back what he has read, compares Fehlschlaege
// with what it was before he began to read.
class CMxDatabase {
public:
    explicit CMxDatabase(bool bNurLesen);
    ~CMxDatabase();
    CMxDatabase(const CMxDatabase &) = delete;
    CMxDatabase & operator=(const CMxDatabase &) = delete;

    // Attaches a store, or none. The former store's walks must have ended; its select-pool entries end here, and
    // Fehlschlaege begins anew.
    void Verbinde(std::shared_ptr<CZeilenspeicher> pSpeicher);
    [[nodiscard]] const std::shared_ptr<CZeilenspeicher> & Speicher() const { return m_pSpeicher; }
    // A read-only handle refuses every write, whatever its store could do.
    [[nodiscard]] bool NurLesen() const { return m_bNurLesen; }
    // Groups the writes to the store as CZeilenspeicher says; 3 on a read-only handle and without a store.
    int Beginne();
    int Beende(bool bUebernehmen);
    // A number that changes with every Verbinde of any handle and with every write and Beende through one: what was
    // derived from rows and remembered is still good while it stays the same.
    [[nodiscard]] static std::uint64_t Stand() { return s_iStand; }
    static void Geaendert() { ++s_iStand; }
    // How many operations of the attached store and of its walks have failed through this handle, reads and writes;
    // the end of a set is no failure, nor is a refused write.
    [[nodiscard]] std::uint64_t Fehlschlaege() const { return m_iFehlschlaege; }
    // Counts the result of such an operation if it is a failure, and gives it back.
    int Zaehle(int iErgebnis) {
        if (iErgebnis != ZEILE_OK && iErgebnis != ZEILE_KEINE && iErgebnis != ZEILE_VERWEIGERT)
            ++m_iFehlschlaege;
        return iErgebnis;
    }
    // The number of rows of a table; 0 without a store, -1 if it failed.
    [[nodiscard]] std::int64_t Zeilenzahl(const STabelle & tabelle);

    // Reads the entries of one select pool in their order: 0, 1 if there are none (also for an empty key), another
    // value and no entries if the store failed. The handle owns them until its store is detached, and gives the same
    // object again for an entry that has not changed.
    int SelectPool(const CString & sKey, std::vector<SSelectPool *> & vEintraege);

private:
    bool m_bNurLesen;
    std::uint64_t m_iFehlschlaege = 0;
    std::shared_ptr<CZeilenspeicher> m_pSpeicher;
    // By pool all entries ever given, those of the last reading first and in their order.
    std::map<CString, std::vector<std::unique_ptr<SSelectPool>>> m_mapSelectPool;
    static std::uint64_t s_iStand;
};

extern CMxDatabase dbDatabase;   // reads and writes
extern CMxDatabase dbDatabaseRO; // reads only

// A group of writes of a handle for the life of the object: unless Beende has taken them over, none of them stays.
class CMxGruppe {
public:
    explicit CMxGruppe(CMxDatabase & db) : m_db(db), m_bOffen(db.Beginne() == ZEILE_OK) {}
    ~CMxGruppe() { Beende(false); }
    CMxGruppe(const CMxGruppe &) = delete;
    CMxGruppe & operator=(const CMxGruppe &) = delete;
    // False where the store could not begin it, and after its end.
    [[nodiscard]] bool Offen() const { return m_bOffen; }
    // Ends the group, once. True if the writes were to stay and do, as far as the groups around this one let them.
    bool Beende(bool bUebernehmen) {
        return std::exchange(m_bOffen, false) && m_db.Beende(bUebernehmen) == ZEILE_OK && bUebernehmen;
    }

private:
    CMxDatabase & m_db;
    bool m_bOffen;
};

// How a read by key takes the key fields.
enum MatchMode : int {
    // All parts equal, one row.
    MATCH_GENAU = 0,
    // The rows whose last set part begins with the given text and whose earlier parts are equal.
    MATCH_TEIL = 1,
    // The rows that are equal in every part that is set; none set: the whole table.
    MATCH_ALLE = 2,
};

// How a set is opened: a hint, without effect on what is read.
enum OPENTYPE : int { OPEN_STANDARD = 0, OPEN_TABELLE = 1, OPEN_DYNAMISCH = 2 };

class CMxRSet {
public:
    explicit CMxRSet(CMxDatabase & db);

    virtual ~CMxRSet();
    // Chooses the key (from 1) and the direction of the following reads. A fresh object has key 1 ascending.
    virtual void SetKey(int iKey, bool bAscending = true);
    // Opens all rows in the order of the chosen key and reads the first.
    virtual int GetAll();
    // Empties the fields that belong to a key of the table; ClearAll empties all fields, joined ones included. The
    // open set stays.
    virtual void ClearKey();
    virtual void ClearAll();
    // Deletes the current row and all behind it in the open set. 0 if all are gone.
    virtual int DeleteRows();
    // Reads by the key fields set; GetByK1 to GetByK3 are short for it. 2 for a key that the table lacks.
    virtual int GetRecByKey(int iKey, MatchMode mode);
    // Adds the fields as a new row; writes them over the current row; deletes the current row and moves to the next
    // of the set. 3 on a read-only handle, and nothing changes. Without a current row rewriting and deleting are 1,
    // or what the store failed with when it should have given the row.
    virtual int WriteRec();
    virtual int RewriteRec();
    virtual int DeleteRec();
    // Narrows the set that the next read opens, First included, to the rows for which f is true once their columns
    // are in this object; what the class joins to them comes later. Holds for one read.
    virtual void ModifyFilter(std::function<bool()> f);
    // Copies fields and choice of key of an object of the same table; a copy has no open set.
    virtual CMxRSet & operator=(const CMxRSet & r);
    // Same table, same fields.
    virtual bool operator==(const CMxRSet & r) const;
    // Sets the parts of the chosen key in order and reads the one row.
    virtual int GetRecByParam(std::initializer_list<CString> vTeile);
    // As fresh: key 1 ascending, empty fields, no open set. InitI closes the set and keeps the fields.
    virtual void Init();
    virtual void InitI();
    // The record layer speaks no SQL: always 2, a refused read.
    virtual int ExecSQL(const CString & sSQL);
    // Bounds the next read in mode MATCH_ALLE: its first unset key part lies from sVon to sBis, both included.
    virtual void AddKeysBW(const CString & sVon, const CString & sBis);

    CMxRSet(const CMxRSet & r);

    int GetByK1(MatchMode mode = MATCH_GENAU) { return GetRecByKey(1, mode); }
    int GetByK2(MatchMode mode = MATCH_GENAU) { return GetRecByKey(2, mode); }
    int GetByK3(MatchMode mode = MATCH_GENAU) { return GetRecByKey(3, mode); }
    // Reads by key iKey, whose first parts are given and whose others are empty. The texts may be the object's own
    // fields, which a caller that clears the key first would lose. An empty text stands for what the mode says, except
    // for a patient's or an address's number, which is given even if it is empty.
    int LiesMit(int iKey, MatchMode mode, std::initializer_list<CString> vTeile);
    // The first row of the set that the last read opened; the next row of it.
    int First();
    int Next();
    // Write takes a text for the host's journal and ignores it.
    int Write(const CString & sJournal = CString());
    int Delete() { return DeleteRec(); }
    // Hints.
    void SetForwardOnly(bool) {}
    void SetOpenType(OPENTYPE, bool) {}

    // The handle, and the table's description.
    [[nodiscard]] CMxDatabase & Datenbank() const { return *m_pDb; }
    [[nodiscard]] virtual const STabelle & Tabelle() const = 0;

protected:
    // The fields in the order of the columns; they belong to the derived object and live as long as it.
    [[nodiscard]] virtual CFelder Felder() = 0;
    [[nodiscard]] CWerte Werte() const;
    // The direction of SetKey.
    [[nodiscard]] bool Aufsteigend() const { return m_bAufsteigend; }
    // Called before the fields are used as key or written, and when they hold another row or are empty.
    virtual void VorZugriff() {}
    virtual void NachLesen() {}

private:
    // The set of the last read: a piece of the table, and the parts of the key that the piece cannot express.
    struct SMenge {
        bool bOffen = false;
        bool bEineZeile = false;
        SBereich bereich;
        std::vector<std::pair<std::uint8_t, std::string>> vWeitereTeile; // column, key bytes
        std::function<bool()> fFilter;
    };

    using CZwischen = std::pair<CString, CString>;

    [[nodiscard]] bool NeueMenge(int iKey);
    void SchliesseMenge();
    int Lies(int iKey, MatchMode mode, bool bGegeben);
    int LiesErste();
    [[nodiscard]] bool FragtNachNiemand(MatchMode mode, bool bGegeben) const;
    void Begrenze(MatchMode mode, const CZwischen * pZwischen);
    int Schritt();
    int SchrittMitFilter();
    [[nodiscard]] bool Passt();
    [[nodiscard]] std::span<const std::uint8_t> Schluesselspalten() const;

    CMxDatabase * m_pDb;
    int m_iKey = 1;
    bool m_bAufsteigend = true;
    int m_iZustand = ZEILE_KEINE; // of the current row: 0 if the fields hold it
    std::function<bool()> m_fFilter;
    std::unique_ptr<CZwischen> m_pZwischen;
    SMenge m_menge;
    std::shared_ptr<CZeilenspeicher> m_pSpeicher; // of the walk, which must not outlive it
    std::unique_ptr<CZeilenmenge> m_pWeg;
    std::vector<CString> m_vVorher; // reused from step to step, as is m_sTeil
    std::string m_sTeil;
};

// The base of the practice's own table classes.
class COrvoRSetEx : public CMxRSet {
public:
    using CMxRSet::CMxRSet;
    using CMxRSet::operator=;
};

// Sets out of the pools that have not come back, of all table classes together.
[[nodiscard]] int & EntlieheneRSets();

// The pool of ready table objects on the read-only database. An object of this class borrows one for its own life;
// GetRSet and ReleaseRSet do it by hand. A borrowed object is fresh.
template <class T> class CAutoRSet {
public:
    explicit CAutoRSet(OPENTYPE eArt = OPEN_TABELLE, bool bGanz = false) : m_p(GetRSet(eArt, bGanz)) {}
    ~CAutoRSet() { ReleaseRSet(m_p); }
    CAutoRSet(const CAutoRSet &) = delete;
    CAutoRSet & operator=(const CAutoRSet &) = delete;
    T * operator->() const { return m_p; }
    T & operator*() const { return *m_p; }

    // The caller owns the object until ReleaseRSet.
    static T * GetRSet(OPENTYPE eArt, bool bGanz) {
        BeginneNutzung();
        auto & vFrei = Freie();
        std::unique_ptr<T> p;
        if (vFrei.empty()) {
            p = std::make_unique<T>(dbDatabaseRO);
        } else {
            p = std::move(vFrei.back());
            vFrei.pop_back();
        }
        p->SetOpenType(eArt, bGanz);
        ++EntlieheneRSets();
        return p.release();
    }
    // Takes back an object of GetRSet; null is ignored.
    static void ReleaseRSet(CMxRSet * p) {
        if (p == nullptr) return;
        p->Init();
        --EntlieheneRSets();
        Freie().emplace_back(static_cast<T *>(p));
        BeendeNutzung();
    }

private:
    static std::vector<std::unique_ptr<T>> & Freie() {
        static std::vector<std::unique_ptr<T>> s_vFrei;
        return s_vFrei;
    }
    T * m_p;
};

} // namespace orvostat
