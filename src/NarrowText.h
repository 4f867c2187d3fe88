#pragma once

#include "Raise.h"
#include "nkfw/BStr.h"
#include "nkfw/Exception.h"
#include "nkfw/String.h"

namespace nkdt {

/// The 16-bit text in code page 1252, up to its first character 0. Error 23 for a character that the page
/// does not have: a replacement would lose it silently.
inline CString narrowText(const OLECHAR* pwsz, const Origin& origin) {
    try {
        return CString(pwsz);
    } catch (CInvalidArgException* exception) {
        exception->Delete();
        raise(origin, NkDtErrWideZeichen);
    }
}

}  // namespace nkdt
