#pragma once

/// @file
/// The framework's binary archive: little-endian on every machine.
///
/// @code
/// CMemFile file;
/// CArchive out(&file, CArchive::store);
/// out << nCount << str << pObject;
/// out.Close();
/// @endcode
///
/// | what | bytes |
/// |---|---|
/// | a number | its fixed width, least byte first; a double as its 64 bits |
/// | a text below 255 bytes | its length in one byte, then its bytes |
/// | a text below 65534 bytes | 0xFF, its length in 16 bits, its bytes |
/// | a longer text | 0xFF, 0xFFFF, its length in 32 bits, its bytes |
/// | no object | 16 bits 0 |
/// | an object of a new class | 0xFFFF, schema and length of the name in 16 bits each, the name; contents |
/// | an object of a class met before | the class's index in 16 bits with the top bit set; its contents |
/// | an object met before | its index in 16 bits |
///
/// Classes and objects share one numbering from 1 on; from index 32767 on the 16 bits are 0x7FFF and 32 bits
/// follow, where the class's mark is again the top bit.
///
/// Reading damaged bytes throws a `CArchiveException*`, never allocates more than the archive could hold, and
/// leaves an archive that refuses every further operation. So does every other error inside an archive: a
/// `CFileException*` of the file, a `CMemoryException*`, whatever an object's Serialize() throws. Only an
/// operation in the wrong direction (`readOnly`, `writeOnly`) and a number or text that is asked for after
/// Close() (`genericException`) leave things as they are.
///
/// Objects may be nested CArchive::nMaxDepth deep. An object that contains others takes each of them once: a
/// damaged archive may name an object a second time that already has an owner, or one that is still being
/// read.

#include <cstddef>
#include <cstring>
#include <memory>

#include "nkfw/Export.h"
#include "nkfw/File.h"
#include "nkfw/Object.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

class NKDT_API CArchive {
  public:
    enum Mode : UINT { store = 0, load = 1 };

    /// How deep objects may lie within each other.
    static constexpr UINT nMaxDepth = 1000;

    /// Works on @p pFile from its position on; the file stays the caller's and must outlive the archive.
    /// Throws a `CInvalidArgException*` for a null file and an unknown mode.
    CArchive(CFile* pFile, UINT nMode);
    /// Close(), ignoring errors; call that to hear of them.
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsLoading() const noexcept { return m_fLoading; }
    BOOL IsStoring() const noexcept { return !m_fLoading; }
    /// The file, or null after Close().
    CFile* GetFile() const noexcept { return m_pFile; }
    /// Storing: writes what is buffered to the file. Loading: moves the file to behind the last byte that was
    /// read. Throws `genericException` if the archive failed before.
    void Flush();
    /// Flush(), and ends the archive, even when that throws. Does nothing the second time.
    void Close();

    /// Reads exactly @p nCount bytes; throws `endOfFile` when there are fewer.
    void Read(void* pBuf, std::size_t nCount) {
        if (nCount <= BytesToGet()) {
            if (nCount != 0) std::memcpy(pBuf, m_pGet, nCount);
            m_pGet += nCount;
        } else {
            ReadThrough(static_cast<BYTE*>(pBuf), nCount);
        }
    }
    void Write(const void* pBuf, std::size_t nCount) {
        if (nCount <= RoomToPut()) {
            if (nCount != 0) std::memcpy(m_pPut, pBuf, nCount);
            m_pPut += nCount;
        } else {
            WriteThrough(static_cast<const BYTE*>(pBuf), nCount);
        }
    }

    CArchive& operator<<(BYTE v) { return PutNumber(v); }
    CArchive& operator<<(CHAR v) { return PutNumber(static_cast<BYTE>(v)); }
    CArchive& operator<<(SHORT v) { return PutNumber(static_cast<USHORT>(v)); }
    CArchive& operator<<(USHORT v) { return PutNumber(v); }
    CArchive& operator<<(INT v) { return PutNumber(static_cast<UINT>(v)); }
    CArchive& operator<<(UINT v) { return PutNumber(v); }
    CArchive& operator<<(LONGLONG v) { return PutNumber(static_cast<ULONGLONG>(v)); }
    CArchive& operator<<(ULONGLONG v) { return PutNumber(v); }
    CArchive& operator<<(double v) {
        ULONGLONG nBits;
        std::memcpy(&nBits, &v, sizeof(nBits));
        return PutNumber(nBits);
    }
    CArchive& operator<<(const CString& v);
    /// As WriteObject().
    CArchive& operator<<(const CObject* pObject) {
        WriteObject(pObject);
        return *this;
    }

    /// What is read into is unchanged when an operator throws.
    CArchive& operator>>(BYTE& v) { return GetNumberInto<BYTE>(v); }
    CArchive& operator>>(CHAR& v) { return GetNumberInto<BYTE>(v); }
    CArchive& operator>>(SHORT& v) { return GetNumberInto<USHORT>(v); }
    CArchive& operator>>(USHORT& v) { return GetNumberInto<USHORT>(v); }
    CArchive& operator>>(INT& v) { return GetNumberInto<UINT>(v); }
    CArchive& operator>>(UINT& v) { return GetNumberInto<UINT>(v); }
    CArchive& operator>>(LONGLONG& v) { return GetNumberInto<ULONGLONG>(v); }
    CArchive& operator>>(ULONGLONG& v) { return GetNumberInto<ULONGLONG>(v); }
    CArchive& operator>>(double& v) {
        const ULONGLONG nBits = GetNumber<ULONGLONG>();
        std::memcpy(&v, &nBits, sizeof(v));
        return *this;
    }
    CArchive& operator>>(CString& v);
    /// As ReadObject() of any class.
    CArchive& operator>>(CObject*& rpObject) {
        rpObject = ReadObject(nullptr);
        return *this;
    }

    /// Reads an object (or null): a new one that the caller owns, or one that this archive has given out
    /// before, perhaps to somebody else. It must be of class @p pClass or derived from it (null: any), else
    /// `badClass`. Also `badClass` for a class that is not registered or abstract, `badSchema` for one that
    /// was written with another schema, `badIndex` for a number that stands for nothing.
    CObject* ReadObject(const CRuntimeClass* pClass);
    /// Writes the object (or null) through its Serialize(), once; later only its index. An object is told by
    /// its address, so it must outlive the archive's use. Its class must be registered and not abstract, with
    /// a name of at most 63 bytes, else `badClass`.
    void WriteObject(const CObject* pObject);
    /// While an object is read: the schema that its class had when it was written.
    UINT GetObjectSchema() const noexcept { return m_nSchema; }

  private:
    struct Graph;

    // Both are 0 in the wrong direction, after a failure and after Close(), so that these need no test of
    // their own here.
    std::size_t RoomToPut() const noexcept { return static_cast<std::size_t>(m_pPutEnd - m_pPut); }
    std::size_t BytesToGet() const noexcept { return static_cast<std::size_t>(m_pGetEnd - m_pGet); }
    void WriteThrough(const BYTE* pBytes, std::size_t nCount);
    void ReadThrough(BYTE* pBytes, std::size_t nCount);

    template <class U>
    static void Encode(BYTE* pBytes, U v) noexcept {
        for (std::size_t i = 0; i < sizeof(U); ++i)
            pBytes[i] = static_cast<BYTE>(v >> (8 * i));
    }
    template <class U>
    static U Decode(const BYTE* pBytes) noexcept {
        ULONGLONG v = 0;
        for (std::size_t i = 0; i < sizeof(U); ++i)
            v |= ULONGLONG{pBytes[i]} << (8 * i);
        return static_cast<U>(v);
    }
    template <class U>
    CArchive& PutNumber(U v) {
        if (sizeof(U) <= RoomToPut()) {
            Encode(m_pPut, v);
            m_pPut += sizeof(U);
        } else {
            BYTE bytes[sizeof(U)];
            Encode(bytes, v);
            WriteThrough(bytes, sizeof(U));
        }
        return *this;
    }
    template <class U>
    U GetNumber() {
        if (sizeof(U) <= BytesToGet()) {
            m_pGet += sizeof(U);
            return Decode<U>(m_pGet - sizeof(U));
        }
        BYTE bytes[sizeof(U)];
        ReadThrough(bytes, sizeof(U));
        return Decode<U>(bytes);
    }
    template <class U, class V>
    CArchive& GetNumberInto(V& v) {
        v = static_cast<V>(GetNumber<U>());
        return *this;
    }

    void RequireUsable() const;
    void RequireDirection(bool fLoading) const;
    template <class Body>
    void Guard(Body body);
    void MarkFailed() noexcept;
    [[noreturn]] void Fail(int cause);
    void ShutBuffer() noexcept;
    void OpenBuffer() noexcept;
    void End() noexcept;

    void Drain();
    void Fill();
    ULONGLONG Remaining() const;
    std::size_t ReadLength();
    CString ReadLongText(std::size_t nLength);

    Graph& ObjectGraph();
    void StoreObject(const CObject& rObject);
    void StoreClass(const CRuntimeClass& rClass);
    void StoreIndex(DWORD nIndex, bool fClass);
    CObject* LoadObject(const CRuntimeClass* pWanted);
    CObject* LoadNewObject(const CRuntimeClass& rClass, const CRuntimeClass* pWanted);
    const CRuntimeClass& LoadClass();

    static constexpr std::size_t nBufferSize = 2048;

    CFile* m_pFile;
    BYTE* m_pPut;     // storing: where the next byte goes
    BYTE* m_pPutEnd;  // storing: the end of the buffer
    BYTE* m_pGet;     // loading: where the next byte comes from
    BYTE* m_pGetEnd;  // loading: the end of what was read ahead
    std::unique_ptr<Graph> m_pGraph;
    UINT m_nSchema = 0;
    bool m_fLoading;
    bool m_fFailed = false;
    BYTE m_buffer[nBufferSize];  // part of the archive, as many live for one small value only
};
