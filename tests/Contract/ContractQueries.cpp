// The questions of the contract transcript, run in this order after the data
// folder in tests/Contract/data has been loaded as the client loads it.
#include "ContractQueries.h"

namespace {

constexpr QueryArg Int(long long n) { return QueryArg{n, nullptr}; }
constexpr QueryArg Text(const char* sz) { return QueryArg{0, sz}; }

// Manager slots.
enum : int { kLoadStrRes = 1, kGetStrRes = 2 };

// CCommonIni, accessor slot 151: slots 7..15.
constexpr int kCommonIni = 151;

// IGenericTable slots.
enum : int {
    kRecordAmount = 7,
    kFindRecord = 8,
    kRecordId = 9,
    kRecordTitle = 10,
    kFieldAmount = 11,
    kFieldText = 12,
    kFieldInt = 13,
    kValueText = 14,
    kValueInt = 15,
    kKind = 16,
};
// Generic tables of the fixture (accessor slots).
enum : int { kGameMap = 13, kAttackEffect = 15, kDamage = 16, kBuildingType = 27, kPortal = 47, kShop = 117 };

}  // namespace

const QueryLine kQueryLines[] = {
    // Text resources: the client's own file, then a second one that adds and overrides.
    {"LoadStrRes strres.txt", kManager, kLoadStrRes, RESULT_NONE, 1, {Text("strres.txt")}, nullptr},
    {"LoadStrRes missing.txt", kManager, kLoadStrRes, RESULT_NONE, 1, {Text("missing.txt")}, nullptr},
    {"LoadStrRes (empty)", kManager, kLoadStrRes, RESULT_NONE, 1, {Text("")}, nullptr},
    {"GetStrRes 12", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(12)}, nullptr},
    {"GetStrRes 0", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(0)}, nullptr},
    {"GetStrRes 5", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(5)}, nullptr},
    {"GetStrRes 7", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(7)}, nullptr},
    {"GetStrRes 42", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(42)}, nullptr},
    {"GetStrRes 100 (before)", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(100)}, nullptr},
    {"GetStrRes 0xFFFFFFFF", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(0xFFFFFFFFLL)}, nullptr},
    {"GetStrRes 2147483647", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(2147483647)}, nullptr},
    {"GetStrRes 300", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(300)}, nullptr},
    {"GetStrRes 3 (miss)", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(3)}, nullptr},
    {"LoadStrRes strres2.txt", kManager, kLoadStrRes, RESULT_NONE, 1, {Text("strres2.txt")}, nullptr},
    {"GetStrRes 100 (after)", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(100)}, nullptr},
    {"GetStrRes 301", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(301)}, nullptr},
    {"GetStrRes 12 (kept)", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(12)}, nullptr},

    // Common settings.
    {"CommonIni MaleFaceAmount", kCommonIni, 7, RESULT_INT, 0, {}, nullptr},
    {"CommonIni FemaleFaceAmount", kCommonIni, 8, RESULT_INT, 0, {}, nullptr},
    {"CommonIni LeaderScale", kCommonIni, 9, RESULT_INT, 0, {}, nullptr},
    {"CommonIni AssistantScale", kCommonIni, 10, RESULT_INT, 0, {}, nullptr},
    {"CommonIni SubLeaderScale", kCommonIni, 11, RESULT_INT, 0, {}, nullptr},
    {"CommonIni LeaderMaxLife", kCommonIni, 12, RESULT_INT, 0, {}, nullptr},
    {"CommonIni AssistantMaxLife", kCommonIni, 13, RESULT_INT, 0, {}, nullptr},
    {"CommonIni SubLeaderMaxLife", kCommonIni, 14, RESULT_INT, 0, {}, nullptr},
    {"CommonIni EmblemAmount", kCommonIni, 15, RESULT_INT, 0, {}, nullptr},

    // Generic lookups beyond the record dumps: ids, keys, defaults.
    {"GameMap FindRecord 1000", kGameMap, kFindRecord, RESULT_INT, 1, {Int(1000)}, nullptr},
    {"GameMap FindRecord 1001", kGameMap, kFindRecord, RESULT_INT, 1, {Int(1001)}, nullptr},
    {"GameMap FindRecord 999", kGameMap, kFindRecord, RESULT_INT, 1, {Int(999)}, nullptr},
    {"GameMap ValueText 1 NAME", kGameMap, kValueText, RESULT_TEXT, 3, {Int(1), Text("NAME"), Text("-")}, nullptr},
    {"GameMap ValueText 0 File", kGameMap, kValueText, RESULT_TEXT, 3, {Int(0), Text("File"), Text("-")}, nullptr},
    {"GameMap ValueText 0 absent", kGameMap, kValueText, RESULT_TEXT, 3, {Int(0), Text("Nope"), Text("-")}, nullptr},
    {"GameMap ValueText 9 Name", kGameMap, kValueText, RESULT_TEXT, 3, {Int(9), Text("Name"), Text("-")}, nullptr},
    {"GameMap ValueInt 1 pkallowed", kGameMap, kValueInt, RESULT_INT, 3, {Int(1), Text("pkallowed"), Int(-9)}, nullptr},
    {"GameMap ValueInt 0 absent", kGameMap, kValueInt, RESULT_INT, 3, {Int(0), Text("Nope"), Int(-9)}, nullptr},
    {"AttackEffect ValueInt 0 Delay",
     kAttackEffect,
     kValueInt,
     RESULT_INT,
     3,
     {Int(0), Text("Delay"), Int(-1)},
     nullptr},
    {"AttackEffect ValueText 1 effect",
     kAttackEffect,
     kValueText,
     RESULT_TEXT,
     3,
     {Int(1), Text("effect"), Text("-")},
     nullptr},
    {"Damage ValueText 0 Text", kDamage, kValueText, RESULT_TEXT, 3, {Int(0), Text("Text"), Text("-")}, nullptr},
    {"Damage ValueInt 0 Scale", kDamage, kValueInt, RESULT_INT, 3, {Int(0), Text("Scale"), Int(0)}, nullptr},
    {"BuildingType FindRecord 1", kBuildingType, kFindRecord, RESULT_INT, 1, {Int(1)}, nullptr},
    {"BuildingType FindRecord -4", kBuildingType, kFindRecord, RESULT_INT, 1, {Int(0xFFFFFFFCLL)}, nullptr},
    {"BuildingType ValueText 0 any",
     kBuildingType,
     kValueText,
     RESULT_TEXT,
     3,
     {Int(0), Text("1"), Text("-")},
     nullptr},
    {"BuildingType FieldInt 0 9", kBuildingType, kFieldInt, RESULT_INT, 3, {Int(0), Int(9), Int(-7)}, nullptr},
    {"Portal RecordAmount", kPortal, kRecordAmount, RESULT_INT, 0, {}, nullptr},
    {"Portal FindRecord 1", kPortal, kFindRecord, RESULT_INT, 1, {Int(1)}, nullptr},
    {"Shop FindRecord 11", kShop, kFindRecord, RESULT_INT, 1, {Int(11)}, nullptr},
    {"Shop RecordTitle 0", kShop, kRecordTitle, RESULT_TEXT, 1, {Int(0)}, nullptr},

    // ---- Extension point -------------------------------------------------
    // Each table that lands with its own design adds its questions here:
    // its accessor slot, its query slots with their arguments, and for a
    // record result a RecordLayout (fields in declaration order, text
    // buffers with their sizes). Its data files go under tests/Contract/data.
    // Keep the lines of one table together, in query-slot order.
};

const int kQueryLineAmount = static_cast<int>(sizeof(kQueryLines) / sizeof(kQueryLines[0]));

const int kGenericDumpSlots[] = {kGameMap, 14, kAttackEffect, kDamage, kBuildingType, kPortal, 73, kShop, 204};
const int kGenericDumpSlotAmount = static_cast<int>(sizeof(kGenericDumpSlots) / sizeof(kGenericDumpSlots[0]));

const int kVersionDumpSlots[] = {kGameMap, 73, kShop};
const int kVersionDumpSlotAmount = static_cast<int>(sizeof(kVersionDumpSlots) / sizeof(kVersionDumpSlots[0]));
