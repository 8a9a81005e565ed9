#include <string>

#include "Support/TestSupport.h"

// Outside an anonymous namespace on purpose: there the optimiser would know
// every override of Value() and call CProbe's directly.
// An abstract class whose constructor reaches its own abstract slot: during
// construction the object is of the abstract class, so the call lands in the
// slot the compiler filled with the pure-call handler.
class CAbstractProbe {
public:
    // Kept out of line, so that the optimiser cannot merge this class's
    // vtable store with the derived class's.
    __attribute__((noinline, noipa)) CAbstractProbe() { m_nDuringConstruction = SlotCall(); }
    virtual int Value() = 0;
    // Kept opaque to the optimiser, which would otherwise see the call.
    __attribute__((noinline, noipa)) int SlotCall() { return Value(); }

    int m_nDuringConstruction = -1;
};

class CProbe : public CAbstractProbe {
public:
    int Value() override { return 7; }
};

namespace {

using PureCallTest = DataFolderTest;

TEST_F(PureCallTest, AbstractSlotLogsAndReturnsZero)
{
    CProbe probe;
    EXPECT_EQ(probe.m_nDuringConstruction, 0);
    // The process goes on, and the finished object answers normally.
    EXPECT_EQ(probe.SlotCall(), 7);

    const std::string strLog = LogText();
    EXPECT_EQ(strLog.rfind("Error:_purecall [(", 0), 0u) << strLog;
    EXPECT_NE(strLog.find(") ] -- Mon Mar 07 14:05:09 2011\n"), std::string::npos) << strLog;
    EXPECT_EQ(LogEntryCount(), 1);
}

}  // namespace
