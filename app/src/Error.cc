#include "Error.h"

#include <array>
#include <memory>
#include <new>

#include "Text.h"
#include "nkcp/CodePage.h"
#include "nkdt/DialogFields.h"
#include "nkeh/NkEhBasis.h"
#include "nkfw/Exception.h"

namespace nkdt::app {

namespace {

std::string messageOf(const CException& exception) {
    std::array<TCHAR, 1024> text{};
    exception.GetErrorMessage(text.data(), static_cast<UINT>(text.size()));
    return sentence(text.data());
}

// The name of a file is the operating system's, not a library text.
std::string messageOf(const CFileException& exception) {
    const CFileException withoutName(exception.m_cause, exception.m_lOsError);
    const std::string text = messageOf(static_cast<const CException&>(withoutName));
    return exception.m_strFileName.IsEmpty() ? text : text + ": " + exception.m_strFileName.GetString();
}

struct Release {
    void operator()(CException* exception) const noexcept { exception->Delete(); }
};

}  // namespace

std::string takeCaughtText() {
    try {
        throw;
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        return sentence(error->Report());
    } catch (CDBException* caught) {
        const std::unique_ptr<CDBException, Release> error(caught);
        return sentence(error->m_strError);
    } catch (CFileException* caught) {
        const std::unique_ptr<CFileException, Release> error(caught);
        return messageOf(*error);
    } catch (CException* caught) {
        const std::unique_ptr<CException, Release> error(caught);
        return messageOf(*error);
    } catch (const std::bad_alloc&) {
        return "there is not enough memory";
    } catch (const std::exception& error) {
        return error.what();
    }
}

CString takeCaughtReason() {
    try {
        throw;
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        return CString(CDialogFields::ReasonOf(*error));
    } catch (...) {
        std::string text;
        (void)nkcp::appendCp1252FromUtf8(takeCaughtText(), text, nkcp::Unmappable::bestFit);
        return CString(std::string_view(text));
    }
}

std::string quotedStart(std::string_view text) {
    constexpr std::size_t mostCharacters = 40;
    return "\"" + shortened(text, mostCharacters) + "\"";
}

std::string placeOf(LONGLONG row, std::string_view column) {
    return "row " + std::to_string(row) + ", column " + std::string(column);
}

}  // namespace nkdt::app
