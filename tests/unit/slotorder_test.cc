// The order of the virtual functions, on which programs rely that were compiled before.

#include <nkdt/NkDt.h>
#include <nkfw/Recordset.h>

#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;

/// The number of a virtual function in its class's table. Both compilers keep its offset in the pointer to
/// the function, most machines with 1 added.
template <class Function>
std::ptrdiff_t slotOf(Function function) {
    std::ptrdiff_t words[2];
    static_assert(sizeof function == sizeof words);
    std::memcpy(words, &function, sizeof words);
    return words[0] / static_cast<std::ptrdiff_t>(sizeof(void*));
}

template <class Value>
class AnySlot : public ::testing::Test {};
TYPED_TEST_SUITE(AnySlot, ValueClasses, ClassNames);

TYPED_TEST(AnySlot, HasItsFunctionsInTheOrderOfTheBase) {
    using T = TypeParam;
    EXPECT_EQ(slotOf<const CRuntimeClass* (T::*)() const>(&T::GetRuntimeClass), 0);
    // The destructor takes two.
    EXPECT_EQ(slotOf<void (T::*)(CArchive&)>(&T::Serialize), 3);
    EXPECT_EQ(slotOf<void (T::*)() const>(&T::AssertValid), 4);
    EXPECT_EQ(slotOf<void (T::*)(CDumpContext&) const>(&T::Dump), 5);
    EXPECT_EQ(slotOf<void (T::*)()>(&T::Clear), 6);
    EXPECT_EQ(slotOf<void (T::*)(BOOL)>(&T::SetModified), 7);
    EXPECT_EQ(slotOf<NkDtTyps (T::*)() const>(&T::GetDtTyp), 8);
    EXPECT_EQ(slotOf<void (T::*)(const NkDtBasis&)>(&T::Assign), 9);
    EXPECT_EQ(slotOf<T* (T::*)() const>(&T::NewObject), 10);
    EXPECT_EQ(slotOf<CString (T::*)(const NkFormat*) const>(&T::ConvToOFL), 11);
    EXPECT_EQ(slotOf<void (T::*)(LPCTSTR, const NkFormat*)>(&T::SetFromOFL), 12);
    EXPECT_EQ(slotOf<NkDtString (T::*)(BOOL&, USHORT&) const>(&T::ConvToExtern), 13);
    EXPECT_EQ(slotOf<void (T::*)(const NkDtString*, BOOL, USHORT)>(&T::SetFromExtern), 14);
    EXPECT_EQ(slotOf<const NkDeBasis* (T::*)() const>(&T::GetDeBasisPtr), 15);
}

/// The functions for recordsets come last in every class.
template <class Value, class Field>
void expectRecordsetSlots() {
    EXPECT_EQ(slotOf<void (Value::*)(CRecordset&, const Field&)>(&Value::SetFromRecordSet), 18);
    EXPECT_EQ(slotOf<void (Value::*)(CRecordset&, Field&) const>(&Value::ConvToRecordSet), 19);
}

template <class Value, class Field, class Read, class Write = NkDtString() const>
void expectOwnSlots() {
    SCOPED_TRACE(Sample<Value>::name);
    EXPECT_EQ(slotOf<Read Value::*>(&Value::SetFromSQL), 16);
    EXPECT_EQ(slotOf<Write Value::*>(&Value::ConvToSQL), 17);
    expectRecordsetSlots<Value, Field>();
}

TEST(SlotsOfTheClasses, ReadSqlAndThenWriteItBehindTheBase) {
    using Paged = NkDtString(UINT) const;
    expectOwnSlots<NkDtLong, long, void(long)>();
    expectOwnSlots<NkDtShort, int, void(short)>();
    expectOwnSlots<NkDtDouble, double, void(double)>();
    expectOwnSlots<NkDtDecimal, CString, void(LPCTSTR)>();
    expectOwnSlots<NkDtTime, LONG, void(LONG)>();
    expectOwnSlots<NkDtString, CString, void(LPCTSTR, INT, UINT), Paged>();
    expectOwnSlots<NkDtChar, CString, void(CHAR, UINT), Paged>();
    expectOwnSlots<NkDtBool, BOOL, void(TCHAR)>();
}

TEST(SlotsOfADate, WriteSqlAndThenReadItBehindTheBase) {
    EXPECT_EQ(slotOf(&NkDtDateTime::ConvToSQL), 16);
    EXPECT_EQ(slotOf(&NkDtDateTime::SetFromSQL), 17);
    expectRecordsetSlots<NkDtDateTime, TIMESTAMP_STRUCT>();
}

}  // namespace
