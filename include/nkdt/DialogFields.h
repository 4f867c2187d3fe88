#pragma once

/// @file
/// Fields of a dialog that are bound to values: loads all of them, and saves those that were edited; all, or
/// none when one refuses.
///
/// @code
/// CDialogFields fields;
/// fields.Bind(idBezeichnung, strBezeichnung);
/// fields.Bind(idPreis, dPreis);
/// fields.BindCheck(idLieferbar, fLieferbar);
///
/// for (const auto& refusal : fields.Load(dialog)) tell(refusal.nID, refusal.GetReason());
/// ...                                    // a person types
/// const auto refusals = fields.Save(dialog);
/// if (refusals.empty()) store(strBezeichnung, dPreis, fLieferbar);
/// for (const auto& refusal : refusals) showBeside(refusal.nID, refusal.GetReason());
/// @endcode
///
/// A field is *edited* while its control shows something else than it did when loading was done, whether a
/// person or the program wrote that. A field that is not edited is never exchanged, so what its text does not
/// hold is not lost: a double shown as "0,13" stays 0.125. Before it is loaded, a control counts as empty.
///
/// Works on every dialog (CWnd); the values and the dialogs stay the caller's, and the values must live as
/// long as this object is used.

#include <memory>
#include <optional>
#include <vector>

#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtTypes.h"
#include "nkeh/NkEhBasis.h"
#include "nkfw/Export.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

class CDataExchange;
class CWnd;

class NKDT_API CDialogFields {
  public:
    /// Why a field could not be exchanged.
    struct Refusal {
        int nID;                            ///< the control
        std::unique_ptr<NkEhBasis> pError;  ///< what the exchange threw; never null

        /// As ReasonOf(); belongs to the error.
        LPCTSTR GetReason() const noexcept { return ReasonOf(*pError); }
    };
    /// In the order in which the fields were bound.
    using Refusals = std::vector<Refusal>;

    /// Binds an edit control, exchanged by DDX_NkDtTyp(). A class that derives from one of the ten is
    /// exchanged by its own operations. Throws a `CInvalidArgException*` for a value of none of the ten
    /// classes (GetDtTyp()), or an id that is bound already.
    void Bind(int nID, NkDtBasis& rValue);
    /// Binds a check box, exchanged by DDX_NkDtTypCheck().
    /// @param bThreeState for a three-state box: indeterminate is "undefined" then, both ways, and every
    ///                    number but 0 shows as checked
    /// Throws a `CInvalidArgException*` for an id that is bound already.
    void BindCheck(int nID, NkDtBool& rValue, BOOL bThreeState = FALSE);

    /// Shows the values. No field counts as edited afterwards; one that is refused is left as it was, and
    /// counts as edited only when something is written into it.
    [[nodiscard]] Refusals Load(CWnd& rDialog);
    /// Takes the values of the edited fields from their controls, each by an exchange of its own, so that
    /// every refusal is told. When there is one, no value changes.
    ///
    /// May be called again, after a database has refused the values, say: a field that is not edited any
    /// more gets back the value and the modified flag that it had before a saving took it.
    ///
    /// Other exceptions pass, and the values are as before then too, if there is memory for that. While the
    /// saving runs, a value may change and change back.
    [[nodiscard]] Refusals Save(CWnd& rDialog);
    /// Makes what values and controls are now count as loaded, once the values are stored for good: no field
    /// is edited any more. The values' modified flags stay.
    void KeepAsLoaded(const CWnd& rDialog);

    /// TRUE if the field is edited. Throws a `CInvalidArgException*` for an id that is not bound.
    BOOL IsEdited(const CWnd& rDialog, int nID) const;
    /// TRUE if any field is.
    BOOL IsEdited(const CWnd& rDialog) const;

    /// What a person is told of an error: its cause, or its own text if it has none. The text belongs to the
    /// error.
    static LPCTSTR ReasonOf(const NkEhBasis& rError) noexcept;

  private:
    using Exchange = void (*)(CDataExchange* pDX, int nID, NkDtBasis& rValue);
    struct Field {
        int nID;
        bool bCheck;
        NkDtBasis* pValue;
        Exchange exchange;
        std::optional<CString> strLoaded;  // what the control showed then; nothing if it could not be read
        std::unique_ptr<NkDtBasis> pBefore = nullptr;  // the value, if a saving has replaced it
    };
    struct Change;
    class Saving;

    void Add(Field&& rField);
    static std::optional<CString> ShownIn(const CWnd& rDialog, const Field& rField);
    static bool IsEdited(const CWnd& rDialog, const Field& rField);
    static void Run(CWnd& rDialog, BOOL bSave, const Field& rField, Refusals& rRefusals);

    std::vector<Field> m_fields;
};
