#pragma once

/// @file
/// A dialog on the screen: edit controls and check boxes with labels, bound to values, over Qt 6 Widgets.
///
/// @code
/// CQtDialog dialog("Artikel");
/// dialog.AddField(1, "&Bezeichnung", strBezeichnung);
/// dialog.AddField(2, "&Preis", dPreis);
/// dialog.AddCheckField(3, "&Lieferbar", fLieferbar);
/// if (dialog.DoModal()) save(strBezeichnung, dPreis, fLieferbar);
/// @endcode
///
/// The fields stand beneath each other in the order in which they are added, which is the tab order; a "&" in
/// a label is its mnemonic. What was edited carries a mark, and is saved; a field that shows what loading
/// wrote is left alone, so an untouched dialog changes nothing (a double shown as "0,13" stays 0.125);
/// CDialogFields has the rules. When values refuse their texts, no value changes: the reason stands beside
/// each such field, the cursor is in the first, and the dialog stays open. No message box is shown.
///
/// Texts are code page 1252 at this interface and Unicode on the screen. A character that the page does not
/// have is refused where it is typed, with a message beside the field.
///
/// A dialog needs a `QApplication` (see CQtApplication) and belongs to the main thread. It is made after the
/// application object and ends before it. One that ends later has lost its window: everything but its
/// destructor, GetDialog() and GetFocus() (null) then throws a `CInvalidArgException*`.

#include <memory>

#include "nkdt/DialogFields.h"
#include "nkdt/NkDtTypes.h"
#include "nkfw/DialogWnd.h"
#include "nkfw/Export.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

class CDataExchange;
class NkEhBasis;
class QDialog;
class QWidget;

namespace nkdt::qt {
class EditControl;
class QtControl;
}  // namespace nkdt::qt

class NKDT_API CQtDialog : public CDialogWnd {
  public:
    /// Length of a text without a limit of its own; no edit control holds more.
    static constexpr INT nNoLimit = 1000000;

    /// @param pszTitle    what the window's frame shows
    /// @param pszSaveText what the button says that saves, with its mnemonic; the other one says "Abbrechen"
    ///
    /// Throws a `CInvalidArgException*` when there is no `QApplication`.
    explicit CQtDialog(LPCTSTR pszTitle = "", LPCTSTR pszSaveText = "Speichern");
    ~CQtDialog() override;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    // All operations that take an id throw a `CInvalidArgException*` for one that is taken already, or that
    // no control of the kind has. A label without a "&" gets a mnemonic that is still free when the dialog is
    // first shown, and so do the buttons; a "&" that is meant to be seen is doubled. A label of more than
    // about 40 characters is cut, and whole in its tooltip.

    /// @name Fields bound to values
    /// The value stays the caller's and must live as long as the dialog is used.
    /// @{

    /// An edit control with the value's user-interface text, as wide as its class needs it. Throws a
    /// `CInvalidArgException*` for a value that is of none of the ten classes.
    void AddField(int nID, LPCTSTR pszLabel, NkDtBasis& rValue);
    /// A check box, as DDX_NkDtTypCheck() exchanges it: it cannot say "undefined", and a null value that it
    /// shows as false stays null until the box is checked.
    /// @param bThreeState the box has a third state, which means "undefined", both ways
    void AddCheckField(int nID, LPCTSTR pszLabel, NkDtBool& rValue, BOOL bThreeState = FALSE);
    /// @}

    /// @name Controls for a DoDataExchange() of one's own
    /// @{

    /// @param eTyp       the class of the value that is shown; decides on width and alignment
    /// @param nTextLimit greatest length of the text: SetWindowText() of a longer one returns FALSE, and a
    ///                   person cannot enter it
    void AddEdit(int nID, LPCTSTR pszLabel, NkDtTyps eTyp = NkDtTypString, INT nTextLimit = nNoLimit);
    void AddCheck(int nID, LPCTSTR pszLabel, BOOL bThreeState = FALSE);
    /// Changes the greatest length of an edit control's text; the text that it has stays;
    /// a person can make it shorter then.
    void SetTextLimit(int nID, INT nTextLimit);
    /// Keeps a person from editing an edit control's text, or no longer. The program still can.
    void SetReadOnly(int nID, BOOL bReadOnly = TRUE);
    /// @}

    /// @name What a person did
    /// @{

    /// TRUE if a field was edited: it shows something else than loading wrote. Of a control that is bound to
    /// no value: than the program wrote last.
    BOOL IsModified(int nID) const;
    /// TRUE if any control does.
    BOOL IsModified() const;
    /// Enters a text into an edit control as a person would: it is modified then.
    /// @return FALSE when the control refuses it, which a message beside it tells, or is read-only
    BOOL EnterText(int nID, LPCTSTR pszText);
    /// The control that has the cursor, or null.
    CWnd* GetFocus() const noexcept;
    /// @}

    /// @name Messages
    /// @{

    /// Shows a text beside a control, until the person changes what is in it; a null or empty one takes the
    /// message away.
    void ShowError(int nID, LPCTSTR pszText);
    /// Shows an error's cause, or its own text if it has none.
    void ShowError(int nID, const NkEhBasis& rError);
    /// Shows a text that concerns the whole dialog above its buttons; a null or empty one takes it away.
    void ShowMessage(LPCTSTR pszText);
    /// Takes away all messages.
    void ClearErrors();
    /// @}

    /// Loads the fields (OnInitDialog()) and shows the dialog until the person saves or gives up.
    /// @return TRUE if it was saved
    ///
    /// What OnInitDialog() and OnOK() throw passes to the caller; the dialog is closed then. Throws a
    /// `CInvalidArgException*` while it runs already.
    BOOL DoModal();
    /// Writes a picture of the whole dialog, two pixels for one of the screen, as a PNG file. The path is
    /// bytes as the operating system has them. Throws a `CFileException*`.
    void SavePicture(LPCTSTR pszPath);

    /// @name For programs that use Qt themselves
    /// Both stay the dialog's. OnOK() must not throw while the program shows the window itself.
    /// @{
    QDialog* GetDialog() const noexcept;
    /// The control's `QLineEdit` or `QCheckBox`.
    QWidget* GetWidget(int nID) const;
    /// @}

  protected:
    /// Exchanges the bound fields, as CDialogFields does. When some refuse, each refusal stands beside its
    /// field, and the first one is thrown as `NkEhBasis*`.
    void DoDataExchange(CDataExchange* pDX) override;
    /// Before the dialog is shown: loads the fields with `UpdateData(FALSE)`.
    virtual void OnInitDialog();
    /// The person wants to save. Saves with DoDataExchange(); a library error is shown beside the control at
    /// which it arose, which gets the cursor.
    /// @return TRUE closes the dialog
    virtual BOOL OnOK();

  private:
    struct Impl;

    void RequireFree(int nID) const;
    void Add(int nID, std::unique_ptr<nkdt::qt::QtControl> pControl);
    void FollowField(int nID);
    nkdt::qt::QtControl& Control(int nID) const;
    nkdt::qt::EditControl& Edit(int nID) const;
    void LoadFields(CDataExchange* pDX);
    void SaveFields(CDataExchange* pDX);
    void Tell(CDataExchange* pDX, CDialogFields::Refusals& rRefusals);

    std::unique_ptr<Impl> m_impl;
};
