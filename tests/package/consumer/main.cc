// What a first user tries: values compute, a missing one raises the library's error, and the error can be
// caught here.
#include <nkdt/NkDt.h>

#include <memory>

int main() {
    NkDtLong sum(40);
    sum += 2;
    if (sum.GetValue() != 42) return 1;

    try {
        const NkDtLong missing(NkDtWmMissing);
        return missing.GetValue() == 0 ? 2 : 3;
    } catch (NkDtExcep* caught) {
        const std::unique_ptr<NkDtExcep> error(caught);
        return error->GetErrorNumber() == 2 ? 0 : 4;
    }
}
