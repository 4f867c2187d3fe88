#pragma once

/// @file
/// What becomes of a value between a column and an application's field. A further kind of field is one more
/// class here.

#include <memory>
#include <string>

#include "Statement.h"
#include "nkcp/CodePage.h"
#include "nkfw/String.h"

namespace nkdt::odbc {

class DoubleCapacity;

/// Why a value cannot cross: a state and a sentence in UTF-8, to be told with its row and column.
struct Refusal {
    const char* state;
    std::string text;
};

/// A value on its way out, with memory of its own.
class OutgoingValue {
  public:
    void setNull() noexcept;
    /// The text to be filled; it keeps its memory from row to row.
    std::string& setText();
    /// A number, with the shortest text that reads back as it.
    void setNumber(double number);
    /// As setNumber(), for a column that takes a text only.
    void setNumberText(double number);
    /// The value; a view into this object.
    CrossingValue value() const noexcept;

  private:
    bool m_null = true;
    std::string m_text;
    std::optional<double> m_number;
};

/// The way between a column and the field that it is bound to.
class FieldExchange {
  public:
    virtual ~FieldExchange();
    /// The field's address, by which the recordset knows it.
    virtual const void* field() const noexcept = 0;
    /// Stores a value that is not null; throws a Refusal if the field cannot hold it.
    virtual void read(const CrossingValue& value, nkcp::Unmappable option) = 0;
    /// What the field shows while it is null.
    virtual void clear() = 0;
    /// TRUE if reading the value would give what the field holds.
    virtual bool holds(const CrossingValue& value, nkcp::Unmappable option) const = 0;
    /// The field's value; throws a Refusal if the column cannot hold it.
    virtual void write(OutgoingValue& value) const = 0;
};

std::unique_ptr<FieldExchange> exchangeShort(int& field);
std::unique_ptr<FieldExchange> exchangeLong(long& field);
std::unique_ptr<FieldExchange> exchangeLong(LONG& field);
/// @param numbersAreKept whether the column holds any number for true; else writing one but 0 and 1 is
/// refused
std::unique_ptr<FieldExchange> exchangeBool(BOOL& field, bool numbersAreKept);
/// @param numbersAreExact whether the column takes a double as a double, else as the shortest text that reads
/// back
std::unique_ptr<FieldExchange> exchangeDouble(double& field, const DoubleCapacity& capacity,
                                              bool numbersAreExact);
/// @param emptyIsKept whether the column holds an empty text; else writing one is refused
std::unique_ptr<FieldExchange> exchangeChar(CString& field, bool emptyIsKept);
std::unique_ptr<FieldExchange> exchangeText(CString& field);

/// Makes room for a text of @p length characters and more, so that growing texts do not allocate one by one.
void reserveText(CString& field, std::size_t length);

}  // namespace nkdt::odbc
