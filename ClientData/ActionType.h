// The built-in action names. Animations are addressed by symbolic names
// ("_ACTION_STANDBY", ...), each with a fixed position in one list of 290;
// the action type table maps positions to the action numbers players and
// monsters use. The list is part of the program, not of any data file.
#pragma once

#include <string>
#include <vector>

// Names in the built-in list; positions run from 0 to 289.
constexpr int kActionNameAmount = 290;
// Positions the action number arrays hold; 290 to 511 never have a name.
constexpr int kActionPositionAmount = 512;

// The name at nPosition, or null outside 0..289. Position 122 is
// "_ACTION_USE_ITEm" with a lower-case final letter, and files must spell it
// that way to map it.
const char* ActionNameAt(int nPosition);

// The position of szName, compared byte for byte and case-sensitively; -1
// when the name is not in the list. A binary search over a sorted copy.
int ActionPositionOf(const char* szName);

// The process-wide name list: brought to exactly 290 entries and filled by
// the action type table's constructor, emptied by its destructor.
std::vector<std::string>& ActionNameList();
void ActionNameListFill();
void ActionNameListEmpty();

// Action keys are decimal numbers whose digit groups mean something (the
// lowest three, the next three, ...); fallback lookups overwrite groups with
// nines. Keeps the digits of nKey below position nFrom and above position nTo
// (position 0 = least significant digit) and puts nValue * 10^nFrom in
// between. nValue is not limited to the width of the group: a wider value
// carries into the digits above, which some lookups rely on. Signed 64-bit
// arithmetic that wraps instead of overflowing; 0 <= nFrom <= nTo <= 17.
long long ActionKeyReplaceDigits(long long nKey, int nFrom, int nTo, long long nValue);
