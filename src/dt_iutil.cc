#include "nkdt/NkDtUtil.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "LetterCase.h"
#include "Raise.h"
#include "nkcp/CodePage.h"
#include "nkdt/NkDtTypes.h"

namespace {

constexpr const char* sourceFile = ".\\dt_iutil.cc";
constexpr const char* classText = "Interne Utility-Funktionen";

constexpr nkdt::Origin originCompare{sourceFile, classText,
                                     "NkDtCompareUsingNorvaneSortOrder(LPCTSTR,LPCTSTR)"};
constexpr nkdt::Origin originMemSet{sourceFile, classText, "NkDtMemSetTCHAR(LPTSTR,TCHAR,UINT)"};
constexpr nkdt::Origin originAssign{sourceFile, classText, "AssignRecordsetMemberCString(CString,LPCTSTR)"};

// The weight of each byte in the sort order; bytes of equal weight sort together. Row: high hex digit;
// column: low one.
// clang-format off
constexpr unsigned char sortWeights[256] = {
      0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,
      0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,
     98,   1,   2,   3,   4,   5,   6,   7,   8,   9,  10,  11,  12,  13,  14,  15,
     99, 100, 101, 102, 103, 104, 105, 106, 107, 108,  16,  17,  18,  19,  20,  21,
     22, 109, 117, 118, 120, 121, 129, 130, 131, 132, 137, 138, 139, 140, 141, 143,
    152, 153, 154, 155, 158, 159, 164, 165, 166, 167, 170,  23,  24,  25,  26,  27,
     28, 109, 117, 118, 120, 121, 129, 130, 131, 132, 137, 138, 139, 140, 141, 143,
    152, 153, 154, 155, 158, 159, 164, 165, 166, 167, 170,  29,  30,  31,  32,  33,
     34,  35,  36,  37,  38,  39,  40,  41,  42,  43, 156,  45, 151,  47,  48,  49,
     50,  51,  52,  53,  54,  55,  56,  57,  58,  59, 156,  61, 151,  63,  64, 167,
     66,  67,  68,  69,  70,  71,  72,  73,  74,  75,  76,  77,  78,  79,  80,  81,
     82,  83,  84,  85,  86,  87,  88,  89,  90,  91,  92,  93,  94,  95,  96,  97,
    110, 111, 112, 113, 114, 115, 116, 119, 122, 124, 126, 128, 133, 134, 135, 136,
    171, 142, 145, 146, 147, 148, 149,  44, 150, 160, 161, 162, 163, 168, 170, 155,
    110, 111, 112, 113, 114, 115, 116, 119, 122, 124, 126, 128, 133, 134, 135, 136,
    171, 142, 145, 146, 147, 148, 149,   0, 150, 160, 161, 162, 163, 168, 172, 169,
};
// clang-format on

unsigned char weightOf(TCHAR ch) noexcept {
    return sortWeights[static_cast<unsigned char>(ch)];
}

// Eight bytes taken at once.
using Block = std::uint64_t;

Block loadBlock(const TCHAR* text) noexcept {
    Block block;
    std::memcpy(&block, text, sizeof block);
    return block;
}

// Of two texts of at least @p length bytes, the number of blocks at their beginning that are equal, in bytes.
std::size_t equalBlocks(LPCTSTR a, LPCTSTR b, std::size_t length) noexcept {
    std::size_t i = 0;
    while (length - i >= sizeof(Block) && loadBlock(a + i) == loadBlock(b + i))
        i += sizeof(Block);
    return i;
}

// Searches long texts in two steps, since most pairs differ within their first bytes and need no length.
constexpr std::size_t shortStep = 16;

}  // namespace

BOOL NkDtVglString(LPCTSTR psz1, LPCTSTR psz2, BOOL fCaseSensitive) {
    if (psz1 == nullptr || psz2 == nullptr) return FALSE;
    const bool equal =
        fCaseSensitive != FALSE ? std::strcmp(psz1, psz2) == 0 : nkdt::equalWithoutCase(psz1, psz2);
    return equal ? TRUE : FALSE;
}

INT NkDtCompareUsingNorvaneSortOrder(LPCTSTR psz1, LPCTSTR psz2) {
    nkdt::requireText(psz1, originCompare);
    nkdt::requireText(psz2, originCompare);
    const TCHAR* left = psz1;
    const TCHAR* right = psz2;
    for (std::size_t i = 0;; ++i, ++left, ++right) {
        if (i == shortStep) {
            const std::size_t equal =
                equalBlocks(left, right, std::min(std::strlen(left), std::strlen(right)));
            left += equal;
            right += equal;
        }
        const unsigned char leftWeight = weightOf(*left);
        const unsigned char rightWeight = weightOf(*right);
        if (leftWeight != rightWeight) return leftWeight < rightWeight ? -1 : 1;
        if (*left == '\0' || *right == '\0') break;
    }
    // What the longer text has more begins with a byte without weight: the length decides.
    if (*left == *right) return 0;
    return *left == '\0' ? -1 : 1;
}

BOOL NkDtConvertCodePageFkt(LPTSTR psz, INT nDirection) noexcept {
    if (psz == nullptr) return FALSE;
    const nkcp::Table* table = nullptr;
    switch (nDirection) {
        case NkDtCpAnsiToOem:
            return NkEusy_CharToOem(psz);
        case NkDtCpOemToAnsi:
            return NkEusy_OemToChar(psz);
        // Where these are the system's own two pages as well, its conversion is the same table.
        case NkDtCp1252To437:
            table = nkcp::bestFitTable(1252, 437);
            break;
        case NkDtCp437To1252:
            table = nkcp::bestFitTable(437, 1252);
            break;
        case NkDtCp1252To850:
            table = nkcp::bestFitTable(1252, 850);
            break;
        case NkDtCp850To1252:
            table = nkcp::bestFitTable(850, 1252);
            break;
        default:
            return FALSE;
    }
    nkcp::convertInPlace(psz, *table);
    return TRUE;
}

LPTSTR NkDtMemSetTCHAR(LPTSTR psz, TCHAR ch, UINT nCount) {
    if (nCount == 0) return psz;
    nkdt::requireText(psz, originMemSet);
    std::memset(psz, static_cast<unsigned char>(ch), nCount);
    return psz;
}

void AssignRecordsetMemberCString(CString& rMember, LPCTSTR psz) {
    nkdt::wrapped(originAssign, [&] {
        nkdt::requireText(psz, originAssign);
        const INT capacity = rMember.GetAllocLength();
        if (capacity <= 0) {
            rMember.Empty();
            return;
        }
        const std::size_t count = std::min(std::strlen(psz), static_cast<std::size_t>(capacity - 1));
        const LPTSTR buffer = rMember.GetBuffer(capacity);
        std::memmove(buffer, psz, count);  // the text may lie in the field itself
        buffer[count] = '\0';
        rMember.ReleaseBuffer();
    });
}
