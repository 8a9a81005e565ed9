// Test helpers: every test that touches files runs in a fresh temporary
// working directory, writes its own fixtures there, and reads back what the
// debug log and the debugger output received.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

// Creates a temporary folder and makes it the working directory for the
// fixture's life; the log clock is fixed to 7 March 2011, 14:05:09.
class DataFolderTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes a file (creating its folders) relative to the working directory.
    void WriteFile(const std::string& strPath, const std::string& strContent);
    // Everything the debug log received (every file under debug/).
    std::string LogText() const;
    // The number of entries in today's log.
    int LogEntryCount() const;
    // Everything sent to the debugger output since SetUp.
    const std::string& DebugText() const { return m_strDebug; }
    const std::string& Folder() const { return m_strFolder; }

private:
    std::string m_strFolder;
    std::string m_strPrevious;
    std::string m_strDebug;
};

// Reads a whole file; empty when absent.
std::string ReadWholeFile(const std::string& strPath);

// Fixture of the table tests: a table constructed on its own registers itself
// in the process-wide registry (ClientData's TableRegistry, passed in), which
// goes when the test ends.
template <class Registry>
class RegistryFolderTest : public DataFolderTest {
protected:
    void TearDown() override
    {
        Registry::Destroy();
        DataFolderTest::TearDown();
    }
};
