#include <nkfw/Archive.h>

#include <random>
#include <string>

#include <gtest/gtest.h>

#include "framework/ArchiveTest.h"
#include "framework/FrameworkTest.h"

namespace {

using namespace std::string_literals;
using frameworktest::Blatt;
using frameworktest::causeOf;
using frameworktest::FailingMemory;
using frameworktest::Knoten;
using frameworktest::loaded;
using frameworktest::Nodes;
using frameworktest::nothingThrown;
using frameworktest::stored;
using frameworktest::throws;
using frameworktest::WatchedMemory;

// The archive's own objects beside what it holds: its list of objects, a node, an exception.
constexpr std::size_t nFixedOverhead = 512;

// Numbers of every width, a text of every form of length, and objects: shared, null, in a circle, of two
// classes. The longer forms of a text's length and of an index are written by hand, to keep the sample short.
const std::string& sample() {
    static const std::string bytes = [] {
        const Nodes nodes;
        return stored([](CArchive& ar) {
            ar << BYTE{7} << 'c' << SHORT{-3} << USHORT{3} << -4 << UINT{4} << LONGLONG{-5} << ULONGLONG{5}
               << 2.5;
            ar << CString() << CString("Text");
            ar.Write("\xFF\x06\x00mittel", 9);
            ar.Write("\xFF\xFF\xFF\x06\x00\x00\x00langer", 13);
            Knoten* const pFirst = new Knoten(1);
            Blatt* const pLeaf = new Blatt(2);
            pLeaf->m_strName = "Blatt";
            pFirst->m_pNext = pLeaf;
            pFirst->m_pOther = pFirst;
            pLeaf->m_pNext = new Knoten(3);
            ar << pFirst << pLeaf << static_cast<const CObject*>(nullptr) << new Blatt(4);
            ar.Write("\xFF\x7F\2\0\0\0", 6);
            ar << CString("Ende");
        });
    }();
    return bytes;
}

struct Content {
    BYTE byte = 0;
    CHAR character = 0;
    SHORT nShort = 0;
    USHORT nUShort = 0;
    INT nInt = 0;
    UINT nUInt = 0;
    LONGLONG nLong = 0;
    ULONGLONG nULong = 0;
    double dValue = 0;
    CString texts[4];
    CObject* objects[5] = {};
    CString end;

    void readFrom(CArchive& ar) {
        ar >> byte >> character >> nShort >> nUShort >> nInt >> nUInt >> nLong >> nULong >> dValue;
        for (CString& text : texts)
            ar >> text;
        for (CObject*& pObject : objects)
            ar >> pObject;
        ar >> end;
    }
};

// Loads the bytes: nothingThrown, or the cause of the archive's exception. Nothing stays behind, and no
// request for memory goes beyond what the archive holds.
int outcomeOf(const std::string& bytes) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    int cause = nothingThrown;
    int causeAfterwards = nothingThrown;
    std::size_t nLargest = 0;
    {
        const WatchedMemory memory;
        CArchive ar(&file, CArchive::load);
        Content content;
        cause = causeOf<CArchiveException>([&] { content.readFrom(ar); });
        if (cause != nothingThrown) {
            BYTE byte = 0;
            causeAfterwards = causeOf<CArchiveException>([&] { ar >> byte; });
        }
        Knoten::releaseAll();
        nLargest = memory.largest();
    }
    EXPECT_LE(nLargest, bytes.size() + nFixedOverhead);
    if (cause != nothingThrown) {
        EXPECT_GE(cause, static_cast<int>(CArchiveException::genericException));
        EXPECT_EQ(causeAfterwards, CArchiveException::genericException);
    }
    return cause;
}

TEST(DamagedArchive, TheSampleIsWhole) {
    const Nodes nodes;
    loaded(sample(), [](CArchive& ar) {
        Content content;
        content.readFrom(ar);
        EXPECT_EQ(content.byte, 7);
        EXPECT_EQ(content.dValue, 2.5);
        EXPECT_EQ(content.texts[1], "Text");
        EXPECT_EQ(content.texts[2], "mittel");
        EXPECT_EQ(content.texts[3], "langer");
        const auto* const pFirst = dynamic_cast<const Knoten*>(content.objects[0]);
        ASSERT_NE(pFirst, nullptr);
        EXPECT_EQ(pFirst->m_pOther, pFirst);
        EXPECT_EQ(pFirst->m_pNext, content.objects[1]);
        EXPECT_EQ(content.objects[2], nullptr);
        EXPECT_NE(content.objects[3], nullptr);
        EXPECT_EQ(content.objects[4], pFirst);
        EXPECT_EQ(content.end, "Ende");
    });
    EXPECT_EQ(outcomeOf(sample()), nothingThrown);
}

TEST(DamagedArchive, EveryPrefixEndsUnexpectedly) {
    for (std::size_t nLength = 0; nLength < sample().size(); ++nLength)
        ASSERT_EQ(outcomeOf(sample().substr(0, nLength)), CArchiveException::endOfFile) << nLength;
}

TEST(DamagedArchive, EveryChangeOfAByteGivesAnExceptionOrAValue) {
    int nValues = 0;
    int nExceptions = 0;
    for (std::size_t nPosition = 0; nPosition < sample().size(); ++nPosition) {
        for (unsigned nChange = 1; nChange < 256; ++nChange) {
            std::string bytes = sample();
            bytes[nPosition] = static_cast<char>(static_cast<unsigned char>(bytes[nPosition]) ^ nChange);
            ++(outcomeOf(bytes) == nothingThrown ? nValues : nExceptions);
            ASSERT_FALSE(testing::Test::HasFailure()) << "position " << nPosition << ", change " << nChange;
        }
    }
    EXPECT_GT(nValues, 10000);
    EXPECT_GT(nExceptions, 10000);
}

TEST(DamagedArchive, RandomChangesGiveAnExceptionOrAValue) {
    std::mt19937 random(20040229);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes = sample();
        for (unsigned nChanges = 1 + random() % 4; nChanges > 0; --nChanges) {
            const std::size_t nPosition = random() % bytes.size();
            switch (random() % 4) {
                case 0:
                    bytes.erase(nPosition, 1 + random() % 4);
                    break;
                case 1:
                    bytes.insert(nPosition, 1 + random() % 4, static_cast<char>(random()));
                    break;
                default:
                    bytes[nPosition] = static_cast<char>(random());
            }
        }
        outcomeOf(bytes);
        ASSERT_FALSE(testing::Test::HasFailure()) << "round " << round;
    }
}

TEST(DamagedArchive, ATextBeyondTheBufferThatEndsTooSoonCostsNoMemory) {
    const std::string whole = stored([](CArchive& ar) { ar << CString(std::string(70000, 'x')); });
    for (std::size_t nLength = 0; nLength < whole.size(); nLength += 997) {
        CMemFile file(whole.data(), static_cast<UINT>(nLength));
        CString str("bleibt");
        int cause = 0;
        std::size_t nLargest = 0;
        {
            const WatchedMemory memory;
            CArchive ar(&file, CArchive::load);
            cause = causeOf<CArchiveException>([&] { ar >> str; });
            nLargest = memory.largest();
        }
        ASSERT_EQ(cause, CArchiveException::endOfFile) << nLength;
        ASSERT_LE(nLargest, nFixedOverhead) << nLength;
        ASSERT_EQ(str, "bleibt");
    }
}

// ---- Without memory

TEST(ArchiveWithoutMemory, LoadingThrowsAndLeavesNothingBehind) {
    int nFailures = 0;
    for (int nGranted = 0;; ++nGranted) {
        const Nodes nodes;
        CMemFile file(sample().data(), static_cast<UINT>(sample().size()));
        CArchive ar(&file, CArchive::load);
        Content content;
        bool fThrown = false;
        bool fRefused = false;
        {
            const FailingMemory memory(nGranted);
            fThrown = throws<CMemoryException>([&] { content.readFrom(ar); });
            fRefused = memory.refused();
        }
        ASSERT_EQ(fThrown, fRefused) << nGranted;
        if (!fRefused) break;
        ++nFailures;
        EXPECT_EQ(causeOf<CArchiveException>([&] { ar >> content.end; }),
                  CArchiveException::genericException);
    }
    EXPECT_GT(nFailures, 10);
}

TEST(ArchiveWithoutMemory, StoringThrowsAndTheArchiveIsRefused) {
    int nFailures = 0;
    for (int nGranted = 0;; ++nGranted) {
        const Nodes nodes;
        Knoten* const pNode = new Knoten(1);
        pNode->m_pNext = new Blatt(2);
        const CString strLong(std::string(5000, 'x'));
        CMemFile file;
        CArchive ar(&file, CArchive::store);
        bool fThrown = false;
        bool fRefused = false;
        {
            const FailingMemory memory(nGranted);
            fThrown = throws<CMemoryException>([&] {
                ar << pNode << strLong;
                ar.Flush();
            });
            fRefused = memory.refused();
        }
        ASSERT_EQ(fThrown, fRefused) << nGranted;
        if (!fRefused) break;
        ++nFailures;
        EXPECT_EQ(causeOf<CArchiveException>([&] { ar << 1; }), CArchiveException::genericException);
    }
    EXPECT_GT(nFailures, 3);
}

}  // namespace
