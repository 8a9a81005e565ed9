// "ini/Common.ini": the common settings, and the title sections that the
// nobility, honour and medal tables read from the same file.
#include <string>

#include "GenData.h"

namespace {

void GenerateCommonIni(CGenContext& context)
{
    CDataRng& rng = context.Rng();
    std::string strText = "[Playerface]\nMaleFaceAmount=" + std::to_string(rng.Range(8, 16)) +
                          "\nFemaleFaceAmount=" + std::to_string(rng.Range(8, 16)) +
                          "\n\n[EmblemAmount]\nEmblemAmount=" + std::to_string(rng.Range(20, 60)) +
                          "\n\n[Statuary]\nLeaderScale=120\nLeaderMaxLife=50000\nAssistantScale=110\n"
                          "AssistantMaxLife=30000\nSubLeaderScale=105\nSubLeaderMaxLife=20000\n";
    for (const char* szGroup : {"Nobility", "Honor", "Medal"}) {
        for (int i = 1; i <= 10; ++i) {
            strText += "\n[" + std::string(szGroup) + std::to_string(i) + "]\nName=" + context.GbkName(2) +
                       "\nLevel=" + std::to_string(i) + "\n";
        }
    }
    context.Write("ini/Common.ini", strText, true);
}

const GeneratorRegistration kRegistration("ini/Common.ini", GenerateCommonIni);

}  // namespace
