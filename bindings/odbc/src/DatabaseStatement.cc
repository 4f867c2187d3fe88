#include "nkdt/odbc/DatabaseStatement.h"

#include <cstring>
#include <string>

#include "Diagnostics.h"
#include "Statement.h"
#include "Text.h"

using namespace nkdt::odbc;

namespace {

// SQLite's driver takes any number.
void requireParameter(const Statement& statement, INT number) {
    if (number < 1 || number > statement.parameterCount())
        fail("07009", "Parameter " + std::to_string(number) + " gibt es nicht");
}

}  // namespace

CDatabaseStatement::CDatabaseStatement(const CDatabase& database, LPCTSTR lpszSQL)
    : m_statement(std::make_unique<Statement>(database.GetConnection())) {
    m_statement->prepare(utf8FromCp1252(lpszSQL == nullptr ? "" : lpszSQL));
}

CDatabaseStatement::~CDatabaseStatement() = default;

void CDatabaseStatement::SetValue(INT nParameter, std::string_view text, CDatabaseColumn::Type nType) {
    requireParameter(*m_statement, nParameter);
    if (text.find('\0') != std::string_view::npos) {
        fail("22021", "Parameter " + std::to_string(nParameter) + ": ein NUL im Text ist nicht speicherbar");
    }
    const std::string utf8 = utf8FromCp1252(text);
    m_statement->setParameter(nParameter, {false, utf8, {}},
                              parameterType(m_statement->connection().dbms(), nType));
}

void CDatabaseStatement::SetNull(INT nParameter, CDatabaseColumn::Type nType) {
    requireParameter(*m_statement, nParameter);
    m_statement->setParameter(nParameter, {}, parameterType(m_statement->connection().dbms(), nType));
}

LONGLONG CDatabaseStatement::Execute() {
    m_statement->execute();
    return m_statement->changedRows();
}
