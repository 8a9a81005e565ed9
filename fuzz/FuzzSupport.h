// Shared by the fuzz targets: each process works in a private temporary
// folder, and an input becomes a file there when the surface reads files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Enters a fresh temporary working directory once per process and silences
// the debugger output.
void FuzzEnterScratchFolder();
// Writes the input as strPath (relative, folders created).
void FuzzWriteFile(const std::string& strPath, const uint8_t* pData, std::size_t nSize);
// Splits the input at the first NUL byte: the part before is a short
// parameter (a title, a key), the rest the content.
void FuzzSplit(const uint8_t* pData, std::size_t nSize, std::string& strParameter, std::string& strContent);
