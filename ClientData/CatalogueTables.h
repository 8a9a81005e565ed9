// Every table class the catalogue names; Catalogue.def needs them complete.
#pragma once

#include "ClientData/CommonIni.h"
#include "ClientData/GenericTable.h"
