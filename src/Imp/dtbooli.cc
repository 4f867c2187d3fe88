#include "Imp/dtbooli.h"

#include <cstring>

#include "Raise.h"
#include "nkdt/NkDtUtil.h"
#include "nklang/NkLanguagePublisher.h"
#include "nklang/NkLanguageResManager.h"

using namespace nkdt;

LPCTSTR NkDtBool_Imp::word(BOOL f) noexcept {
    const UINT id = f != FALSE ? uNkLangWahr : uNkLangFalsch;
    const NkLanguageResManager resources(NkLanguagePublisher::Instance()->GetLangDependentResource());
    LPCTSTR const word = resources.FindString(id);
    return word != nullptr ? word : NkLanguageResManager(nullptr).FindString(id);
}

BOOL NkDtBool_Imp::fromString(LPCTSTR pszText) {
    static constexpr Origin origin = {".\\Imp\\dtbooli.cc", "NkDtBool_Imp", "NkDtBool_Imp(BOOL)"};
    if (NkDtVglString(word(TRUE), pszText, FALSE) || std::strcmp(pszText, "1") == 0) return TRUE;
    if (NkDtVglString(word(FALSE), pszText, FALSE) || std::strcmp(pszText, "0") == 0) return FALSE;
    raise(origin, NkDtErrInitialwert);
}
