#include <nkfw/Exception.h>
#include <nkfw/Recordset.h>

#include <random>
#include <unordered_map>
#include <vector>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using frameworktest::FailingMemory;
using frameworktest::throws;

TEST(Recordset, AFieldThatWasNeverMentionedIsNotNull) {
    const CRecordset rs;
    const long nField = 0;
    EXPECT_FALSE(rs.IsFieldNull(&nField));
    EXPECT_FALSE(rs.IsFieldNull(nullptr));
}

TEST(Recordset, AFieldIsNullUntilItIsMarkedNotNull) {
    CRecordset rs;
    long nField = 0;
    rs.SetFieldNull(&nField);
    EXPECT_EQ(rs.IsFieldNull(&nField), TRUE);
    rs.SetFieldNull(&nField, FALSE);
    EXPECT_EQ(rs.IsFieldNull(&nField), FALSE);
    rs.SetFieldNull(&nField, 4711);
    EXPECT_EQ(rs.IsFieldNull(&nField), TRUE);
}

TEST(Recordset, FieldsAreToldByTheirAddresses) {
    CRecordset rs;
    long fields[3] = {};
    rs.SetFieldNull(&fields[1]);
    EXPECT_FALSE(rs.IsFieldNull(&fields[0]));
    EXPECT_TRUE(rs.IsFieldNull(&fields[1]));
    EXPECT_FALSE(rs.IsFieldNull(&fields[2]));
}

TEST(Recordset, TheNullAddressMeansAllFieldsMentioned) {
    CRecordset rs;
    long fields[3] = {};
    rs.SetFieldNull(&fields[0], FALSE);
    rs.SetFieldNull(&fields[1], TRUE);
    rs.SetFieldNull(nullptr, TRUE);
    EXPECT_TRUE(rs.IsFieldNull(&fields[0]));
    EXPECT_TRUE(rs.IsFieldNull(&fields[1]));
    EXPECT_FALSE(rs.IsFieldNull(&fields[2]));
    rs.SetFieldNull(nullptr, FALSE);
    EXPECT_FALSE(rs.IsFieldNull(&fields[0]));
    EXPECT_FALSE(rs.IsFieldNull(&fields[1]));
}

TEST(Recordset, FieldsMayBeAskedForInAnyOrder) {
    constexpr std::size_t nFields = 50;
    long fields[nFields] = {};
    CRecordset rs;
    std::unordered_map<const long*, bool> expected;
    std::mt19937 random(20040229);
    for (int step = 0; step < 5000; ++step) {
        long* const pField = &fields[random() % nFields];
        if (random() % 2 == 0) {
            const bool fNull = random() % 2 == 0;
            rs.SetFieldNull(pField, fNull ? TRUE : FALSE);
            expected[pField] = fNull;
        } else {
            ASSERT_EQ(rs.IsFieldNull(pField) != FALSE, expected[pField]);
        }
    }
}

TEST(Recordset, ANewFieldWithoutMemoryChangesNothing) {
    CRecordset rs;
    long nKnown = 0;
    long nNew = 0;
    rs.SetFieldNull(&nKnown);
    bool fThrown = false;
    {
        const FailingMemory memory(0);
        fThrown = throws<CMemoryException>([&] { rs.SetFieldNull(&nNew); });
    }
    EXPECT_TRUE(fThrown);
    EXPECT_TRUE(rs.IsFieldNull(&nKnown));
    EXPECT_FALSE(rs.IsFieldNull(&nNew));
}

TEST(Recordset, IsAFrameworkObject) {
    const CRecordset rs;
    EXPECT_STREQ(rs.GetRuntimeClass()->m_lpszClassName, "CRecordset");
    EXPECT_TRUE(rs.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_EQ(RUNTIME_CLASS(CRecordset)->CreateObject(), nullptr);
}

}  // namespace
