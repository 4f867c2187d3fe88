#pragma once

/// @file
/// The abstract base of all value classes: is the value defined, what does undefined mean, was it modified,
/// how is it formatted.
///
/// | working mode      | an undefined value     | reading it         | in arithmetic                |
/// |-------------------|------------------------|--------------------|------------------------------|
/// | 0 `NkDtWmMissing` | is missing             | raises error 2     | makes the result undefined   |
/// | 1 `NkDtWmNull`    | is null, as in SQL     | gives the empty one | is neutral                  |
/// | 2 `NkDtWmDefined` | arises by exception    | gives what is stored | takes part with that       |
///
/// @code
/// NkDtLong nMenge(NkDtWmNull);      // null
/// nMenge = 5;                       // defined and modified
/// if (nMenge.GetAndResetModified(FALSE)) save(nMenge.ConvToSQL());
/// @endcode
///
/// Two records on the heap belong to each value object: the state kept here and the value kept by the derived
/// class. A value that was moved from has neither; used again, it is like one newly constructed in mode 3. A
/// value is used by one thread at a time.

#include "nkdt/NkDtTypes.h"
#include "nkdt/Record.h"
#include "nkfw/Export.h"
#include "nkfw/Object.h"
#include "nkfw/String.h"

class CArchive;
class NkDeBasis;

namespace nkdt {

/// The state record of a value.
struct State {
    /// The state of an undefined value in the process default mode; defined when that mode is 2.
    NKDT_API State() noexcept;
    /// @param storedMode not NkDtWmDefault; NkDtWmDefined makes the value defined in any case
    State(BOOL isDefined, NkDtWorkingMode storedMode) noexcept
        : mode(storedMode), defined(storedMode == NkDtWmDefined ? TRUE : isDefined) {}
    /// All but the format, which is never copied.
    State(const State& r) noexcept : mode(r.mode), defined(r.defined), modified(r.modified) {}
    State& operator=(const State&) = delete;

    NkDtWorkingMode mode;  // never NkDtWmDefault
    BOOL defined;
    BOOL modified = FALSE;
    const NkFormat* format = nullptr;  // not owned
};

extern template class NKDT_API Record<State>;

struct ValueAccess;

}  // namespace nkdt

/// Sets the working mode that new values take when none (3) is given; 3 sets 0. The start value is 0. Not
/// synchronised with threads that construct values.
NKDT_API void NkDtSetDefaultWorkingMode(NkDtWorkingMode eMode) noexcept;
/// The working mode that new values take when none is given.
NKDT_API NkDtWorkingMode NkDtGetDefaultWorkingMode() noexcept;

class NKDT_API NkDtBasis : public CObject {
  public:
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    ~NkDtBasis() override = default;

  protected:
    /// Writes the defined flag as one 32-bit word, or reads it; a change sets the modified flag. Mode,
    /// modified flag and format are not archived. An archive's own exception passes.
    void Serialize(CArchive& ar) override;

  public:
    /// Makes the value undefined and sets the modified flag, if it was defined; does nothing in mode 2.
    /// Derived classes first reset the stored value to the empty value, which sets the modified flag if it
    /// was another one.
    virtual void Clear();
    virtual void SetModified(BOOL fModified);
    /// The class's number among NkDtTyps; 13 here.
    virtual NkDtTyps GetDtTyp() const;
    /// Assigns value and definedness of an object of the same class (or one derived from it). Error 10
    /// "Basistypen unterschiedlich" for every other.
    virtual void Assign(const NkDtBasis& r) = 0;
    /// A new object of the same class, a copy of this one; the caller owns it.
    virtual NkDtBasis* NewObject() const = 0;
    /// The value as user-interface text. An undefined value gives the empty text. The format is @p pFormat,
    /// else the object's own, else the class's default. Error 1, with the format's refusal as cause, when the
    /// format cannot show the value.
    virtual CString ConvToOFL(const NkFormat* pFormat = nullptr) const = 0;
    /// Reads user-interface text, with the format chosen as in ConvToOFL(). A null or empty text clears.
    /// Error 1, the value unchanged, when the format refuses the text.
    virtual void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) = 0;
    /// The value as external text; tells whether it is defined and the version 100.
    virtual NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const = 0;
    /// Reads an external text. Error 14 "Falsche Versionsnummer" for a version other than 100, before
    /// anything else. Clears when @p fDefiniert is not 1 or there is no text. Error 13 "Inkonsistente
    /// Definiertheit" for an undefined text, error 1 for one that is malformed; the value is marked defined
    /// then, its stored value unchanged.
    virtual void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) = 0;
    /// The value's counterpart in another layer; null here.
    virtual const NkDeBasis* GetDeBasisPtr() const;

    BOOL IsDefined() const { return m_state->defined == TRUE; }
    /// Undefined in mode 0.
    BOOL IsMissing() const { return m_state->defined != TRUE && m_state->mode == NkDtWmMissing; }
    /// Undefined in mode 1.
    BOOL IsNull() const { return m_state->defined != TRUE && m_state->mode == NkDtWmNull; }
    BOOL IsModified() const { return m_state->modified; }
    /// The modified flag as it was; stores @p fNew in it.
    BOOL GetAndResetModified(BOOL fNew);
    /// The stored working mode, never 3.
    NkDtWorkingMode GetWorkingMode() const { return m_state->mode; }
    /// Stores the mode (3: the default). An argument of 2 makes the value defined, without setting the
    /// modified flag; an argument of 3 does not, not even while the default is 2.
    void SetWorkingMode(NkDtWorkingMode eMode);
    /// The object's own format, or null.
    const NkFormat* GetFormat() const { return m_state->format; }
    /// Sets the object's own format, which stays the caller's and must live as long as it is set; null: none.
    void SetFormat(const NkFormat* pFormat) { m_state->format = pFormat; }

    /// Takes over the definedness and sets the modified flag, if it differs; does nothing in mode 2. Mode and
    /// format stay.
    NkDtBasis& operator=(const NkDtBasis& r);

  protected:
    /// @param fDefined TRUE for a defined value; mode 2 makes it defined in any case
    /// @param eMode the working mode, 3: the default
    NkDtBasis(BOOL fDefined, NkDtWorkingMode eMode);
    /// Copies mode, definedness and modified flag, not the format.
    NkDtBasis(const NkDtBasis& r);
    NkDtBasis(NkDtBasis&& r) noexcept = default;
    /// Takes over a state record of the pool.
    explicit NkDtBasis(nkdt::State* pState) noexcept : m_state(pState) {}

    /// Sets the definedness, whatever the mode; a change sets the modified flag.
    void SetDefined(BOOL fDefined) {
        if (m_state->defined == fDefined) return;
        m_state->modified = TRUE;
        m_state->defined = fDefined;
    }
    /// TRUE when at least one operand is defined and neither is missing.
    static BOOL CheckDefinedForArithmetic(const NkDtBasis& a, const NkDtBasis& b);
    /// TRUE for an object that was moved from.
    bool IsHusk() const noexcept { return m_state.isHusk(); }
    /// Takes the other's state with everything in it; this object must be a husk.
    void StealState(NkDtBasis& r) noexcept { m_state.steal(r.m_state); }

  private:
    friend struct nkdt::ValueAccess;

    nkdt::Record<nkdt::State> m_state;
};
