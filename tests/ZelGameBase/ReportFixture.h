// Fixture of the report tests: a fresh working folder, a loopback HTTP server
// that the reports post to instead of port 80, and no proxy, so that no test
// reaches beyond 127.0.0.1. Every report worker has ended before the folder
// goes away.
#pragma once

#include <chrono>
#include <cstdlib>
#include <thread>

#include "Support/LoopbackHttpServer.h"
#include "Support/TestSupport.h"
#include "ZelGameBase/ReportPost.h"

class ReportTest : public DataFolderTest {
protected:
    void SetUp() override
    {
        DataFolderTest::SetUp();
        setenv("no_proxy", "*", 1);
        ReportPortSet(m_server.Port());
    }

    void TearDown() override
    {
        WorkersWait();
        ReportPortSet(0);
        DataFolderTest::TearDown();
    }

    // Waits until every report worker has ended.
    static void WorkersWait()
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (ReportWorkerCount() != 0 && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        ASSERT_EQ(ReportWorkerCount(), 0);
    }

    LoopbackHttpServer m_server;
};
