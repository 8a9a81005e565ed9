#include "ZelGameBase/ZelCrt.h"

#include <gtest/gtest.h>

TEST(ZelCrt, Placeholder) { SUCCEED(); }
