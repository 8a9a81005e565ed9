// Every table class the catalogue names; Catalogue.def needs them complete.
#pragma once

#include "ClientData/ActionCtrlData.h"
#include "ClientData/ActionDelayData.h"
#include "ClientData/ActionEffectOffsetData.h"
#include "ClientData/ActionTypeData.h"
#include "ClientData/ActionValueData.h"
#include "ClientData/BattleTutorial.h"
#include "ClientData/CommonIni.h"
#include "ClientData/GenericTable.h"
#include "ClientData/MagicData.h"
#include "ClientData/MonsterSpeakTable.h"
#include "ClientData/MonsterTypeTable.h"
#include "ClientData/NpcTypeInfo.h"
#include "ClientData/NpcTypeInfoEx.h"
