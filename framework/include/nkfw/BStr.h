#pragma once

/// @file
/// Length-prefixed 16-bit texts. A `BSTR` points at the first character; the length in bytes stands in the
/// four bytes before it, and a terminator behind the last character. A null `BSTR` is the empty text. Whoever
/// holds one frees it with SysFreeString().

#include "nkfw/Export.h"
#include "nkfw/Types.h"

/// A copy of the zero-terminated text; null for null or when memory is exhausted.
[[nodiscard]] NKDT_API BSTR SysAllocString(const OLECHAR* psz) noexcept;
/// A text of @p cch characters copied from @p pch (left unset when that is null); null when memory is
/// exhausted.
[[nodiscard]] NKDT_API BSTR SysAllocStringLen(const OLECHAR* pch, UINT cch) noexcept;
/// Frees the text; null is allowed.
NKDT_API void SysFreeString(BSTR bstr) noexcept;
/// Its length in characters, 0 for null; characters 0 inside count.
NKDT_API UINT SysStringLen(const OLECHAR* bstr) noexcept;
/// Its length in bytes, 0 for null.
NKDT_API UINT SysStringByteLen(const OLECHAR* bstr) noexcept;
