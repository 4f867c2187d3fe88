#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "Imp/dtstrini.h"
#include "LetterCase.h"
#include "Raise.h"
#include "RecordMemory.h"
#include "TextGrowth.h"
#include "TextLength.h"
#include "TextSearch.h"
#include "ValueAccess.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtUtil.h"

using namespace nkdt;

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\dtstrfkt.cc", "NkDtString", operation};
}

constexpr Origin originDeleteParts = originOf("DeleteParts(NkDtString&,INT)");
constexpr Origin originInsert = originOf("Insert(NkDtString&,INT)");

void requireNotMissing(const NkDtString& text, const NkDtString& argument, const Origin& origin) {
    if (text.IsMissing() || argument.IsMissing()) raise(origin, NkDtErrUndefiniert);
}

/// A position in front of a character, or at the end.
void requirePosition(const NkDtString& text, INT nPos, const Origin& origin) {
    if (nPos < 0 || nPos > text.GetLength()) [[unlikely]]
        raise(origin, NkDtErrStringindex);
}

/// A position with as many characters behind it.
void requireStretch(const NkDtString& text, INT nPos, INT nCount, const Origin& origin) {
    requirePosition(text, nPos, origin);
    if (nCount > text.GetLength() - nPos) raise(origin, NkDtErrStringindex);
}

void requireLength(INT nLen, const Origin& origin) {
    if (nLen > NkDtString_Imp::maxLength) raise(origin, NkDtErrInitiallaenge);
}

}  // namespace

// Searching, removing, replacing

BOOL NkDtString::DeleteParts(const NkDtString& strPart, INT nMode) {
    if (strPart.GetLength() == 0 || GetLength() == 0) return FALSE;
    if (nMode == NkDtStrAll || nMode == NkDtStrFirst) {
        const std::string_view part = strPart.Text().VisibleText();
        if (part.empty()) return FALSE;
        if (nMode == NkDtStrFirst || &strPart == this) {
            const std::size_t hit = TextSearch(part).find(Text().VisibleText());
            if (hit == TextSearch::notFound) return FALSE;
            Text().CloseGap(static_cast<INT>(hit), static_cast<INT>(part.size()));
        } else if (!Text().RemoveAll(TextSearch(part))) {
            return FALSE;
        }
    } else {
        requireStretch(*this, nMode, strPart.GetLength(), originDeleteParts);
        Text().CloseGap(nMode, strPart.GetLength());
    }
    SetModified(TRUE);
    return TRUE;
}

INT NkDtString::GetPos(const NkDtString& strPart, INT nMode) {
    NkDtString_Imp& text = Text();
    const NkDtString_Imp& part = strPart.Text();
    if (text.VisibleText().empty() || part.VisibleText().empty()) return NkDtString_Imp::notFound;
    std::size_t from = 0;
    if (nMode == NkDtStrPosNext && text.LastFound() != NkDtString_Imp::notFound) {
        from = static_cast<std::size_t>(text.LastFound()) + static_cast<std::size_t>(part.Length());
    }
    const std::size_t hit = TextSearch(part.VisibleText()).find(text.VisibleText(), from);
    if (hit == TextSearch::notFound) return NkDtString_Imp::notFound;
    text.SetLastFound(static_cast<INT>(hit));
    return static_cast<INT>(hit);
}

BOOL NkDtString::Change(const NkDtString& strOld, const NkDtString& strNew, INT nMode) {
    if (GetLength() == 0 || strOld.GetLength() == 0 || strNew.IsMissing()) return FALSE;
    if (strNew.GetLength() == 0) return DeleteParts(strOld, nMode);
    if (strOld.Text().Equals(strNew.Text())) return TRUE;
    if (&strOld == this) return Change(NkDtString(strOld), strNew, nMode);
    if (&strNew == this) return Change(strOld, NkDtString(strNew), nMode);

    const std::string_view part = strOld.Text().VisibleText();
    const TextSearch search(part);
    std::size_t nOld = part.size();
    std::array<INT, 128> positions;
    std::size_t nHits = 1;
    if (nMode == NkDtStrAll || nMode == NkDtStrFirst) {
        if (part.empty()) return FALSE;
        const std::size_t most = nMode == NkDtStrAll ? TextSearch::all : 1;
        nHits = search.collect(Text().VisibleText(), most, positions.data(), positions.size());
        if (nHits == 0) return FALSE;
    } else {
        nOld = static_cast<std::size_t>(strOld.GetLength());
        requireStretch(*this, nMode, strOld.GetLength(), originDeleteParts);
        positions[0] = nMode;
    }
    if (IsMissing()) raise(originInsert, NkDtErrUndefiniert);
    const TextPiece replacement = strNew.Text().Whole();
    combinedLength(static_cast<std::size_t>(GetLength()) - nHits * nOld,
                   nHits * replacement.characters.size(), originInsert);
    grow(*this, [&] {
        Text().Replace(positions.data(), std::min(nHits, positions.size()), nHits, nOld, replacement, search);
    });
    SetDefined(TRUE);
    SetModified(TRUE);
    return TRUE;
}

// Putting texts together

void NkDtString::Copy(const NkDtString& str, INT nPos) {
    static constexpr Origin origin = originOf("Copy(NkDtString&,INT)");
    requireNotMissing(*this, str, origin);
    requirePosition(*this, nPos, origin);
    MakeRoom(combinedLength(nPos, str.GetLength(), origin));
    Text().Write(nPos, str.Text().Whole());
    SetModified(TRUE);
    SetDefined(TRUE);
}

void NkDtString::CopyParts(const NkDtString& str, INT nPos) {
    static constexpr Origin origin = originOf("CopyParts(NkDtString&,INT)");
    requireNotMissing(*this, str, origin);
    requirePosition(*this, nPos, origin);
    const INT nCount = str.GetLength();
    const INT nEnd = combinedLength(nPos, nCount, origin);
    if (nCount == 0) return;
    MakeRoom(nEnd);
    Text().Overwrite(nPos, str.Text().Whole());
    if (nEnd > GetLength()) {
        Text().SetLength(nEnd);
        SetDefined(TRUE);
    }
    SetModified(TRUE);
}

void NkDtString::Insert(const NkDtString& str, INT nPos) {
    requireNotMissing(*this, str, originInsert);
    requirePosition(*this, nPos, originInsert);
    const INT nCount = str.GetLength();
    if (nCount == 0) return;
    MakeRoom(combinedLength(GetLength(), nCount, originInsert));
    Text().OpenGap(nPos, nCount);
    if (&str != this) {
        Text().Overwrite(nPos, str.Text().Whole());
    } else {  // the text to insert has been parted by the gap
        Text().Overwrite(nPos, Text().Part(0, nPos));
        Text().Overwrite(2 * nPos, Text().Part(nPos + nCount, nCount - nPos));
    }
    SetDefined(TRUE);
    SetModified(TRUE);
}

void NkDtString::FillUp(TCHAR ch, INT nLen, INT nMode) {
    static constexpr Origin origin = originOf("FillUp(TCHAR,INT,INT)");
    const INT nOld = GetLength();
    if (IsMissing() || nOld >= nLen) return;
    requireLength(nLen, origin);
    MakeRoom(nLen);
    const INT nFill = nLen - nOld;
    const INT nPos = nMode == NkDtStrLeft ? 0 : nOld;
    Text().OpenGap(nPos, nFill);
    Text().Fill(nPos, ch, nFill);
    SetDefined(TRUE);
    SetModified(TRUE);
}

// Taking texts apart

void NkDtString::Cut(INT nLen) {
    static constexpr Origin origin = originOf("Cut(INT)");
    if (!IsDefined() || nLen == Text().Length()) return;
    requirePosition(*this, nLen, origin);
    Text().SetLength(nLen);
    SetModified(TRUE);
}

void NkDtString::Split(NkDtString& strLeft, NkDtString& strRight, INT nLen) const {
    static constexpr Origin origin = originOf("Split(NkDtString&,NkDtString&,INT)const");
    if (nLen < 0) raise(origin, NkDtErrStringindex);
    if (!IsDefined()) {
        strLeft.Clear();
        strRight.Clear();
        return;
    }
    if (&strLeft == this || &strRight == this) return NkDtString(*this).Split(strLeft, strRight, nLen);

    // A left text that has room for all of this one gets the length as it was given.
    const INT nLength = GetLength();
    const INT nLeft = strLeft.GetAllocLength() < nLength ? std::min(nLen, nLength) : nLen;
    requireLength(nLeft, origin);
    const INT nRight = std::max(nLength - nLen, 0);
    strLeft.TakePart(Text().Part(0, nLength - nRight), nLeft);
    if (nRight > 0) {
        strRight.TakePart(Text().Part(nLen, nRight), nRight);
    } else {
        strRight.Clear();
    }
}

void NkDtString::TakePart(const TextPiece& part, INT nLength) {
    MakeRoom(nLength);
    Text().Write(0, part);
    if (nLength > part.Length()) {
        Text().Fill(part.Length(), '\0', nLength - part.Length());
        Text().SetLength(nLength);
    }
    ValueAccess::state(*this).defined = TRUE;  // without raising the modified flag
}

void NkDtString::Trim(INT nMode) {
    NkDtString_Imp& record = Text();
    const std::string_view text = record.WholeText();
    if (text.empty()) return;
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        record.SetLength(0);
        SetModified(TRUE);
        return;
    }
    const std::size_t begin = nMode == NkDtStrRight ? 0 : first;
    const std::size_t end = nMode == NkDtStrLeft ? text.size() : text.find_last_not_of(' ') + 1;
    if (end - begin == text.size()) return;
    if (begin == 0) {
        record.SetLength(static_cast<INT>(end));
    } else {
        record.Write(0, record.Part(static_cast<INT>(begin), static_cast<INT>(end - begin)));
    }
    SetModified(TRUE);
}

// Upper and lower case

namespace {

template <class Map>
bool mapCase(NkDtString_Imp& text, Map map) noexcept {
    return map(text.Buffer(), static_cast<std::size_t>(text.Length()));
}

}  // namespace

void NkDtString::ToUpper() {
    static constexpr Origin origin = originOf("ToUpper()");
    wrapped(origin, [this] {
        if (mapCase(Text(), mapToUpper)) SetModified(TRUE);
    });
}

void NkDtString::ToLower() {
    static constexpr Origin origin = originOf("ToLower()");
    wrapped(origin, [this] {
        if (mapCase(Text(), mapToLower)) SetModified(TRUE);
    });
}

// Comparing

BOOL NkDtString::IsEmpty() const {
    static constexpr Origin origin = originOf("IsEmpty()");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    return GetLength() == 0;
}

BOOL NkDtString::Compare(const NkDtString& str, BOOL fExact) const {
    if (!IsDefined() && !str.IsDefined()) return TRUE;
    if (IsNull() && str.GetLength() == 0) return TRUE;
    if (GetLength() == 0 && str.IsNull()) return TRUE;
    if (fExact != FALSE) return Text().Equals(str.Text());
    return equalWithoutCase(Text().VisibleText(), str.Text().VisibleText());
}
