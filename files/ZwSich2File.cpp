#include "orvostatbs/files/ZwSich2File.h"

#include <algorithm>
#include <cstddef>

namespace orvostat {

CZwSich2File::CZwSich2File(const CString & sName, const CString & sName2, int * pStruct, CWnd * pParent)
    : CStatEval(pParent), m_sZwName(sName), m_sZwName2(sName2), m_pZwStruct(pStruct) {}

long CZwSich2File::GetGesamtPos() {
    return m_pAccu == nullptr ? 0 : static_cast<long>(m_pAccu->m_vBehHits.size());
}

int CZwSich2File::DoData(CDBStdioFile & file, int &) {
    if (m_pAccu == nullptr) return CODE_OK;
    for (const CBehHitLine & hit : m_pAccu->m_vBehHits) {
        m_Line.MoveHit(hit);
        ++m_lPos;
        DoProgress(m_lPos, m_lGesamtPos);
        WriteLines(file, m_Line);
    }
    return CODE_OK;
}

bool CZwSich2File::WriteZwDaten(std::vector<CBehHitLine> & vHits, CStatAccu * pAccu) {
    if (!m_bZwSich) return true;
    SetFilter(pAccu);
    WriteDaten();
    vHits.clear();
    if (vHits.capacity() < static_cast<std::size_t>(std::max(m_iZwKapazitaet, 0)))
        vHits.reserve(static_cast<std::size_t>(m_iZwKapazitaet));
    return true;
}

void CZwSich2File::DeleteZwFiles() {
    DeleteFileA(GetDatFilename());
    DeleteFileA(GetIniFilename());
}

} // namespace orvostat
