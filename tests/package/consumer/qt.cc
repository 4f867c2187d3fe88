// A dialog shows values and takes what is entered; no header of Qt is needed for that.
#include <nkdt/NkDt.h>
#include <nkdt/qt/QtApplication.h>
#include <nkdt/qt/QtDialog.h>

#include "Expect.h"

int main(int argc, char** argv) {
    Expectations expect;
    CQtApplication application(argc, argv);

    NkDtString name("Schraube");
    NkDtLong count(12);
    CQtDialog dialog("Artikel");
    dialog.AddField(1, "&Bezeichnung", name);
    dialog.AddField(2, "&Anzahl", count);
    dialog.UpdateData(FALSE);
    dialog.EnterText(2, "13");

    expect.that(dialog.UpdateData(TRUE), "the dialog is saved");
    expect.that(count == 13 && count.IsModified(), "what was entered is in the value");
    expect.that(name == "Schraube" && !name.IsModified(), "the other value is untouched");
    return expect.exitStatus();
}
