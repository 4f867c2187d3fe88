#pragma once

/// @file
/// The attributes of a connection string, to be read and completed.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace nkdt::odbc {

class ConnectionString {
  public:
    /// Takes a string like `Driver={PostgreSQL Unicode};Port=5432` apart. A ";" inside braces belongs to the
    /// value.
    explicit ConnectionString(std::string_view text);

    /// The string for an SQLite file.
    static ConnectionString forSqliteFile(std::string_view path);

    /// The value of an attribute as it is written, braces included; null if there is none. Letter case does
    /// not count.
    const std::string* find(std::string_view key) const noexcept;
    /// Adds an attribute unless it is there.
    void addMissing(std::string_view key, std::string_view value);

    /// Adds what the binding relies on (see CDatabase::Open()) for the driver that the string names, or for
    /// each of them when it only names a data source. @p createMissing: whether SQLite may create the file.
    void complete(bool createMissing);
    /// TRUE if the string brings settings of its own for PostgreSQL.
    bool hasOwnConnSettings() const noexcept { return m_ownConnSettings; }

    std::string text() const;

  private:
    std::string* find(std::string_view key) noexcept;
    void completeSqlite(bool createMissing);
    void completePostgresql();

    std::vector<std::pair<std::string, std::string>> m_attributes;
    bool m_ownConnSettings = false;
};

}  // namespace nkdt::odbc
