#pragma once

/// @file
/// Other code pages of the process for a scope.

#include <nkcp/CodePage.h>

namespace nktest {

class CodePages {
  public:
    CodePages(UINT ansi, UINT oem) : m_ansi(GetACP()), m_oem(GetOEMCP()) {
        nkcp::setAnsiCodePage(ansi);
        nkcp::setOemCodePage(oem);
    }
    ~CodePages() {
        nkcp::setAnsiCodePage(m_ansi);
        nkcp::setOemCodePage(m_oem);
    }
    CodePages(const CodePages&) = delete;
    CodePages& operator=(const CodePages&) = delete;

  private:
    UINT m_ansi;
    UINT m_oem;
};

}  // namespace nktest
