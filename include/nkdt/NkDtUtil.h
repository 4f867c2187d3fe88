#pragma once

/// @file
/// Text utilities of the value classes: equality without case, the product family's sort order, conversion
/// between the ANSI and OEM code pages in place, filling, and assignment into a field of a recordset.
///
/// @code
/// NkDtVglString("M\xFCller", "M\xDCLLER", FALSE);           // TRUE
/// NkDtCompareUsingNorvaneSortOrder("Zebra", "\xC4pfel");   // 1: umlauts sort among their base letters
/// @endcode
///
/// All texts are zero-terminated and in code page 1252, one byte a character. Nothing here depends on the
/// locale.

#include "nkdt/NkDtTypes.h"
#include "nkfw/Export.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

/// TRUE if the two texts are equal; FALSE if either is null, even when both are.
/// @param psz1,psz2      the texts
/// @param fCaseSensitive TRUE: byte for byte; FALSE: the ASCII letters and ä, ö, ü equal their capitals, and
/// every other byte equals only itself ("é" is not "É", "ß" is not "SS")
NKDT_API BOOL NkDtVglString(LPCTSTR psz1, LPCTSTR psz2, BOOL fCaseSensitive);

/// Compares two texts in the product family's sort order: symbols before the blank, the blank before digits,
/// digits before letters; a letter's accented forms behind it; without regard to case; "ß" as "s". Control
/// characters and "÷" weigh as the end of a text, before everything else; of two texts that differ in nothing
/// else, the shorter one stands first.
/// @return -1 if @p psz1 stands before @p psz2, 1 if behind it, 0 if neither
/// @throws NkDtExcep* error 5 "Ungültiger Initialwert" when a text is null
NKDT_API INT NkDtCompareUsingNorvaneSortOrder(LPCTSTR psz1, LPCTSTR psz2);

/// Converts the text in place from one code page to another.
/// @param psz        the text; null gives FALSE
/// @param nDirection one of ::NkDtCodepageWandlung; another number gives FALSE and leaves the text unchanged
/// @return TRUE if the text was converted. ::NkDtCpAnsiToOem and ::NkDtCpOemToAnsi convert between GetACP()
/// and GetOEMCP(), and give FALSE for pages without a table; the numbered directions always convert. Raises
/// nothing.
NKDT_API BOOL NkDtConvertCodePageFkt(LPTSTR psz, INT nDirection) noexcept;

/// Fills @p nCount characters from @p psz on with @p ch; writes no terminator.
/// @return @p psz
/// @throws NkDtExcep* error 5 "Ungültiger Initialwert" when @p psz is null and there is something to fill
NKDT_API LPTSTR NkDtMemSetTCHAR(LPTSTR psz, TCHAR ch, UINT nCount);

/// Copies the text into a recordset's string field without growing the field's buffer, which a database may
/// be bound to. Of a longer text only as many characters arrive as the allocated length holds less one; a
/// field without a buffer stays empty.
/// @param rMember the field; its allocated length stays as it is
/// @param psz     the text; may lie inside the field's own text
/// @throws NkDtExcep* error 1 "Default-Catch / Folgefehler" whatever fails, its cause error 5 "Ungültiger
/// Initialwert" when @p psz is null
NKDT_API void AssignRecordsetMemberCString(CString& rMember, LPCTSTR psz);
