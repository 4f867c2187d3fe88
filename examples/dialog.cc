#include <nkdt/NkDt.h>
#include <nkdt/qt/QtApplication.h>
#include <nkdt/qt/QtDialog.h>
#include <nkfo/NkFormat.h>

#include <iostream>

enum { idNummer = 1, idBezeichnung, idPreis, idSeit, idLieferbar };

class Artikeldialog : public CQtDialog {
  public:
    using CQtDialog::CQtDialog;

  protected:
    BOOL OnOK() override {
        if (!CQtDialog::OnOK()) return FALSE;  // the refusals stand beside their fields
        if (!IsModified(idNummer) || GetDlgItemText(idNummer) != "1") return TRUE;
        ShowError(idNummer, "Diese Nummer gibt es schon.");
        GetDlgItem(idNummer)->SetFocus();
        return FALSE;
    }
};

int main(int argc, char** argv) {
    CQtApplication application(argc, argv);

    NkDtLong nNummer(4711);
    NkDtString strBezeichnung("Schraube M5 x 40");
    NkDtDecimal dPreis("1012.50");
    NkDtDateZp datSeit(1, 3, 2004);
    NkDtBool fLieferbar(TRUE);
    const NkFormat formatPreis(12, 2, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt,
                               FormatVorzeichenVorn, FormatVorzeichenNurMinus, 1, '0', 2, '0');
    dPreis.SetFormat(&formatPreis);

    Artikeldialog dialog("Artikel");
    dialog.AddField(idNummer, "&Nummer", nNummer);
    dialog.AddField(idBezeichnung, "&Bezeichnung", strBezeichnung);
    dialog.AddField(idPreis, "&Preis", dPreis);
    dialog.AddField(idSeit, "Im Lager &seit", datSeit);
    dialog.AddCheckField(idLieferbar, "&Lieferbar", fLieferbar);

    BOOL fSaved = FALSE;
    if (CQtApplication::HasDisplay()) {
        fSaved = dialog.DoModal();
    } else {  // nobody is there to type
        dialog.UpdateData(FALSE);
        dialog.EnterText(idPreis, "1.099,90");
        fSaved = dialog.UpdateData();
    }
    if (fSaved && dPreis.IsModified()) std::cout << "Neuer Preis: " << dPreis.ConvToOFL().GetString() << "\n";
}
