#include "ClientData/ActionEffectOffsetData.h"

#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/ZelCrt.h"

namespace {
const char kFile[] = "ini/ActionEffectOffset.ini";
}

void CActionEffectOffsetData::Load()
{
    CIniSectionReader reader;
    if (!reader.Open(kFile, 1))
        return;
    m_setOffset.reserve(m_setOffset.size() + static_cast<std::size_t>(reader.GetSectionAmount()));
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const int nNumber = CrtAtoi(reader.GetTitle(nSection).data());
        if (nNumber <= 0)
            continue;
        ActionEffectOffset offset;
        offset.nId = nNumber / 10000;
        offset.nVariant = nNumber % 10000 / 10;
        offset.nSubVariant = nNumber % 10;
        offset.nOffsetX = reader.GetInt(nSection, "nOffsetX", 0);
        offset.nOffsetY = reader.GetInt(nSection, "nOffsetY", 0);
        offset.nOffsetZ = reader.GetInt(nSection, "nOffsetZ", 0);
        m_setOffset.push_back(offset);
    }
    m_mapFirst.clear();
    for (std::size_t i = 0; i < m_setOffset.size(); ++i) {
        const ActionEffectOffset& offset = m_setOffset[i];
        m_mapFirst.emplace(Key(offset.nId, offset.nVariant, offset.nSubVariant), i);  // first in file order
    }
}

void CActionEffectOffsetData::Clear()
{
    m_setOffset.clear();
    m_mapFirst.clear();
}

const ActionEffectOffset* CActionEffectOffsetData::GetActionEffectOffset(int nId, int nVariant, int nSubVariant)
{
    const auto it = m_mapFirst.find(Key(nId, nVariant, nSubVariant));
    return it == m_mapFirst.end() ? nullptr : &m_setOffset[it->second];
}
