// "ItemType.dat" (the "Amount=<n>" line, then one line of 55 blank-separated
// columns per item type, grouped by category with comment lines between the
// groups), its alternative "ini/200/ItemType_200.dat", and
// "ini/ItemCategory.dat" (a section per category whose IDRange lists the id
// ranges of the item types generated for it).
#include <string>
#include <vector>

#include "GenData.h"

namespace {

// A category of item types: its section title and the first id of its block.
// Blocks lie 100000 apart, room for any scale the benchmarks use.
struct ItemKind {
    const char* szCategory;
    uint32_t idFirst;
    int nWeight;  // share of the items, in thousandths
};
constexpr ItemKind kKinds[] = {
    {"Helmet", 100000, 60},   {"Necklace", 200000, 50}, {"Armor", 300000, 90},    {"Ring", 400000, 50},
    {"Boots", 500000, 60},    {"Blade", 600000, 80},    {"Sword", 700000, 80},    {"Bow", 800000, 60},
    {"Wand", 900000, 60},     {"Gem", 1000000, 70},     {"Potion", 1100000, 90},  {"Scroll", 1200000, 60},
    {"Material", 1300000, 100}, {"Mount", 1400000, 30}, {"TaskItem", 1500000, 60},
};
constexpr int WeightSum()
{
    int nSum = 0;
    for (const ItemKind& kind : kKinds)
        nSum += kind.nWeight;
    return nSum;
}
static_assert(WeightSum() == 1000, "3000 item types a scale step");

int KindAmount(const ItemKind& kind, int nScale, int nVariant)
{
    return kind.nWeight * 3 * nScale * (nVariant == 0 ? 10 : 9) / 10;
}

std::string Word(uint32_t nValue) { return std::to_string(nValue) + " "; }

// A GBK text of nChars characters built from the given generator.
std::string GbkText(CDataRng& rng, int nChars)
{
    std::string strText;
    for (int i = 0; i < nChars; ++i) {
        strText.push_back(static_cast<char>(0xB0 + rng.Range(0, 38)));
        strText.push_back(static_cast<char>(0xA1 + rng.Range(0, 93)));
    }
    return strText;
}

// An item name of at most 14 bytes: the base name of two to six characters,
// often with a "+n" grade. Four ids share a base name, as in a real client.
std::string ItemName(CDataRng& rng, const std::string& strBase)
{
    if (rng.Chance(40))
        return strBase + "+" + std::to_string(rng.Range(1, 9));
    return strBase;
}

// One record line: id, name, columns 2 to 53 within their field widths,
// the description (column 54).
std::string ItemLine(CDataRng& rng, uint32_t idType, const std::string& strName, int nKind,
                     const std::string& strText)
{
    std::string s = Word(idType) + strName + " ";
    s += Word(static_cast<uint32_t>(nKind));                                  // 2
    for (int i = 3; i <= 6; ++i)                                              // 3-6: 8-bit
        s += Word(static_cast<uint32_t>(rng.Range(0, 9)));
    s += Word(static_cast<uint32_t>(rng.Range(1, 130)));                      // 7: level
    for (int i = 8; i <= 10; ++i)                                             // 8-10: 16-bit
        s += Word(static_cast<uint32_t>(rng.Range(0, 2000)));
    s += Word(static_cast<uint32_t>(rng.Range(0, 4)));                        // 11: 8-bit
    s += Word(static_cast<uint32_t>(rng.Range(1, 99)));                       // 12: stack
    s += Word(static_cast<uint32_t>(rng.Range(1, 500) * 10));                 // 13: price
    s += Word(static_cast<uint32_t>(rng.Chance(20) ? rng.Range(1, 300) : 0)); // 14
    for (int i = 15; i <= 19; ++i)                                            // 15-19: 16-bit
        s += Word(static_cast<uint32_t>(rng.Range(0, 5000)));
    s += Word(static_cast<uint32_t>(rng.Range(0, 100000)));                   // 20
    s += Word(static_cast<uint32_t>(rng.Range(0, 999))) + Word(static_cast<uint32_t>(rng.Range(0, 999)));
    s += Word(static_cast<uint32_t>(rng.Range(0, 100000)));                   // 23
    for (int i = 24; i <= 29; ++i)                                            // 24-29: 8-bit
        s += Word(static_cast<uint32_t>(rng.Range(0, 100)));
    for (int i = 30; i <= 33; ++i)                                            // 30-33: 16-bit
        s += Word(static_cast<uint32_t>(rng.Range(0, 3000)));
    s += Word(static_cast<uint32_t>(rng.Range(0, 50000)));                    // 34
    s += Word(static_cast<uint32_t>(rng.Range(0, 1000)));                     // 35
    s += Word(static_cast<uint32_t>(rng.Chance(30) ? rng.Range(1, 86400) : 0));  // 36
    for (int i = 37; i <= 45; ++i)                                            // 37-45: indexed values
        s += Word(static_cast<uint32_t>(rng.Chance(50) ? rng.Range(1, 60000) : 0));
    for (int i = 46; i <= 48; ++i)
        s += Word(static_cast<uint32_t>(rng.Range(0, 800)));
    for (int i = 49; i <= 51; ++i)
        s += Word(static_cast<uint32_t>(rng.Chance(25) ? rng.Range(1, 2000000) : 0));
    s += Word(static_cast<uint32_t>(rng.Range(0, 9)));                        // 52
    s += Word(static_cast<uint32_t>(rng.Chance(10) ? 1000000 + rng.Range(0, 999) : 0));  // 53
    return s + strText + "\n";
}

struct ItemFile {
    std::string strBody;  // the lines after "Amount="
    int nRecords = 0;
    std::string strFirstLine;

    void Add(const std::string& strLine, bool bRecord)
    {
        strBody += strLine;
        if (bRecord) {
            ++nRecords;
            if (strFirstLine.empty())
                strFirstLine = strLine;
        }
    }
};

ItemFile ItemBody(CDataRng& rng, int nScale, int nVariant)
{
    ItemFile file;
    for (int k = 0; k < static_cast<int>(sizeof(kKinds) / sizeof(kKinds[0])); ++k) {
        const ItemKind& kind = kKinds[k];
        file.Add("; " + std::string(kind.szCategory) + "\n", false);
        std::string strBase;
        const int nAmount = KindAmount(kind, nScale, nVariant);
        for (int i = 0; i < nAmount; ++i) {
            if (i % 4 == 0)
                strBase = GbkText(rng, rng.Range(2, 6));
            const uint32_t idType = kind.idFirst + static_cast<uint32_t>(i);
            file.Add(ItemLine(rng, idType, ItemName(rng, strBase), k + 1, GbkText(rng, rng.Range(4, 30))), true);
        }
    }
    return file;
}

// The faults of the faulty set, appended to the main file: an id read again
// (dropped), a name of 18 bytes (never found by name), a description of 300
// bytes (cut to 255), and one record beyond the announced amount.
void AddItemFaults(CDataRng& rng, ItemFile& file)
{
    const std::string& strFirst = file.strFirstLine;
    const std::size_t nIdEnd = strFirst.find(' ');
    const std::size_t nNameEnd = strFirst.find(' ', nIdEnd + 1);
    file.Add("; records added by hand\n", false);
    file.Add(strFirst.substr(0, nIdEnd) + " " + GbkText(rng, 3) + strFirst.substr(nNameEnd), true);
    file.Add(ItemLine(rng, 1590001, GbkText(rng, 9), 15, GbkText(rng, 6)), true);
    file.Add(ItemLine(rng, 1590002, GbkText(rng, 4), 15, GbkText(rng, 150)), true);
    file.Add(ItemLine(rng, 1590003, GbkText(rng, 4), 15, GbkText(rng, 8)), true);
}

void WriteItemFile(CGenContext& context, int nVariant)
{
    CDataRng rng(nVariant == 0 ? 51u : 5100u);
    ItemFile file = ItemBody(rng, context.Scale(), nVariant);
    int nAmount = file.nRecords;
    if (context.Faulty() && nVariant == 0) {
        AddItemFaults(rng, file);
        nAmount = file.nRecords - 1;  // the last record is never read
    } else if (context.Faulty()) {
        nAmount = file.nRecords + 5;  // announces records that are not there
    }
    const std::string strText = "Amount=" + std::to_string(nAmount) + "\n" + file.strBody;
    context.Write(nVariant == 0 ? "ini/ItemType.dat" : AlternativePathOf("ItemType.dat"), strText, nVariant == 1);
}

void GenerateItemType(CGenContext& context)
{
    WriteItemFile(context, 0);
    WriteItemFile(context, 1);
}

// Each category lists its block, in one range or split in two with single
// ids between; the weapon groups gather several blocks.
void GenerateItemCategory(CGenContext& context)
{
    CDataRng rng(52u);
    const int nScale = context.Scale();
    std::string strText = "; item categories: IDRange lists ids and low-high ranges, comma-separated\n";
    for (const ItemKind& kind : kKinds) {
        const uint32_t idLast = kind.idFirst + static_cast<uint32_t>(KindAmount(kind, nScale, 0)) - 1;
        strText += "\n[" + std::string(kind.szCategory) + "]\nIDRange=";
        const uint32_t idSplit = kind.idFirst + static_cast<uint32_t>(rng.Range(4, 40));
        if (rng.Chance(50) && idSplit + 3 < idLast)
            strText += std::to_string(kind.idFirst) + "-" + std::to_string(idSplit) + "," +
                       std::to_string(idSplit + 1) + "," + std::to_string(idSplit + 2) + "-" + std::to_string(idLast);
        else
            strText += std::to_string(kind.idFirst) + "-" + std::to_string(idLast);
        strText += "\n";
    }
    const auto range = [&](int nKind) {
        const ItemKind& kind = kKinds[nKind];
        return std::to_string(kind.idFirst) + "-" +
               std::to_string(kind.idFirst + static_cast<uint32_t>(KindAmount(kind, nScale, 0)) - 1);
    };
    strText += "\n[Weapon]\nIDRange=" + range(5) + "," + range(6) + "," + range(7) + "," + range(8) + "\n";
    strText += "\n[Jewelry]\nIDRange=" + range(1) + "," + range(3) + "\n";
    // A title met again extends the category.
    strText += "\n[Consumable]\nIDRange=" + range(10) + "\n";
    strText += "\n[Consumable]\nIDRange=" + range(11) + "\n";
    if (context.Faulty()) {
        strText += "\n[OldBlade]\nIDRange=" + std::to_string(kKinds[5].idFirst + 50) + "-" +
                   std::to_string(kKinds[5].idFirst) + "\n";
        strText += "\n[Festival]\nIDRange=NULL\n";
        strText += "\n[Gift]\nIDRange=" + range(10) + ",NULL\n";
    }
    context.Write("ini/ItemCategory.dat", strText, true);
}

const GeneratorRegistration kItemType("ItemType.dat", GenerateItemType);
const GeneratorRegistration kItemCategory("ini/ItemCategory.dat", GenerateItemCategory);

}  // namespace
