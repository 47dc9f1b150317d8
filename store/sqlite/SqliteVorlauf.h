// A long walk read ahead by a thread of its own, over a connection of its own.
//
// Reading a row takes about as long as a statistic needs to value it, so a walk over a whole table whose caller asks
// for other rows in between lets a second thread read while the caller computes. The walk keeps its own statement open
// meanwhile: it holds the read lock, by which both connections see the same rows, and whatever goes wrong here the walk
// reads by itself from where it is.
#pragma once

#include "SqliteBlock.h"

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace orvostat {

class CSqliteVorlauf {
public:
    // Reads the walk of datei with the bounds of the range from row iAb (from 0) on; null where no second connection
    // to the same file, no thread or no memory is to be had.
    [[nodiscard]] static std::unique_ptr<CSqliteVorlauf>
    Starte(const CSqliteDatei & datei, const STabelle & tabelle, const SBereich & bereich, std::int64_t iAb);
    ~CSqliteVorlauf();
    CSqliteVorlauf(const CSqliteVorlauf &) = delete;
    CSqliteVorlauf & operator=(const CSqliteVorlauf &) = delete;

    // The next row; ZEILE_KEINE at the end of the table, ZEILE_FEHLER if the thread has failed.
    int Naechste(CFelder vFelder);

private:
    static constexpr std::size_t BLOECKE = 4;

    CSqliteVorlauf(std::unique_ptr<CSqliteDatei> pDatei, CAnweisung pAnweisung, std::size_t iSpalten);
    int NaechsterBlock();
    void Lies(std::int64_t iAb);
    int Schritt();
    bool WarteAufPlatz(std::uint64_t iBlock);
    int FuelleBlock(CSqliteBlock & block);

    std::unique_ptr<CSqliteDatei> m_pDatei; // this and the statement are the thread's once it runs
    CAnweisung m_pAnweisung;

    std::mutex m_mutex;                   // for what follows
    std::condition_variable m_cvGefuellt; // a block is filled, or no further one comes
    std::condition_variable m_cvGeleert;  // a block is read, or nobody wants a further one
    std::uint64_t m_iGefuellt = 0;        // how many blocks were filled, and how many of them are read
    std::uint64_t m_iGeleert = 0;
    int m_iEnde = ZEILE_OK; // what ended the thread
    bool m_bHalt = false;

    // Block number i is at i % BLOECKE: the thread's until it is filled, then the walk's until it is read.
    std::vector<CSqliteBlock> m_vBloecke;
    CSqliteBlock * m_pBlock = nullptr; // the one the walk reads, and its next row
    std::size_t m_iZeile = 0;
    std::thread m_faden;
};

} // namespace orvostat
