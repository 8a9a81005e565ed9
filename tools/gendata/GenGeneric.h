#pragma once

#include <string>

#include "GenData.h"

// Writes a plausible file for a table without a format of its own at strPath
// (below the root); nVariant shifts the ids so that alternative sets differ.
void GenerateGenericFile(CGenContext& context, const std::string& strPath, int nVariant);
