#pragma once

/// @file
/// Texts in the states that the tests of the text class begin with.

#include <nkdt/NkDtString.h>
#include <nkfw/BStr.h>

#include <string_view>

#include "ValueTesting.h"

namespace valuetest {

/// A 16-bit text for a scope.
class Wide {
  public:
    explicit Wide(const OLECHAR* text) : m_text(SysAllocString(text)) {}
    Wide(const OLECHAR* text, UINT length) : m_text(SysAllocStringLen(text, length)) {}
    ~Wide() { SysFreeString(m_text); }
    Wide(const Wide&) = delete;
    Wide& operator=(const Wide&) = delete;
    const BSTR& get() const { return m_text; }

  private:
    BSTR m_text;
};

inline NkDtString missing() {
    return NkDtString(NkDtWmMissing);
}
inline NkDtString null() {
    return NkDtString(NkDtWmNull);
}
inline NkDtString undefinedInModeTwo() {
    NkDtString text(NkDtWmDefined);
    text = static_cast<const NkDtString&>(missing());
    return text;
}

/// The bytes with every NUL among them.
inline NkDtString withNul(std::string_view bytes) {
    NkDtString text("");
    for (const char ch : bytes)
        text += ch;
    text.SetModified(FALSE);
    return text;
}

inline NkDtString inMode(NkDtWorkingMode mode, LPCTSTR text) {
    NkDtString value(mode);
    value = text;
    value.SetModified(FALSE);
    return value;
}

/// Undefined, but with a text, as an assignment of the base alone leaves it.
inline NkDtString undefinedWithText(NkDtWorkingMode mode, LPCTSTR text, INT alloc = NkDtStrLenAuto) {
    NkDtString value(text, NkDtStrLenAuto, alloc);
    value.SetWorkingMode(mode);
    static_cast<NkDtBasis&>(value) = static_cast<const NkDtBasis&>(NkDtString(NkDtWmNull));
    value.SetModified(FALSE);
    return value;
}

}  // namespace valuetest
