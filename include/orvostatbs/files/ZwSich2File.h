// Intermediate saves: keep the memory of a long run bounded by moving the hits collected so far to a file.
//
//   CZwSich2File sicherung("ZW", CString(), iFS_SICHERUNG, pParent);
//   sicherung.m_bZwSich = true;
//   sicherung.DeleteZwFiles();
//   ... during the run, whenever the table is large:
//   sicherung.WriteZwDaten(accu.m_vBehHits, &accu);
//   ... a reading class whose IsFirstLineStruct is false takes the hits back, then
//   sicherung.DeleteZwFiles();
//
// The file lies in the practice's own store, under the names of a file set; it has no title line and no selection file.
#pragma once

#include "orvostatbs/files/StatEval.h"

#include <vector>

namespace orvostat {

class CZwSich2File : public CStatEval<CDBStdioFile> {
public:
    // The files' name, a second one without effect, the layout (not owned, may be null: nothing is written).
    CZwSich2File(const CString & sName, const CString & sName2, int * pStruct, CWnd * pParent);

    int * SetLineStruct() override { return m_pZwStruct; }
    bool GetLineData2File(CStatLines &) override { return true; }
    long GetGesamtPos() override;
    bool CreateSelektionsFile(const CString &) override { return true; }
    CString GetDatFilename() override { return GetOrvoStatWSPath() + m_sZwName + ".SVE"; }
    CString GetIniFilename() override { return GetOrvoStatWSPath() + m_sZwName + ".ISV"; }
    // Writes the accumulator's hits, without a title line: CODE_OK.
    int DoData(CDBStdioFile & file, int & iCount) override;

    // Borrowed; null has no hits.
    void SetFilter(CStatAccu * pAccu) { m_pAccu = pAccu; }
    // Adds the accumulator's hits to the file and empties vHits, which is the accumulator's own table, keeping room for
    // m_iZwKapazitaet of them; also when the write has failed, after its prompt. Does nothing without m_bZwSich. Always
    // true.
    bool WriteZwDaten(std::vector<CBehHitLine> & vHits, CStatAccu * pAccu);
    // Deletes both files, if they are there.
    void DeleteZwFiles();

    CStatAccu * m_pAccu = nullptr;
    CString m_sZwName;
    CString m_sZwName2;
    int * m_pZwStruct;
};

} // namespace orvostat
