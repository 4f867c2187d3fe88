// The binding is found with everything that it needs: the driver manager is asked and its refusal can be
// caught here.
#include <nkdt/NkDt.h>
#include <nkdt/odbc/Odbc.h>

#include <memory>

int main() {
    CDatabase database;
    try {
        database.Open("no-such-folder/no-such-file.db");
    } catch (CDBException* caught) {
        const std::unique_ptr<CDBException> error(caught);
        return database.IsOpen() ? 1 : 0;
    }
    return 2;
}
