// Lint rules that look at the files of a data folder (the working directory)
// rather than at what the loaders report.
#pragma once

#include <string>
#include <vector>

#include "Lint.h"

class CClientDataMgr;

// The catalogue's files (standard and alternative set), the text resources
// and the deferred list that the folder holds.
std::vector<std::string> LintDataFiles();

// not-gbk: a line holding a byte that starts no GB18030 character.
void LintInvalidText(const std::vector<std::string>& setFile, std::vector<LintFinding>& setFinding);

// repeated-key: a key given twice in one section of a generic table's file
// (the described tables' loaders report their own).
void LintRepeatedKeys(const std::vector<std::string>& setFile, std::vector<LintFinding>& setFinding);

// empty-table: a table that loaded no record from a file that is there.
void LintEmptyTables(CClientDataMgr& mgr, std::vector<LintFinding>& setFinding);
