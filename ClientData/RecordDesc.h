// A record description: one table's fields, stated once, in the order its
// file gives them. Each field names its key in the file (or, in a column
// file, the column's name), how the record keeps it (type and width, and so
// how a value too wide is cut), the value a missing key takes, where the
// member lies in the record, and the values the sample generator writes.
// The loaders read through it; the tools show records, report findings and
// generate data through it; the fuzz targets check every field through it.
//
//     const FieldDesc kShopFields[] = {
//         FIELD(ShopInfo, nPrice, "Price").Default(1).Gen(10, 900).Sometimes(70),
//         FIELD(ShopInfo, szTitle, "Title").GenGbk(2, 6),
//     };
#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

class CEncryptString;
class CZelString;

// How a record keeps a field. Numbers are stored cut to their width (the
// low bytes of the value read); a text keeps at most its buffer less one
// character.
enum class FieldType : uint8_t {
    Int,        // signed, 1, 2, 4 or 8 bytes
    UInt,       // unsigned, 1, 2, 4 or 8 bytes
    Hex,        // unsigned 32-bit, written in hexadecimal
    Text,       // a char buffer of nSize bytes
    Scrambled,  // a CEncryptString: at most 255 characters, held scrambled
    String,     // a CZelString: any length
};

// The values the sample generator writes for a field. Numbers lie in
// [nLow, nHigh]. A text is nLow to nHigh GBK characters when szPattern is
// null, else szPattern with a number in [nLow, nHigh] in place of its "%d",
// or one of its "|"-separated words. nPercent of the records carry the key;
// the others take the default. A title field counts up from nLow.
struct FieldGen {
    int64_t nLow;
    int64_t nHigh;
    const char* szPattern;
    int nPercent;
};

struct FieldDesc {
    const char* szKey;
    FieldType type;
    uint16_t nSize;         // numbers: bytes of the member; texts: the buffer
    uint32_t nOffset;       // of the member in the record
    int64_t nDefault;       // a missing number
    const char* szDefault;  // a missing text; null reads as ""
    FieldGen gen;

    bool bTitle;            // read from the section's title by the table's own rule, not from a key
    bool bMember;           // kept in the record; else the table's own rules read it
    const char* szSection;  // for a table that reads fixed sections: the key's section; else null
    bool bOutsideFile;      // filled from elsewhere (a folder search, a further file), not the main file
    bool bUnread;           // a member no file fills: cleared when the record is made
    uint16_t nKeyLength;    // of szKey, so that a key compares its length first
    bool bNumbered;         // szKey holds "%d" (see IsNumbered)

    constexpr FieldDesc Default(int64_t n) const { return With(&FieldDesc::nDefault, n); }
    constexpr FieldDesc Default(const char* sz) const { return With(&FieldDesc::szDefault, sz); }
    constexpr FieldDesc AsHex() const { return With(&FieldDesc::type, FieldType::Hex); }
    // The record's key: the section's title, or a column file's key column.
    constexpr FieldDesc FromTitle() const { return With(&FieldDesc::bTitle, true); }
    constexpr FieldDesc OutsideFile() const { return With(&FieldDesc::bOutsideFile, true); }
    constexpr FieldDesc Unread() const { return With(&FieldDesc::bUnread, true); }
    constexpr FieldDesc InSection(const char* szTitle) const { return With(&FieldDesc::szSection, szTitle); }
    constexpr FieldDesc Gen(int64_t nLow, int64_t nHigh) const { return Gen(nullptr, nLow, nHigh); }
    constexpr FieldDesc Gen(const char* szPattern, int64_t nLow, int64_t nHigh) const
    {
        return With(&FieldDesc::gen, FieldGen{nLow, nHigh, szPattern, gen.nPercent});
    }
    // A text of nLow to nHigh GBK characters.
    constexpr FieldDesc GenGbk(int64_t nLow, int64_t nHigh) const { return Gen(nullptr, nLow, nHigh); }
    constexpr FieldDesc Sometimes(int nPercent) const
    {
        return With(&FieldDesc::gen, FieldGen{gen.nLow, gen.nHigh, gen.szPattern, nPercent});
    }

    constexpr bool IsNumber() const { return type <= FieldType::Hex; }
    // Characters a text field keeps.
    constexpr std::size_t TextLimit() const
    {
        return type == FieldType::Scrambled ? 255 : type == FieldType::String ? SIZE_MAX : nSize - 1u;
    }
    // A key written with "%d", such as "Row%d", stands for a family of keys
    // ("Line1", "Line2", ...) that the table's own rules read.
    constexpr bool IsNumbered() const { return bNumbered; }
    // The number n when szKey is this field's key with n in place of "%d"
    // (as "%d" writes a number: no sign but "-", no leading zero); -1 when it
    // is not.
    int64_t NumberOf(const char* szKey, std::size_t nLength) const;

private:
    // A copy with one member changed.
    template <class T>
    constexpr FieldDesc With(T FieldDesc::*pMember, T value) const
    {
        FieldDesc field = *this;
        field.*pMember = value;
        return field;
    }
};

template <class T>
struct FieldTypeOf {
    static_assert(std::is_integral_v<T> || std::is_same_v<std::remove_extent_t<T>, char>, "a number or a char buffer");
    static constexpr FieldType value =
        std::is_array_v<T> ? FieldType::Text : (std::is_signed_v<T> ? FieldType::Int : FieldType::UInt);
};
template <>
struct FieldTypeOf<CEncryptString> {
    static constexpr FieldType value = FieldType::Scrambled;
};
template <>
struct FieldTypeOf<CZelString> {
    static constexpr FieldType value = FieldType::String;
};

constexpr bool HoldsNumberMark(const char* szKey)
{
    for (; *szKey != '\0'; ++szKey)
        if (szKey[0] == '%' && szKey[1] == 'd')
            return true;
    return false;
}

template <class T>
constexpr FieldDesc FieldOf(const char* szKey, std::size_t nOffset)
{
    return FieldDesc{szKey,
                     FieldTypeOf<T>::value,
                     static_cast<uint16_t>(sizeof(T)),
                     static_cast<uint32_t>(nOffset),
                     0,
                     nullptr,
                     FieldGen{0, 0, nullptr, 100},
                     false,
                     true,
                     nullptr,
                     false,
                     false,
                     static_cast<uint16_t>(std::char_traits<char>::length(szKey)),
                     HoldsNumberMark(szKey)};
}

// A value of the file that the record does not keep as it stands: a count,
// a key of the table's index, a text the table parses. T is how it is read.
template <class T>
constexpr FieldDesc FileFieldOf(const char* szKey)
{
    FieldDesc field = FieldOf<T>(szKey, 0);
    field.bMember = false;
    return field;
}
#define FILE_FIELD(T, key) FileFieldOf<T>(key)

// A member of record type R read from key (or column) key.
#define FIELD(R, member, key) FieldOf<decltype(R::member)>(key, offsetof(R, member))
// Element nIndex of an array member.
#define FIELD_AT(R, member, nIndex, key) \
    FieldOf<std::remove_extent_t<decltype(R::member)>>(key, offsetof(R, member) + (nIndex) * sizeof(R::member[0]))

// The fields of one record, in the order the file gives them.
struct RecordDesc {
    const FieldDesc* pField;
    std::size_t nFieldAmount;

    template <std::size_t N>
    constexpr RecordDesc(const FieldDesc (&setField)[N]) : pField(setField), nFieldAmount(N)
    {
    }
    constexpr RecordDesc(const FieldDesc* pFirst, std::size_t nAmount) : pField(pFirst), nFieldAmount(nAmount) {}
    const FieldDesc* begin() const { return pField; }
    const FieldDesc* end() const { return pField + nFieldAmount; }
    // The field of a key, compared without regard to ASCII case; null when
    // the record has none.
    const FieldDesc* Find(const char* szKey, std::size_t nLength) const;
};

// A number field's value as the record holds it, widened.
int64_t FieldNumberGet(const FieldDesc& field, const void* pRecord);
// A text field's text as the record holds it (a scrambled name is unscrambled
// into one of the scrambler's rotating buffers); "" for a number field.
const char* FieldTextGet(const FieldDesc& field, const void* pRecord);
