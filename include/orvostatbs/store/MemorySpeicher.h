// The rows of a practice in memory: for tests, and for a run over rows that were read once.
//
// A row takes eight bytes for each column, its key bytes and about forty bytes more; texts too long for a CString's
// word are shared with whoever holds the same CString. Writing is cheap in any order: rows are sorted when the next
// walk opens, and a row that comes in key order costs nothing then.
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <unordered_map>
#include <vector>

namespace orvostat {

class CMemoryTabelle;
struct SMemoryZeile;

// The rows live as long as the object. Nothing here fails but for want of memory (std::bad_alloc); every table exists
// and is empty at first.
class CMemorySpeicher final : public CZeilenspeicher {
public:
    CMemorySpeicher();
    ~CMemorySpeicher() override;

    std::unique_ptr<CZeilenmenge> Oeffne(const STabelle & tabelle, const SBereich & bereich) override;
    int Schreibe(const STabelle & tabelle, CWerte vWerte) override;
    int Beginne() override;
    int Beende(bool bUebernehmen) override;
    [[nodiscard]] std::int64_t Zeilenzahl(const STabelle & tabelle) override;
    [[nodiscard]] bool NurLesen() const override { return m_bNurLesen; }

    // From now on every write is refused; false lifts it.
    void SetzeNurLesen(bool bNurLesen) { m_bNurLesen = bNurLesen; }

private:
    friend class CMemoryWeg;
    struct SAenderung;

    CMemoryTabelle & Tabelle(const STabelle & tabelle);
    void Loesche(CMemoryTabelle & tabelle, SMemoryZeile & zeile);
    SMemoryZeile & Fuege(CMemoryTabelle & tabelle, CWerte vWerte);
    SMemoryZeile & Aendere(CMemoryTabelle & tabelle, SMemoryZeile & zeile, CWerte vWerte);
    void Merke(SAenderung aenderung) noexcept;
    void NimmZurueck() noexcept;

    std::unordered_map<const STabelle *, std::unique_ptr<CMemoryTabelle>> m_mapTabellen;
    std::vector<SAenderung> m_vAenderungen; // of the open group, oldest first
    int m_iTiefe = 0;
    bool m_bVerworfen = false;
    bool m_bNurLesen = false;
};

} // namespace orvostat
