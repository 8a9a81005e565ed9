#include "ClientData/ClientDataMgr.h"

#include <gtest/gtest.h>

TEST(ClientDataMgr, Placeholder) { SUCCEED(); }
