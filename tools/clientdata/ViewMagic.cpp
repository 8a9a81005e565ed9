// The magic view: every field of a magic type record by name, looked up by
// type and level as the client does (the first record of the pair).
#include <cstddef>
#include <cstring>
#include <string>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"

namespace {

// The record's fields in layout order, each with where it lies; the
// auxiliary list, never filled, is left out.
struct MagicField {
    const char* szName;
    std::size_t nOffset;
    bool bText;
};
#define VIEW_U32(field) \
    MagicField { #field, offsetof(MagicTypeInfo, field), false }
#define VIEW_TEXT(field) \
    MagicField { #field, offsetof(MagicTypeInfo, field), true }
const MagicField kFields[] = {
    VIEW_U32(Type),
    VIEW_U32(Column2),
    VIEW_TEXT(Name),
    VIEW_U32(Column4),
    VIEW_U32(Column5),
    VIEW_U32(Column6),
    VIEW_U32(Column7),
    VIEW_U32(Level),
    VIEW_U32(Column9),
    VIEW_U32(Column10),
    VIEW_U32(Column11),
    VIEW_U32(Column12),
    VIEW_U32(Column13),
    VIEW_U32(Column14),
    VIEW_U32(Column15),
    VIEW_U32(Column16),
    VIEW_U32(Column17),
    VIEW_U32(NeedProfession),
    VIEW_U32(Column19),
    VIEW_U32(Column20),
    VIEW_U32(Column21),
    VIEW_U32(Column22),
    VIEW_U32(Column23),
    VIEW_U32(Column24),
    VIEW_U32(Column25),
    VIEW_U32(LearnFlag),
    VIEW_U32(NeedLevel),
    VIEW_U32(Column28),
    VIEW_U32(Column29),
    VIEW_U32(Column30),
    VIEW_U32(Column31),
    VIEW_U32(Column32),
    VIEW_U32(Column33),
    VIEW_U32(Column34),
    VIEW_U32(SenderAction),
    VIEW_U32(Column36),
    VIEW_U32(Column37),
    VIEW_TEXT(Column38),
    VIEW_TEXT(Column39),
    VIEW_TEXT(Column40),
    VIEW_TEXT(Column41),
    VIEW_TEXT(Column42),
    VIEW_U32(Column43),
    VIEW_TEXT(Column44),
    VIEW_TEXT(Column45),
    VIEW_TEXT(Column46),
    VIEW_TEXT(Column47),
    VIEW_U32(Column48),
    VIEW_U32(Column49),
    VIEW_U32(Column50),
    VIEW_U32(Column51),
    VIEW_U32(Column52),
    VIEW_TEXT(Column53),
    VIEW_U32(Column54),
    VIEW_U32(Column55),
    VIEW_U32(Column56),
    VIEW_U32(Column57),
    VIEW_U32(Column58),
    VIEW_U32(Column59),
    VIEW_U32(Column60),
    VIEW_U32(Column61),
    VIEW_U32(CheckMask),
    VIEW_U32(TargetMask),
    VIEW_U32(SelfMask),
    VIEW_U32(TypeMask),
    VIEW_U32(TargetAction),
    VIEW_TEXT(Text1),
    VIEW_TEXT(Text2),
    VIEW_U32(IntoneActionEx1),
    VIEW_U32(IntoneActionEx2),
    VIEW_U32(IntoneActionEx3),
    VIEW_U32(MountIntoneAction1),
    VIEW_U32(MountIntoneAction2),
    VIEW_U32(MountIntoneAction3),
    VIEW_U32(FlyIntoneAction1),
    VIEW_U32(FlyIntoneAction2),
    VIEW_U32(FlyIntoneAction3),
    VIEW_U32(IntoneCycTime),
    VIEW_TEXT(AppendDisc),
    VIEW_U32(SecondAction),
    VIEW_U32(SecondActionDelay),
    VIEW_TEXT(SecondSenderEffect),
    VIEW_U32(XpAddition),
    VIEW_U32(PowType),
    VIEW_U32(SecondTargetDelay),
    VIEW_U32(SecondActiveTime),
    VIEW_TEXT(IntoneEffect),
    VIEW_TEXT(IntoneSound),
    VIEW_U32(IntoneSoundLoop),
    VIEW_U32(BattleLevReq),
    VIEW_U32(MountSenderAction),
    VIEW_U32(MountSecondAction),
    VIEW_U32(FlySenderAction),
    VIEW_U32(FlySecondAction),
    VIEW_U32(FlyTargetAction),
    VIEW_U32(EquipPos),
};
#undef VIEW_U32
#undef VIEW_TEXT

void MagicRecord(const MagicTypeInfo& info, ViewRecord& record)
{
    record.strKey = std::to_string(info.Type) + " " + std::to_string(info.Level);
    const char* pRecord = reinterpret_cast<const char*>(&info);
    for (const MagicField& field : kFields) {
        if (field.bText) {
            record.AddText(field.szName, pRecord + field.nOffset);
            continue;
        }
        uint32_t nValue = 0;
        std::memcpy(&nValue, pRecord + field.nOffset, sizeof(nValue));
        record.AddInt(field.szName, nValue);
    }
}

void MagicAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    IMagicData& table = *mgr.GetMagicType();
    for (int i = 0; i < table.GetAmount(); ++i) {
        setRecord.emplace_back();
        MagicRecord(*table.GetMagicTypeByIndex(i), setRecord.back());
    }
}

bool MagicGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    long long nType = 0;
    long long nLevel = 0;
    if (setKey.size() != 2 || !ViewKeyNumber(setKey[0], 0, UINT32_MAX, nType) ||
        !ViewKeyNumber(setKey[1], 0, UINT32_MAX, nLevel))
        return false;
    const MagicTypeInfo* pInfo = mgr.GetMagicType()->GetMagicType(static_cast<uint32_t>(nType), static_cast<uint32_t>(nLevel));
    if (pInfo == nullptr)
        return false;
    MagicRecord(*pInfo, record);
    return true;
}

const TableViewRegistration kMagic({"magic", "TYPE LEVEL", &MagicAll, &MagicGet});

}  // namespace
