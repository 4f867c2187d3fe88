#pragma once

/// @file
/// One row of a table, found by its key: it is read, its values are changed, and what was modified is written
/// back, unless somebody else was faster.
///
/// @code
/// StoredRow row(database, "Artikel", "4711", selection);
/// row.columns()[2].cell->value().SetFromOFL("12,50");
/// const StoredRow::Saved saved = row.save();
/// @endcode

#include <cstddef>
#include <string>
#include <vector>

#include "Table.h"
#include "nkfw/String.h"

namespace nkdt::app {

class StoredRow {
  public:
    /// How a saving ended. What was not saved is still modified.
    struct Saved {
        enum Outcome {
            done,       ///< the modified values are in the database
            nothing,    ///< no value was modified
            deleted,    ///< the row is not there any more
            overtaken,  ///< values of the row have changed since it was read
        };
        Outcome outcome = done;
        std::vector<std::size_t> columns;  ///< of done: the saved ones; of overtaken: the changed ones
    };

    /// Reads the row, with every column that can be bound.
    /// @param key the key's value in user-interface text, UTF-8
    ///
    /// Throws a UsageError if the table has not a key of one column, or the text is no value of it; a
    /// DataError if there is no such row.
    StoredRow(CDatabase& database, const CString& table, const std::string& key, const Selection& selection);

    /// The columns with the row's values.
    BoundColumns& columns() noexcept { return m_columns.bound; }
    const std::vector<LeftOutColumn>& leftOut() const noexcept { return m_columns.leftOut; }
    /// Table and key, as a name for a person.
    const CString& title() const noexcept { return m_title; }

    /// Writes the values that are modified, and no other, in one transaction. It takes the row's lock, looks
    /// whether the row still has the values that were read, and only then writes. The values are not modified
    /// any more when they are in the database for good; a failure of the database is thrown. A row that is
    /// saved has to be read anew before it is changed again.
    Saved save();

  private:
    std::size_t findKey(const CString& name) const;
    void read(const std::string& key);
    std::vector<std::size_t> modified() const;
    Saved writeLocked(const std::vector<std::size_t>& columns);

    CDatabase& m_database;
    const CString m_table;
    TableColumns m_columns;
    std::size_t m_key;
    CString m_title;
    CString m_condition;           // of SQL, that the row alone meets
    std::vector<CString> m_texts;  // of the columns, as they were read
};

}  // namespace nkdt::app
