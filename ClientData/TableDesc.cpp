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
