#include <nkdt/NkDt.h>

#include <iostream>
#include <memory>

int main() {
    NkDtLong nMenge("12");                  // from text, checked
    NkDtLong nRest(NkDtWmNull);             // null, as in a database
    nRest = nMenge * 5 + 3;                 // 63, defined and modified
    NkDtString strSatz = "Menge " + nRest;  // numbers and texts make texts
    std::cout << strSatz << " " << NkDtString("O'Neil").ConvToSQL() << "\n";
    try {
        nRest += 2147483647;  // beyond 32 bits: nothing wraps, nRest stays 63
    } catch (NkDtExcep* caught) {
        std::unique_ptr<NkDtExcep> error(caught);
        std::cout << error->GetErrorNumber() << ", still " << nRest << "\n";
    }
}
