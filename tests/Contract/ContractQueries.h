// The fixed list of questions the contract program asks the library, as data:
// which table (by accessor slot), which query slot, what it takes and what it
// returns. Record results are printed through a layout written from the
// record's design, field by field, never from the library's headers.
#pragma once

#include <cstdint>

// nTableSlot of a line that calls the manager itself.
constexpr int kManager = 0;

enum ResultKind {
    RESULT_NONE,    // void
    RESULT_INT,     // int
    RESULT_UINT,    // unsigned int
    RESULT_BOOL,    // bool
    RESULT_TEXT,    // const char*, printed escaped; null printed as (null)
    RESULT_RECORD,  // const record*, printed through pLayout; null printed as (null)
};

enum FieldType { FIELD_I8, FIELD_U8, FIELD_I16, FIELD_U16, FIELD_I32, FIELD_U32, FIELD_I64, FIELD_TEXT };

// One field of a record in declaration order; nSize is the buffer size of a
// FIELD_TEXT. Offsets follow from the order with the natural alignment of
// each scalar (the layout of the client's compiler for plain structs).
struct RecordField {
    const char* szName;
    FieldType type;
    int nSize;
};

struct RecordLayout {
    const RecordField* pField;
    int nFieldAmount;
};

// An argument: a text when szText is set, else the number. Every argument is
// one word wide (int, unsigned, bool, pointer); 64-bit or floating arguments
// need a call shape of their own.
struct QueryArg {
    long long nValue;
    const char* szText;
};

struct QueryLine {
    const char* szLabel;
    int nTableSlot;  // accessor slot 9..205, or kManager
    int nQuerySlot;
    ResultKind result;
    int nArgAmount;  // 0..4
    QueryArg arg[4];
    const RecordLayout* pLayout;  // RESULT_RECORD only
};

extern const QueryLine kQueryLines[];
extern const int kQueryLineAmount;

// Generic tables whose every record is printed (IGenericTable slots 7..16);
// those named in the fixture's "DeferList.dat" are printed again after each
// change of data version.
extern const int kGenericDumpSlots[];
extern const int kGenericDumpSlotAmount;
extern const int kVersionDumpSlots[];
extern const int kVersionDumpSlotAmount;
