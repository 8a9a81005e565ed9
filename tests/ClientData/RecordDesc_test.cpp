#include "ClientData/RecordDesc.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ClientData/ClientDataMgr.h"
#include "ClientData/RecordRead.h"
#include "Support/TestSupport.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"

namespace {

using RecordDescTest = RegistryFolderTest<TableRegistry>;

// Every description of the catalogue: members never overlap, text buffers
// hold a terminator, a key names one field only.
TEST(RecordDescCatalogue, FieldsAreDistinctMembersAndKeys)
{
    for (const CatalogueEntry& entry : kCatalogue) {
        const RecordDesc* pDesc = entry.pDesc->pRecord;
        if (pDesc == nullptr)
            continue;
        std::vector<std::pair<uint32_t, uint32_t>> setSpan;
        for (const FieldDesc& field : *pDesc) {
            if (field.bMember)
                setSpan.emplace_back(field.nOffset, field.nOffset + field.nSize);
            if (field.type == FieldType::Text) {
                EXPECT_GE(field.nSize, 2u) << entry.szName << " " << field.szKey;
            }
            if (!field.bTitle && !field.bUnread && !field.IsNumbered() && field.szSection == nullptr) {
                EXPECT_EQ(pDesc->Find(field.szKey, std::strlen(field.szKey)), &field)
                    << entry.szName << " " << field.szKey;
            }
        }
        std::sort(setSpan.begin(), setSpan.end());
        for (std::size_t i = 1; i < setSpan.size(); ++i)
            EXPECT_LE(setSpan[i - 1].second, setSpan[i].first) << entry.szName << " field at " << setSpan[i].first;
    }
}

struct Sample {
    int32_t nNumber;
    uint8_t ucSmall;
    char szText[8];
    int32_t nDefaulted;
};
const FieldDesc kSampleFields[] = {
    FIELD(Sample, nNumber, "Number"), FIELD(Sample, ucSmall, "Small"),
    FIELD(Sample, szText, "Text"),    FIELD(Sample, nDefaulted, "Defaulted").Default(7),
    FILE_FIELD(char[64], "Row%d"),
};
const RecordDesc kSample(kSampleFields);

struct Finding {
    int nLine;
    std::string strRule;
    bool operator==(const Finding& other) const { return nLine == other.nLine && strRule == other.strRule; }
};
std::ostream& operator<<(std::ostream& out, const Finding& finding)
{
    return out << finding.nLine << ":" << finding.strRule;
}

// Collects the findings of what runs while it lives.
class CFindings {
public:
    CFindings() { LoadFindingSinkSet(&Collect, this); }
    ~CFindings() { LoadFindingSinkSet(nullptr, nullptr); }
    std::vector<Finding> m_setFinding;

private:
    static void Collect(const LoadFinding& finding, void* pContext)
    {
        static_cast<CFindings*>(pContext)->m_setFinding.push_back({finding.nLine, finding.szRule});
    }
};

TEST(RecordReadTest, SectionsTakeTheFirstLineOfEachKeyCutToTheFieldAndReportWhatChanged)
{
    CIniSectionReader reader;
    reader.OpenText("[1]\r\nnumber=12abc\r\nSMALL=300\nText=longer than eight\nText=second\nRow3=r\nOther=1\n");
    CFindings findings;
    Sample sample{};
    RecordReadSection(kSample, reader, 0, &sample, "f.ini");
    EXPECT_EQ(sample.nNumber, 12);
    EXPECT_EQ(sample.ucSmall, 300 % 256);  // the low byte
    EXPECT_STREQ(sample.szText, "longer ");
    EXPECT_EQ(sample.nDefaulted, 7);
    const std::vector<Finding> kExpected = {{2, "not-a-number"}, {3, "number-cut"},  {4, "text-cut"},
                                            {5, "repeated-key"}, {7, "unknown-key"}, {1, "missing-key"}};
    EXPECT_EQ(findings.m_setFinding, kExpected);
}

TEST(RecordReadTest, ColumnsDefaultMissingOnesAndScansStopAtTheFirstNonNumber)
{
    CDataFileReader reader;
    reader.OpenImage("// comment\n5 9 abc\n", ' ');
    CFindings findings;
    Sample sample{};
    RecordReadColumns(kSample, *reader.GetRecord(0), 0, &sample, "f.dat");
    EXPECT_EQ(std::make_pair(sample.nNumber, int{sample.ucSmall}), std::make_pair(5, 9));
    EXPECT_EQ(std::make_pair(std::string(sample.szText), sample.nDefaulted), std::make_pair(std::string("abc"), 7));
    EXPECT_EQ(findings.m_setFinding, (std::vector<Finding>{{2, "missing-key"}}));

    findings.m_setFinding.clear();
    Sample scanned{};
    EXPECT_EQ(RecordScanLine(kSample, "  \t ", &scanned, "f.ini", 1), -1);  // a blank line
    EXPECT_EQ(RecordScanLine(kSample, "4 x 5", &scanned, "f.ini", 3), 1);   // stops at x
    EXPECT_EQ(std::make_pair(scanned.nNumber, int{scanned.ucSmall}), std::make_pair(4, 0));
    EXPECT_EQ(findings.m_setFinding, (std::vector<Finding>{{3, "not-a-number"}}));
}

// A numbered field stands for every key "Row<n>" written as "%d" writes n.
TEST(RecordReadTest, NumberedKeysAreFoundFromTheKeysPresent)
{
    const FieldDesc& row = kSampleFields[4];
    const std::pair<const char*, int64_t> kKeys[] = {{"Row0", 0}, {"row12", 12}, {"Row012", -1},        {"Row-1", -1},
                                                     {"Row", -1}, {"Rows1", -1}, {"Row99999999999", -1}};
    for (const auto& key : kKeys)
        EXPECT_EQ(row.NumberOf(key.first, std::strlen(key.first)), key.second) << key.first;
    CIniSectionReader reader;
    reader.OpenText("[s]\nRow9=a\nRow1=b\nROW1=c\nRow3=d\nRow1000000=e\n");
    EXPECT_EQ(RecordKeyNumbers(row, reader, 0, 1, 9), (std::map<int, int>{{1, 1}, {3, 3}, {9, 0}}));
}

// What the loaders report beyond their fields: records a lookup never
// answers, counts that disagree with the lines, lines that give no record.
// The tools' lint test finds the other rules where the generator plants them.
TEST_F(RecordDescTest, TablesReportTheirOwnRulesWithFileAndLine)
{
    const struct {
        const char* szPath;
        const char* szText;
        std::vector<Finding> setExpected;
    } kCases[] = {
        {"ini/ItemType.dat", "Amount=1\n1 a\n2 b\n", {{3, "amount-low"}}},
        {"ini/ItemType.dat", "Amount=3\n1 a\n1 b\n", {{3, "duplicate-id"}, {1, "amount-high"}}},
        {"ini/MagicType.ini", "1 2 n 4\n\n5\n", {{1, "short-line"}, {2, "blank-line"}}},
        {"ini/Monster.dat",
         "[7]\nName=a\n[x]\n[7]\nName=b\n[8]\nName=b\n",
         {{3, "bad-title"}, {1, "duplicate-id"}, {4, "duplicate-name"}}},
        {"ini/monsterspeak.ini",
         "[1]\nAttackAmount=1\nAttack0=a\nAttack1=b\n[1]\n",
         {{1, "line-amount"}, {5, "duplicate-id"}}},
        {"ini/ItemCategory.dat",
         "[A]\nIDRange=5-1,x\n[B]\nIDRange=null\n",
         {{2, "reversed-range"}, {2, "bad-range"}, {3, "no-range"}}},
        {"DeferList.dat", "Nobody.ini\nNpc.ini\nitemtype.DAT\n", {{1, "defer-unknown"}, {2, "defer-fixed-path"}}},
    };
    for (const auto& c : kCases) {
        WriteFile(c.szPath, c.szText);
        CFindings findings;
        {
            CClientDataMgr* pMgr = static_cast<CClientDataMgr*>(QueryClientDataMgr());
            pMgr->LoadDeferList();
            pMgr->ReloadDeferred(false);
        }
        DestroyClientDataMgr();
        std::vector<Finding> setFound;
        for (const Finding& finding : findings.m_setFinding)
            if (finding.strRule != "missing-key" && finding.strRule != "unknown-key")
                setFound.push_back(finding);
        EXPECT_EQ(setFound, c.setExpected) << c.szPath;
        std::remove(c.szPath);
    }
}

}  // namespace
