#include "ClientData/ActionType.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

// clang-format off
const char* const kActionNames[kActionNameAmount] = {
    // 0-9
    "_ACTION_DANCE1", "_ACTION_DANCE2", "_ACTION_DANCE3", "_ACTION_DANCE4", "_ACTION_DANCE5", "_ACTION_DANCE6",
    "_ACTION_DANCE7", "_ACTION_DANCE8", "_ACTION_STANDBY", "_ACTION_REST1",
    // 10-19
    "_ACTION_REST2", "_ACTION_REST3", "_ACTION_STANDBY_I", "_ACTION_INJURE_STANDBY", "_ACTION_WALKL",
    "_ACTION_WALKR", "_ACTION_RUNL", "_ACTION_RUNR", "_ACTION_RUNL_M_ADD", "_ACTION_RUNR_M_ADD",
    // 20-29
    "_ACTION_TRANSFORM", "_ACTION_WALKL_I", "_ACTION_WALKR_I", "_ACTION_RUNL_I", "_ACTION_RUNR_I",
    "_ACTION_GUIDE_GRANTEE", "_ACTION_JUMP_BACK", "_ACTION_RUNL_FAST", "_ACTION_RUNR_FAST", "_ACTION_JUMP_RUN",
    // 30-39
    "_ACTION_UP_SWORD1", "_ACTION_UP_SWORD2", "_ACTION_UP_SWORD3", "_ACTION_BACK_BAIHUO", "_ACTION_BACK_LEIYIN",
    "_ACTION_BACK_SHENJIAN", "_ACTION_BACK_SHUSHAN", "_ACTION_BACK_TIANMO", "_ACTION_JUMP", "_ACTION_JUMP_ATK",
    // 40-49
    "_ACTION_JUMP_ATKEND", "_ACTION_SALUTE", "_ACTION_GENUFLECT", "_ACTION_JUMP1", "_ACTION_JUMP2", "_ACTION_JUMP3",
    "_ACTION_JUMP4", "_ACTION_JUMP5", "_ACTION_JUMP_DIZZY", "_ACTION_JUMP_HUG",
    // 50-59
    "_ACTION_LAUGH", "_ACTION_HAPPY", "_ACTION_WAVE", "_ACTION_GUFFAW", "_ACTION_FURY", "_ACTION_SAD",
    "_ACTION_EXCITEMENT", "_ACTION_SAYHELLO", "_ACTION_FLOWER", "_ACTION_PLAY_LUTE",
    // 60-69
    "_ACTION_PLAY_FLUTE", "_ACTION_ANGRY", "_ACTION_THROW_ITEM", "_ACTION_CLAP_HANDS", "_ACTION_FLY_KISS",
    "_ACTION_KNEEL", "_ACTION_OBEISANCE", "_ACTION_COOL", "_ACTION_COOLPOSE", "_ACTION_RIDESWORD_MOVE1",
    // 70-79
    "_ACTION_RIDESWORD_MOVE2", "_ACTION_ZAZEN", "_ACTION_ZAZENCOOL", "_ACTION_PICKUP", "_ACTION_SIT_CHAIR",
    "_ACTION_SITDOWN", "_ACTION_SITDOWN_STATIC", "_ACTION_SITDOWN_BACK", "_ACTION_LIE_DOWN1", "_ACTION_LIE_DOWN2",
    // 80-89
    "_ACTION_GROVEL", "_ACTION_SLEEP", "_ACTION_BREAK_FOAM", "_ACTION_CLASP_STAND", "_ACTION_CLASP_WALK0",
    "_ACTION_CLASP_WALK1", "_ACTION_CLASP_RUN0", "_ACTION_CLASP_RUN1", "_ACTION_CLASP_JUMP", "_ACTION_MISS",
    // 90-99
    "_ACTION_BRUISING", "_ACTION_BRUISE_FROST", "_ACTION_FAINT", "_ACTION_LIE", "_ACTION_GUIDE", "_ACTION_ALERT",
    "_ACTION_ALERT_I", "_ACTION_DODGE0", "_ACTION_BRUISE0", "_ACTION_BRUISE1",
    // 100-109
    "_ACTION_DIE0", "_ACTION_BODY0", "_ACTION_DIE1", "_ACTION_BODY1", "_ACTION_DIE2", "_ACTION_BODY2",
    "_ACTION_DIE3", "_ACTION_BODY3", "_ACTION_DIEFLY", "_ACTION_DIEFLYEND",
    // 110-119
    "_ACTION_WALKBACK", "_ACTION_PROTECT", "_ACTION_DRAWARM", "_ACTION_RECEIVEARM", "_ACTION_PREPARE_WAR",
    "_ACTION_WALK_WIRE", "_ACTION_BACKSHAKE", "_ACTION_RELIVE", "_ACTION_ATTACK0", "_ACTION_ATTACK1",
    // 120-129
    "_ACTION_ATTACK2", "_ACTION_FAR_ATTACK", "_ACTION_USE_ITEm", "_ACTION_PUNCTURE", "_ACTION_AIRSTRIKE",
    "_ACTION_TORNADO", "_ACTION_BODYSHIELD", "_ACTION_GODBELIEVE", "_ACTION_BUMP", "_ACTION_POPOFF",
    // 130-139
    "_ACTION_INTONE", "_ACTION_INTONE_DURATION", "_ACTION_INTONE_LAUNCH", "_ACTION_MAN_AND_WOMAN",
    "_ACTION_FLY_STANDBY", "_ACTION_FLY_ALERT", "_ACTION_SWEET_KISS_BEGIN", "_ACTION_SWEET_KISS_ING",
    "_ACTION_SWEET_KISS_END", "_ACTION_FLY_MOVE",
    // 140-149
    "_ACTION_PULL_HANDS", "_ACTION_SHARE_HUG", "_ACTION_SHARE_HUG_KEEP", "_ACTION_SHARE_HUG_END",
    "_ACTION_KISS_BEGIN", "_ACTION_KISSING", "_ACTION_KISS_END", "_ACTION_CUDDLE", "_ACTION_HAND_BY_HAND_STANDBY",
    "_ACTION_HAND_BY_HAND_BEGIN",
    // 150-159
    "_ACTION_HAND_BY_HAND_WALK1", "_ACTION_HAND_BY_HAND_WALK2", "_ACTION_HAND_BY_HAND_RUN1",
    "_ACTION_HAND_BY_HAND_RUN2", "_ACTION_HAND_BY_HAND_JUMP", "_ACTION_HAND_BY_HAND_OVER",
    "_ACTION_HAND_FOLLOW_STANDBY", "_ACTION_ARM_BY_ARM_BEGIN", "_ACTION_ARM_BY_ARM_END",
    "_ACTION_ARM_BY_ARM_STANDBY",
    // 160-169
    "_ACTION_ARM_BY_ARM_WALK1", "_ACTION_ARM_BY_ARM_WALK2", "_ACTION_FLY_DOWN", "_ACTION_FLY_UP", "_ACTION_FLY_DIE",
    "_ACTION_FLY_WOUND", "_ACTION_MINE", "_ACTION_JUMPBACK_SHOOT", "_ACTION_FAST_SHOOT", "_ACTION_CHARGEUP_BEGIN",
    // 170-179
    "_ACTION_CHARGEUP_END", "_ACTION_CENTURY_KISS_BEGIN", "_ACTION_CENTURY_KISS_ING", "_ACTION_CENTURY_KISS_END",
    "_ACTION_CRAZY_KISS_BEGIN", "_ACTION_CRAZY_KISS_ING", "_ACTION_CRAZY_KISS_END", "_ACTION_PURE_KISS_BEGIN",
    "_ACTION_PURE_KISS_ING", "_ACTION_PURE_KISS_END",
    // 180-189
    "_ACTION_SPRINT", "_ACTION_HAND_FOLLOW_WALK1", "_ACTION_HAND_FOLLOW_WALK2", "_ACTION_HAND_FOLLOW_RUN1",
    "_ACTION_HAND_FOLLOW_RUN2", "_ACTION_HAND_BY_HAND_EMOTION", "_ACTION_SWIM_STOP", "_ACTION_SWIM_REST",
    "_ACTION_SWIM_BEGIN", "_ACTION_SWIM_END",
    // 190-199
    "_ACTION_SWIM_RUN0", "_ACTION_SWIM_RUN1", "_ACTION_SWIM_WALK", "_ACTION_SWIM_DIVE", "_ACTION_TM_FAST_SHOOT",
    "_ACTION_TM_DISPERSION_SHOOT", "_ACTION_SKILL_START", "_ACTION_SOULDRAIN", "_ACTION_FISH_BEGIN",
    "_ACTION_FISHING",
    // 200-209
    "_ACTION_FISH_END", "_ACTION_DIG_HERB", "_ACTION_MAGIC_ATTACK0", "_ACTION_MAGIC_ATTACK1",
    "_ACTION_MAGIC_ATTACK2", "_ACTION_MAGIC_ATTACKING", "_ACTION_FLY_DIE_1", "_ACTION_FLY_DIEBODY_1",
    "_ACTION_FLY_DIE_2", "_ACTION_FLY_DIEBODY_2",
    // 210-219
    "_ACTION_FLY_DIE_3", "_ACTION_FLY_DIEBODY_3", "_ACTION_FLY_DIE_4", "_ACTION_FLY_DIEBODY_4", "_ACTION_FLY_DIE_5",
    "_ACTION_FLY_DIEBODY_5", "_ACTION_FLY_DIE_6", "_ACTION_FLY_DIEBODY_6", "_ACTION_FLY_DIE_7",
    "_ACTION_FLY_DIEBODY_7",
    // 220-229
    "_ACTION_FLY_DIE_8", "_ACTION_FLY_DIEBODY_8", "_ACTION_FLY_DIE_9", "_ACTION_FLY_DIEBODY_9",
    "_ACTION_DOUBLE_MOUNT_STANDBY", "_ACTION_DOUBLE_MOUNT_REST", "_ACTION_DOUBLE_MOUNT_WALK1",
    "_ACTION_DOUBLE_MOUNT_WALK2", "_ACTION_DOUBLE_MOUNT_RUN1", "_ACTION_DOUBLE_MOUNT_RUN2",
    // 230-239
    "_ACTION_DOUBLE_MOUNT_UP", "_ACTION_DOUBLE_MOUNT_DOWN", "_ACTION_DOUBLE_MOUNT_JUMP",
    "_ACTION_DOUBLE_MOUNT_MISS", "_ACTION_DOUBLE_MOUNT_BEATTACK", "_ACTION_DOUBLE_MOUNT_DIE",
    "_ACTION_DOUBLE_MOUNT_DIE_BODY", "_ACTION_DOUBLE_MOUNT_ALERT", "_ACTION_DOUBLE_MOUNT_ATTACK1",
    "_ACTION_DOUBLE_MOUNT_ATTACK2",
    // 240-249
    "_ACTION_DOUBLE_MOUNT_MAGICATTACK", "_ACTION_METEMPSYCHOSIS", "_ACTION_SUDDENLYREALIZE", "_ACTION_FLOAT_MOVE1",
    "_ACTION_FLOAT_MOVE2", "_ACTION_SIT_CROSSLEGGED_CYC", "_ACTION_FLY_HIGH_MOVE1", "_ACTION_FLY_HIGH_MOVE2",
    "_ACTION_FLY_HIGH_STAND", "_ACTION_RIDE_MOUNT",
    // 250-259
    "_ACTION_DIVIDE_HIT", "_ACTION_BEAT_BACK", "_ACTION_DRAG_MOVE", "_ACTION_DRAG_STANDBY", "_ACTION_ROLL_BACK",
    "_ACTION_ASSAULT", "_ACTION_ASSAULT_BEATTACK", "_ACTION_DRAG_UP", "_ACTION_DRAG_DOWN", "_ACTION_MULATK0",
    // 260-269
    "_ACTION_MULATK1", "_ACTION_MULATK2", "_ACTION_MULATK3", "_ACTION_MULATK4", "_ACTION_MULATK5",
    "_ACTION_MULATK6", "_ACTION_MULATK7", "_ACTION_MULATK8", "_ACTION_MULATK9", "_ACTION_RIDE_FLY",
    // 270-279
    "_ACTION_RIDE_FALL_CALL", "_ACTION_FLY_SWITCH_HIGHT", "_ACTION_FLY_SWITCH_LOW", "_ACTION_JUMPL",
    "_ACTION_JUMPR", "_ACTION_FLY_MISS", "_ACTION_FLY_GUARD", "_ACTION_FLY_DODGE0", "_ACTION_FLY_BRUISE0",
    "_ACTION_FLY_BRUISE1",
    // 280-289
    "_ACTION_FLY_PROTECT", "_ACTION_FLY_DRAWARM", "_ACTION_FLY_RECEIVEARM", "_ACTION_FLY_ATTACK0",
    "_ACTION_FLY_ATTACK1", "_ACTION_FLY_ATTACK2", "_ACTION_DIVIDE_FLY_HIT", "_ACTION_EUD_REBORN_SUC",
    "_ACTION_SKILL_ZAZEN", "_ACTION_SKILL_SEAL",
};
// clang-format on

// Positions ordered by name, for ActionPositionOf; the names are unique.
struct NameIndex {
    std::array<short, kActionNameAmount> setPosition;

    NameIndex()
    {
        for (int i = 0; i < kActionNameAmount; ++i)
            setPosition[static_cast<std::size_t>(i)] = static_cast<short>(i);
        std::stable_sort(setPosition.begin(), setPosition.end(),
                         [](short a, short b) { return std::strcmp(kActionNames[a], kActionNames[b]) < 0; });
    }
};

}  // namespace

const char* ActionNameAt(int nPosition)
{
    if (nPosition < 0 || nPosition >= kActionNameAmount)
        return nullptr;
    return kActionNames[nPosition];
}

int ActionPositionOf(const char* szName)
{
    if (szName == nullptr)
        return -1;
    static const NameIndex index;
    const auto it = std::lower_bound(
        index.setPosition.begin(), index.setPosition.end(), szName,
        [](short nPosition, const char* szKey) { return std::strcmp(kActionNames[nPosition], szKey) < 0; });
    if (it == index.setPosition.end() || std::strcmp(kActionNames[*it], szName) != 0)
        return -1;
    return *it;
}

std::vector<std::string>& ActionNameList()
{
    static std::vector<std::string> setName;
    return setName;
}

void ActionNameListFill()
{
    std::vector<std::string>& setName = ActionNameList();
    setName.resize(kActionNameAmount);
    for (int i = 0; i < kActionNameAmount; ++i)
        setName[static_cast<std::size_t>(i)] = kActionNames[i];
}

void ActionNameListEmpty() { ActionNameList().clear(); }

long long ActionKeyReplaceDigits(long long nKey, int nFrom, int nTo, long long nValue)
{
    long long nLowScale = 1;
    for (int i = 0; i < nFrom; ++i)
        nLowScale *= 10;
    long long nHighScale = nLowScale;
    for (int i = nFrom; i <= nTo; ++i)
        nHighScale *= 10;
    // Division truncates toward zero, so a negative key keeps its sign in
    // both parts, as the client's arithmetic does.
    const unsigned long long nHigh = static_cast<unsigned long long>(nKey / nHighScale * nHighScale);
    const unsigned long long nLow = static_cast<unsigned long long>(nKey % nLowScale);
    const unsigned long long nMiddle =
        static_cast<unsigned long long>(nValue) * static_cast<unsigned long long>(nLowScale);
    return static_cast<long long>(nHigh + nMiddle + nLow);
}
