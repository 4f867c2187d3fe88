#include "nkfw/Archive.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "nkfw/Exception.h"

namespace {

// Lengths of texts, and the marks that stand before the longer ones.
constexpr std::size_t nShortTextEnd = 0xFF;
constexpr std::size_t nMediumTextEnd = 0xFFFE;
constexpr BYTE nMediumTextMark = 0xFF;
constexpr WORD nLongTextMark = 0xFFFF;

// The 16 bits that an object's record begins with.
constexpr WORD nNoObject = 0;
constexpr WORD nNewClass = 0xFFFF;
constexpr WORD nLongIndex = 0x7FFF;  // 32 bits follow
constexpr WORD nClassMark = 0x8000;
constexpr DWORD nLongClassMark = 0x80000000;

constexpr std::size_t nMaxClassName = 63;
constexpr UINT nMaxSchema = 0xFFFF;

}  // namespace

// What this archive has met so far. Classes and objects are numbered together, from 1 on in the order of
// their appearance.
struct CArchive::Graph {
    struct Entry {
        const CRuntimeClass* pClass;  // of a class, else null
        CObject* pObject;             // of an object, else null
    };

    std::unordered_map<const void*, DWORD> indexes;  // storing: by the address of the class or object
    std::vector<Entry> entries;                      // loading: by index less 1
    UINT nDepth = 0;                                 // of the object in work

    void Enter(const void* pMet) {
        const std::size_t nIndex = indexes.size() + 1;
        if (nIndex >= nLongClassMark) throw new CArchiveException(CArchiveException::genericException);
        indexes.emplace(pMet, static_cast<DWORD>(nIndex));
    }
    // The index, or 0.
    DWORD IndexOf(const void* pMet) const {
        const auto found = indexes.find(pMet);
        return found != indexes.end() ? found->second : 0;
    }
};

// ---- Beginning and end

CArchive::CArchive(CFile* pFile, UINT nMode) : m_pFile(pFile), m_fLoading(nMode == load) {
    if (pFile == nullptr || nMode > load) throw new CInvalidArgException;
    OpenBuffer();
}

CArchive::~CArchive() {
    if (m_pFile == nullptr || m_fFailed) return;
    try {
        Close();
    } catch (CException* pException) {
        pException->Delete();
    } catch (...) {
    }
}

void CArchive::Flush() {
    RequireUsable();
    Guard([this] {
        if (!m_fLoading) {
            Drain();
        } else if (BytesToGet() != 0) {
            m_pFile->Seek(-static_cast<LONGLONG>(BytesToGet()), CFile::current);
            OpenBuffer();
        }
    });
}

void CArchive::Close() {
    if (m_pFile == nullptr) return;
    try {
        Flush();
    } catch (...) {
        End();
        throw;
    }
    End();
}

void CArchive::End() noexcept {
    ShutBuffer();
    m_pFile = nullptr;
    m_pGraph.reset();
}

// ---- Failing

void CArchive::RequireUsable() const {
    if (m_fFailed || m_pFile == nullptr) throw new CArchiveException(CArchiveException::genericException);
}

void CArchive::RequireDirection(bool fLoading) const {
    RequireUsable();
    if (fLoading != m_fLoading) {
        throw new CArchiveException(m_fLoading ? CArchiveException::readOnly : CArchiveException::writeOnly);
    }
}

// Runs the body; whatever it throws ends the archive's use.
template <class Body>
void CArchive::Guard(Body body) {
    try {
        body();
    } catch (const std::bad_alloc&) {
        MarkFailed();
        CMemoryException::Throw();
    } catch (...) {
        MarkFailed();
        throw;
    }
}

void CArchive::MarkFailed() noexcept {
    m_fFailed = true;
    ShutBuffer();
}

void CArchive::Fail(int cause) {
    MarkFailed();
    throw new CArchiveException(cause);
}

// ---- Bytes

void CArchive::ShutBuffer() noexcept {
    m_pPut = m_pPutEnd = m_pGet = m_pGetEnd = m_buffer;
}

void CArchive::OpenBuffer() noexcept {
    ShutBuffer();
    if (!m_fLoading) m_pPutEnd = m_buffer + nBufferSize;
}

void CArchive::Drain() {
    const auto nWaiting = static_cast<UINT>(m_pPut - m_buffer);
    if (nWaiting != 0) m_pFile->Write(m_buffer, nWaiting);
    m_pPut = m_buffer;
}

void CArchive::Fill() {
    const UINT nRead = m_pFile->Read(m_buffer, nBufferSize);
    if (nRead == 0) Fail(CArchiveException::endOfFile);
    m_pGet = m_buffer;
    m_pGetEnd = m_buffer + nRead;
}

void CArchive::WriteThrough(const BYTE* pBytes, std::size_t nCount) {
    RequireDirection(false);
    Guard([&] {
        Drain();
        while (nCount > nBufferSize) {
            const std::size_t nPart = std::min<std::size_t>(nCount, std::numeric_limits<UINT>::max());
            m_pFile->Write(pBytes, static_cast<UINT>(nPart));
            pBytes += nPart;
            nCount -= nPart;
        }
        Write(pBytes, nCount);
    });
}

void CArchive::ReadThrough(BYTE* pBytes, std::size_t nCount) {
    RequireDirection(true);
    Guard([&] {
        for (;;) {
            const std::size_t nAhead = std::min(nCount, BytesToGet());
            Read(pBytes, nAhead);
            pBytes += nAhead;
            nCount -= nAhead;
            if (nCount == 0) return;
            if (nCount <= nBufferSize) {
                Fill();
                continue;
            }
            const UINT nPart = m_pFile->Read(
                pBytes, static_cast<UINT>(std::min<std::size_t>(nCount, std::numeric_limits<UINT>::max())));
            if (nPart == 0) Fail(CArchiveException::endOfFile);
            pBytes += nPart;
            nCount -= nPart;
        }
    });
}

// Bytes that can still be read.
ULONGLONG CArchive::Remaining() const {
    const ULONGLONG nLength = m_pFile->GetLength();
    const ULONGLONG nPosition = m_pFile->GetPosition();
    return BytesToGet() + (nLength > nPosition ? nLength - nPosition : 0);
}

// ---- Texts

CArchive& CArchive::operator<<(const CString& v) {
    const std::string_view text = v.View();
    if (text.size() < nShortTextEnd) {
        *this << static_cast<BYTE>(text.size());
    } else if (text.size() < nMediumTextEnd) {
        *this << nMediumTextMark << static_cast<WORD>(text.size());
    } else {
        *this << nMediumTextMark << nLongTextMark << static_cast<DWORD>(text.size());
    }
    Write(text.data(), text.size());
    return *this;
}

CArchive& CArchive::operator>>(CString& v) {
    const std::size_t nLength = ReadLength();
    if (nLength <= BytesToGet()) {
        Guard([&] { v.Assign({reinterpret_cast<LPCTSTR>(m_pGet), nLength}); });
        m_pGet += nLength;
    } else {
        Guard([&] { v = ReadLongText(nLength); });
    }
    return *this;
}

std::size_t CArchive::ReadLength() {
    const BYTE nShort = GetNumber<BYTE>();
    if (nShort != nMediumTextMark) return nShort;
    const WORD nMedium = GetNumber<WORD>();
    if (nMedium < nMediumTextEnd) return nMedium;
    if (nMedium != nLongTextMark) Fail(CArchiveException::genericException);
    return GetNumber<DWORD>();
}

// A text that goes beyond the buffer. A damaged length must not cost memory: the bytes have to be there.
CString CArchive::ReadLongText(std::size_t nLength) {
    if (nLength > Remaining()) Fail(CArchiveException::endOfFile);
    if (nLength > static_cast<std::size_t>(std::numeric_limits<INT>::max())) {
        Fail(CArchiveException::genericException);
    }
    CString text;
    const LPTSTR pBuffer = text.GetBuffer(static_cast<INT>(nLength));
    Read(pBuffer, nLength);
    text.ReleaseBuffer(static_cast<INT>(nLength));
    return text;
}

// ---- Objects: storing

CArchive::Graph& CArchive::ObjectGraph() {
    if (m_pGraph == nullptr) m_pGraph = std::make_unique<Graph>();
    return *m_pGraph;
}

void CArchive::WriteObject(const CObject* pObject) {
    RequireDirection(false);
    Guard([&] {
        if (pObject != nullptr) {
            StoreObject(*pObject);
        } else {
            *this << nNoObject;
        }
    });
}

void CArchive::StoreObject(const CObject& rObject) {
    Graph& graph = ObjectGraph();
    if (const DWORD nIndex = graph.IndexOf(&rObject); nIndex != 0) {
        StoreIndex(nIndex, false);
        return;
    }
    if (graph.nDepth == nMaxDepth) Fail(CArchiveException::genericException);
    StoreClass(*rObject.GetRuntimeClass());
    // The index first: the contents may lead back to the object.
    graph.Enter(&rObject);
    ++graph.nDepth;
    const_cast<CObject&>(rObject).Serialize(*this);  // reads the object only, as the archive is storing
    --graph.nDepth;
}

void CArchive::StoreClass(const CRuntimeClass& rClass) {
    Graph& graph = ObjectGraph();
    if (const DWORD nIndex = graph.IndexOf(&rClass); nIndex != 0) {
        StoreIndex(nIndex, true);
        return;
    }
    const std::string_view name(rClass.m_lpszClassName);
    const bool fComesBack = rClass.m_pfnCreateObject != nullptr && !name.empty() &&
                            name.size() <= nMaxClassName && rClass.m_wSchema <= nMaxSchema &&
                            CRuntimeClass::FromName(rClass.m_lpszClassName) == &rClass;
    if (!fComesBack) Fail(CArchiveException::badClass);
    graph.Enter(&rClass);
    *this << nNewClass << static_cast<WORD>(rClass.m_wSchema) << static_cast<WORD>(name.size());
    Write(name.data(), name.size());
}

void CArchive::StoreIndex(DWORD nIndex, bool fClass) {
    if (nIndex < nLongIndex) {
        *this << static_cast<WORD>(fClass ? nIndex | nClassMark : nIndex);
    } else {
        *this << nLongIndex << (fClass ? nIndex | nLongClassMark : nIndex);
    }
}

// ---- Objects: loading

CObject* CArchive::ReadObject(const CRuntimeClass* pClass) {
    RequireDirection(true);
    CObject* pObject = nullptr;
    Guard([&] { pObject = LoadObject(pClass); });
    return pObject;
}

CObject* CArchive::LoadObject(const CRuntimeClass* pWanted) {
    const WORD nTag = GetNumber<WORD>();
    if (nTag == nNoObject) return nullptr;
    if (nTag == nNewClass) return LoadNewObject(LoadClass(), pWanted);

    const bool fLong = nTag == nLongIndex;
    const DWORD nMark = fLong ? nLongClassMark : nClassMark;
    const DWORD nNumber = fLong ? GetNumber<DWORD>() : nTag;
    const DWORD nIndex = nNumber & ~nMark;
    const bool fClass = (nNumber & nMark) != 0;

    const std::vector<Graph::Entry>& entries = ObjectGraph().entries;
    if (nIndex == 0 || nIndex > entries.size()) Fail(CArchiveException::badIndex);
    const Graph::Entry entry = entries[nIndex - 1];
    if (fClass != (entry.pClass != nullptr)) Fail(CArchiveException::badIndex);
    if (fClass) return LoadNewObject(*entry.pClass, pWanted);

    if (pWanted != nullptr && !entry.pObject->IsKindOf(pWanted)) Fail(CArchiveException::badClass);
    return entry.pObject;
}

const CRuntimeClass& CArchive::LoadClass() {
    const WORD nSchema = GetNumber<WORD>();
    const WORD nLength = GetNumber<WORD>();
    if (nLength > nMaxClassName) Fail(CArchiveException::badClass);
    CHAR szName[nMaxClassName + 1] = {};
    Read(szName, nLength);

    const CRuntimeClass* const pClass = CRuntimeClass::FromName(szName);
    const bool fKnown =
        pClass != nullptr && pClass->m_pfnCreateObject != nullptr && std::strlen(szName) == nLength;
    if (!fKnown) Fail(CArchiveException::badClass);
    if (pClass->m_wSchema != nSchema) Fail(CArchiveException::badSchema);
    ObjectGraph().entries.push_back({pClass, nullptr});
    return *pClass;
}

CObject* CArchive::LoadNewObject(const CRuntimeClass& rClass, const CRuntimeClass* pWanted) {
    if (pWanted != nullptr && !rClass.IsDerivedFrom(pWanted)) Fail(CArchiveException::badClass);
    Graph& graph = ObjectGraph();
    if (graph.nDepth == nMaxDepth) Fail(CArchiveException::genericException);
    std::unique_ptr<CObject> pObject(rClass.CreateObject());
    if (pObject == nullptr) Fail(CArchiveException::badClass);

    // The index first: the contents may lead back to the object.
    graph.entries.push_back({nullptr, pObject.get()});
    ++graph.nDepth;
    const UINT nOuterSchema = std::exchange(m_nSchema, rClass.m_wSchema);
    pObject->Serialize(*this);
    m_nSchema = nOuterSchema;
    --graph.nDepth;
    return pObject.release();
}
