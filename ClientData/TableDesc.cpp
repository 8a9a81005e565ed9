#include "ClientData/TableDesc.h"

void RecordVisit(const RecordDesc& desc, const void* pRecord, FieldVisitor& visitor)
{
    for (const FieldDesc& field : desc) {
        if (field.bTitle || !field.bMember)
            continue;
        if (field.IsNumber())
            visitor.Number(field.szKey, FieldNumberGet(field, pRecord));
        else
            visitor.Text(field.szKey, FieldTextGet(field, pRecord));
    }
}

void TableRecordVisit(CDataTable& table, const TableDesc& desc, const void* pRecord, FieldVisitor& visitor)
{
    if (desc.pRecord != nullptr)
        RecordVisit(*desc.pRecord, pRecord, visitor);
    if (desc.pfnVisit != nullptr)
        desc.pfnVisit(table, pRecord, visitor);
}
