// The binding is found with everything that it needs: the driver manager is asked and its refusal can be
// caught here.
#include <nkdt/NkDt.h>
#include <nkdt/odbc/Odbc.h>
#include <nkdt/odbc/SqlApi.h>

#include <memory>

#include "Expect.h"

int main() {
    Expectations expect;

    CDatabase database;
    bool refused = false;
    try {
        database.Open("no-such-folder/no-such-file.db");
    } catch (CDBException* caught) {
        const std::unique_ptr<CDBException> error(caught);
        refused = true;
    }
    expect.that(refused && !database.IsOpen(), "a database that is not there cannot be opened");

    SQLHENV environment = SQL_NULL_HENV;
    expect.that(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment) == SQL_SUCCESS,
                "the driver manager can be called directly");
    SQLFreeHandle(SQL_HANDLE_ENV, environment);

    return expect.exitStatus();
}
