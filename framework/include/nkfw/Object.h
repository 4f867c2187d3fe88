#pragma once

/// @file
/// The root of all framework objects: run-time class information, dynamic creation by name, serialisation.
///
/// A class takes part by three functions and one registration:
/// @code
/// class Artikel : public CObject {
///  public:
///     static const CRuntimeClass* GetThisClass() noexcept;
///     static CObject* CreateObject() { return new Artikel; }
///     const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
/// };
///
/// // in the source file
/// static constexpr CRuntimeClass classArtikel{"Artikel", sizeof(Artikel), 1,
///                                             &Artikel::CreateObject, &CObject::GetThisClass};
/// static const CClassRegistration registrationArtikel{classArtikel};
/// const CRuntimeClass* Artikel::GetThisClass() noexcept { return &classArtikel; }
/// @endcode

#include <atomic>
#include <cstddef>

#include "nkfw/Export.h"
#include "nkfw/Types.h"

class CArchive;
class CDumpContext;
class CObject;

/// What is known of a class at run time. Constant data with static lifetime; there is one per class, told by
/// its address.
struct CRuntimeClass {
    LPCSTR m_lpszClassName;           ///< the class's name, as an archive stores it
    std::size_t m_nObjectSize;        ///< size of an object in bytes
    UINT m_wSchema;                   ///< version of the archive form, 0 to 65535
    CObject* (*m_pfnCreateObject)();  ///< makes an object, or null for abstract classes
    const CRuntimeClass* (
        *m_pfnGetBaseClass)() noexcept;  ///< the class it derives from, or null for the root

    /// A new object owned by the caller, or null when the class is abstract.
    NKDT_API CObject* CreateObject() const;
    /// TRUE if this is @p pBaseClass or derives from it.
    NKDT_API BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const noexcept;
    /// The registered class of that name, or null.
    NKDT_API static const CRuntimeClass* FromName(LPCSTR lpszClassName) noexcept;
};

/// Enters a class into the registry that FromName() searches, for as long as the registration lives. Of two
/// classes of one name the later registration is found. Registrations may be made while other threads search;
/// they end with their module, when no thread searches any more.
class NKDT_API CClassRegistration {
  public:
    explicit CClassRegistration(const CRuntimeClass& rClass) noexcept;
    ~CClassRegistration();
    CClassRegistration(const CClassRegistration&) = delete;
    CClassRegistration& operator=(const CClassRegistration&) = delete;

  private:
    friend struct CRuntimeClass;
    const CRuntimeClass& m_rClass;
    std::atomic<CClassRegistration*> m_pNext{nullptr};
};

/// The run-time class of @p class_name.
#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

/// The root class.
class NKDT_API CObject {
  public:
    /// The class of CObject itself.
    static const CRuntimeClass* GetThisClass() noexcept;

    /// The object's own class.
    virtual const CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;
    /// Writes the object to the archive or reads it from there; the root has nothing to store.
    virtual void Serialize(CArchive& ar);
    /// Checks the object's invariants in derived classes; does nothing here.
    virtual void AssertValid() const;
    /// Describes the object in derived classes; does nothing here.
    virtual void Dump(CDumpContext& dc) const;

    /// TRUE if the object's class is @p pClass or derives from it.
    BOOL IsKindOf(const CRuntimeClass* pClass) const noexcept;

  protected:
    CObject() noexcept = default;
    CObject(const CObject&) noexcept = default;
    CObject& operator=(const CObject&) noexcept = default;
};
