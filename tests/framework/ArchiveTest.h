#pragma once

// Archives in memory, and objects to put into them.

#include <nkfw/Archive.h>
#include <nkfw/Exception.h>
#include <nkfw/File.h>

#include <algorithm>
#include <string>
#include <vector>

#include "framework/FrameworkTest.h"

namespace frameworktest {

// The bytes of an archive that the body writes to.
template <class Body>
std::string stored(Body body) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    body(archive);
    archive.Close();
    if (file.GetLength() == 0) return {};
    return {reinterpret_cast<const char*>(file.GetData()), static_cast<std::size_t>(file.GetLength())};
}

// Lets the body read from an archive of these bytes.
template <class Body>
void loaded(const std::string& bytes, Body body) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    body(archive);
}

template <class Body>
int archiveCauseOf(Body body) {
    return causeOf<CArchiveException>(body);
}

// Nodes know each other without owning each other, since a damaged archive may join them in any way. All that
// live are listed here, so that a test can release them.
class Knoten : public CObject {
  public:
    Knoten() { s_living.push_back(this); }
    explicit Knoten(INT nValue) : Knoten() { m_nValue = nValue; }
    Knoten(const Knoten&) = delete;
    Knoten& operator=(const Knoten&) = delete;
    ~Knoten() override { s_living.erase(std::find(s_living.rbegin(), s_living.rend(), this).base() - 1); }

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject() { return new Knoten; }
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    void Serialize(CArchive& ar) override {
        if (ar.IsStoring()) {
            ar << m_nValue << m_pNext << m_pOther;
        } else {
            ar >> m_nValue;
            m_nSchemaRead = ar.GetObjectSchema();
            m_pNext = static_cast<Knoten*>(ar.ReadObject(RUNTIME_CLASS(Knoten)));
            m_pOther = static_cast<Knoten*>(ar.ReadObject(RUNTIME_CLASS(Knoten)));
        }
    }

    static std::size_t living() { return s_living.size(); }
    static void releaseAll() {
        while (!s_living.empty())
            delete s_living.back();
    }

    INT m_nValue = 0;
    UINT m_nSchemaRead = 0;
    Knoten* m_pNext = nullptr;
    Knoten* m_pOther = nullptr;

  private:
    static inline std::vector<Knoten*> s_living;
};

// A node with a name.
class Blatt : public Knoten {
  public:
    using Knoten::Knoten;
    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject() { return new Blatt; }
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    void Serialize(CArchive& ar) override {
        Knoten::Serialize(ar);
        if (ar.IsStoring()) {
            ar << m_strName;
        } else {
            ar >> m_strName;
        }
    }

    CString m_strName;
};

inline constexpr CRuntimeClass classKnoten{"Knoten", sizeof(Knoten), 3, &Knoten::CreateObject,
                                           &CObject::GetThisClass};
inline constexpr CRuntimeClass classBlatt{"Blatt", sizeof(Blatt), 0x102, &Blatt::CreateObject,
                                          &Knoten::GetThisClass};
inline const CClassRegistration registrationKnoten{classKnoten};
inline const CClassRegistration registrationBlatt{classBlatt};

inline const CRuntimeClass* Knoten::GetThisClass() noexcept {
    return &classKnoten;
}
inline const CRuntimeClass* Blatt::GetThisClass() noexcept {
    return &classBlatt;
}

// Releases the nodes that a test leaves behind.
class Nodes {
  public:
    Nodes() = default;
    ~Nodes() { Knoten::releaseAll(); }
    Nodes(const Nodes&) = delete;
    Nodes& operator=(const Nodes&) = delete;
};

}  // namespace frameworktest
