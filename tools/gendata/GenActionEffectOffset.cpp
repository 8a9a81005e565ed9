// "ini/ActionEffectOffset.ini": where an effect sits relative to its owner,
// per section N = id * 10000 + variant * 10 + sub-variant.
#include <string>

#include "GenAction.h"

namespace {

std::string OffsetSection(CDataRng& rng, const std::string& strTitle)
{
    std::string strText = "[" + strTitle + "]\n";
    strText += "nOffsetX=" + std::to_string(rng.Range(-40, 40)) + "\n";
    strText += "nOffsetY=" + std::to_string(rng.Range(-40, 40)) + "\n";
    // Most effects sit at the ground; the key is left out then.
    if (rng.Chance(70))
        strText += "nOffsetZ=" + std::to_string(rng.Range(10, 220)) + "\n";
    return strText + "\n";
}

std::string OffsetTitle(int nId, int nVariant, int nSubVariant)
{
    return std::to_string(nId * 10000LL + nVariant * 10LL + nSubVariant);
}

void GenerateActionEffectOffset(CGenContext& context)
{
    CDataRng rng(94u);
    std::string strText = "; effect offsets: [id * 10000 + variant * 10 + sub-variant]\n\n";
    for (int nId = 1; nId <= 60 * context.Scale(); ++nId) {
        const int nVariants = rng.Range(1, 4);
        for (int v = 0; v < nVariants; ++v) {
            // Variants in distinct hundreds, so that no key repeats.
            const int nVariant = v == 0 ? 0 : v * 100 + rng.Range(0, 99);
            const int nSubVariants = rng.Range(1, 3);
            for (int nSub = 0; nSub < nSubVariants; ++nSub)
                strText += OffsetSection(rng, OffsetTitle(nId, nVariant, nSub));
        }
    }
    if (context.Faulty()) {
        strText += OffsetSection(rng, OffsetTitle(1, 0, 0));  // shadowed: the first record wins
        strText += OffsetSection(rng, "-10010");              // not above 0: skipped
    }
    context.Write("ini/ActionEffectOffset.ini", strText, true);
}

const GeneratorRegistration kRegistration("ini/ActionEffectOffset.ini", GenerateActionEffectOffset);

}  // namespace
