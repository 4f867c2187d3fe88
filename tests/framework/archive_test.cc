#include <nkfw/Archive.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "framework/ArchiveTest.h"
#include "framework/FrameworkTest.h"

namespace {

using namespace std::string_literals;
using frameworktest::archiveCauseOf;
using frameworktest::caught;
using frameworktest::Caught;
using frameworktest::loaded;
using frameworktest::nothingThrown;
using frameworktest::stored;
using frameworktest::TestFolder;
using frameworktest::throws;

// ---- Numbers

struct BytesRow {
    void (*write)(CArchive&);
    std::string bytes;
};

TEST(Archive, ANumberIsItsFixedWidthLeastByteFirst) {
    const BytesRow table[] = {
        {[](CArchive& ar) { ar << BYTE{0xAB}; }, "\xAB"s},
        {[](CArchive& ar) { ar << 'A' << '\xFC'; }, "A\xFC"s},
        {[](CArchive& ar) { ar << SHORT{0x1234}; }, "\x34\x12"s},
        {[](CArchive& ar) { ar << SHORT{-2}; }, "\xFE\xFF"s},
        {[](CArchive& ar) { ar << USHORT{0xFEDC}; }, "\xDC\xFE"s},
        {[](CArchive& ar) { ar << WORD{0x0102}; }, "\x02\x01"s},
        {[](CArchive& ar) { ar << INT{0x12345678}; }, "\x78\x56\x34\x12"s},
        {[](CArchive& ar) { ar << LONG{-2}; }, "\xFE\xFF\xFF\xFF"s},
        {[](CArchive& ar) { ar << BOOL{TRUE}; }, "\1\0\0\0"s},
        {[](CArchive& ar) { ar << UINT{0x89ABCDEF}; }, "\xEF\xCD\xAB\x89"s},
        {[](CArchive& ar) { ar << DWORD{1} << ULONG{2}; }, "\1\0\0\0\2\0\0\0"s},
        {[](CArchive& ar) { ar << LONGLONG{0x0123456789ABCDEF}; }, "\xEF\xCD\xAB\x89\x67\x45\x23\x01"s},
        {[](CArchive& ar) { ar << LONGLONG{-2}; }, "\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s},
        {[](CArchive& ar) { ar << ULONGLONG{0xFEDCBA9876543210}; }, "\x10\x32\x54\x76\x98\xBA\xDC\xFE"s},
        {[](CArchive& ar) { ar << 1.0; }, "\0\0\0\0\0\0\xF0\x3F"s},
        {[](CArchive& ar) { ar << -0.15625; }, "\0\0\0\0\0\0\xC4\xBF"s},
        {[](CArchive& ar) { ar.Write("abc", 3); }, "abc"s},
        {[](CArchive& ar) { ar.Write(nullptr, 0); }, ""s},
    };
    for (const BytesRow& row : table)
        EXPECT_EQ(stored(row.write), row.bytes);
}

template <class T>
void expectBack(const std::vector<T>& values) {
    const std::string bytes = stored([&](CArchive& ar) {
        for (const T value : values)
            ar << value;
    });
    EXPECT_EQ(bytes.size(), values.size() * sizeof(T));
    loaded(bytes, [&](CArchive& ar) {
        for (const T value : values) {
            T back{};
            ar >> back;
            EXPECT_EQ(std::memcmp(&back, &value, sizeof(T)), 0) << value;
        }
    });
}

template <class T>
std::vector<T> edgesOf() {
    using Limits = std::numeric_limits<T>;
    return {T{0}, T{1}, static_cast<T>(-1), Limits::lowest(), Limits::max(), Limits::min()};
}

TEST(Archive, NumbersOfEveryWidthComeBack) {
    expectBack(edgesOf<BYTE>());
    expectBack(edgesOf<CHAR>());
    expectBack(edgesOf<SHORT>());
    expectBack(edgesOf<USHORT>());
    expectBack(edgesOf<INT>());
    expectBack(edgesOf<UINT>());
    expectBack(edgesOf<LONGLONG>());
    expectBack(edgesOf<ULONGLONG>());
    expectBack(edgesOf<double>());
    expectBack<double>({-0.0, 0.1, std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::denorm_min(), std::nan("123")});
}

// ---- Texts

struct LengthRow {
    std::size_t nLength;
    std::string head;
};

TEST(Archive, ATextIsItsLengthAndItsBytes) {
    const LengthRow table[] = {
        {0, "\x00"s},
        {1, "\x01"s},
        {254, "\xFE"s},
        {255, "\xFF\xFF\x00"s},
        {256, "\xFF\x00\x01"s},
        {2047, "\xFF\xFF\x07"s},
        {2048, "\xFF\x00\x08"s},
        {65533, "\xFF\xFD\xFF"s},
        {65534, "\xFF\xFF\xFF\xFE\xFF\x00\x00"s},
        {65535, "\xFF\xFF\xFF\xFF\xFF\x00\x00"s},
        {70000, "\xFF\xFF\xFF\x70\x11\x01\x00"s},
    };
    for (const LengthRow& row : table) {
        const std::string text(row.nLength, 'x');
        const std::string bytes = stored([&](CArchive& ar) { ar << CString(text) << BYTE{0xEE}; });
        EXPECT_EQ(bytes.substr(0, row.head.size()), row.head) << row.nLength;
        EXPECT_TRUE(bytes == row.head + text + '\xEE') << row.nLength;
        loaded(bytes, [&](CArchive& ar) {
            CString back("vorher");
            BYTE end = 0;
            ar >> back >> end;
            EXPECT_TRUE(back.View() == text) << row.nLength;
            EXPECT_EQ(end, 0xEE);
        });
    }
}

TEST(Archive, ATextKeepsNulBytesAndEveryOtherByte) {
    std::string text;
    for (int byte = 0; byte < 256; ++byte)
        text += static_cast<char>(byte);
    loaded(stored([&](CArchive& ar) { ar << CString(text); }), [&](CArchive& ar) {
        CString back;
        ar >> back;
        EXPECT_EQ(back.View(), text);
    });
}

TEST(Archive, ATextLengthMayBeWrittenLongerThanItHasToBe) {
    for (const std::string& bytes : {"\x03"s, "\xFF\x03\x00"s, "\xFF\xFF\xFF\x03\x00\x00\x00"s}) {
        loaded(bytes + "abc", [](CArchive& ar) {
            CString str;
            ar >> str;
            EXPECT_EQ(str, "abc");
        });
    }
}

struct DamageRow {
    std::string bytes;
    int cause;
};

TEST(Archive, ATextLengthThatNoTextHasIsDamage) {
    const DamageRow table[] = {
        {"\xFF\xFE\xFF"s + std::string(70000, 'x'), CArchiveException::genericException},
        {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF abc"s, CArchiveException::endOfFile},
        {"\x04"s + "abc", CArchiveException::endOfFile},
        {"\xFF\x04\x00"s + "abc", CArchiveException::endOfFile},
        {"\xFF\xFF\xFF\x04\x00\x00\x00"s + "abc", CArchiveException::endOfFile},
    };
    for (const DamageRow& row : table) {
        CString str("bleibt");
        EXPECT_EQ(archiveCauseOf([&] { loaded(row.bytes, [&](CArchive& ar) { ar >> str; }); }), row.cause);
        EXPECT_EQ(str, "bleibt");
    }
}

// A file that claims to be large without being it.
class LargeFile : public CMemFile {
  public:
    using CMemFile::CMemFile;
    ULONGLONG GetLength() const override { return 1ULL << 40; }
};

TEST(Archive, ATextLongerThanAnyTextIsDamageEvenInAFileThatCouldHoldIt) {
    LargeFile file("\xFF\xFF\xFF\x00\x00\x00\x80", 7);
    CArchive ar(&file, CArchive::load);
    CString str;
    EXPECT_EQ(archiveCauseOf([&] { ar >> str; }), CArchiveException::genericException);
}

// ---- The file below

TEST(Archive, WorksFromTheFilesPositionOnAndLeavesItBehindWhatWasRead) {
    CMemFile file;
    file.Write("Kopf", 4);
    {
        CArchive ar(&file, CArchive::store);
        ar << 4711 << CString("Text");
        ar.Close();
    }
    file.Write("Ende", 4);
    EXPECT_EQ(file.GetLength(), 4U + 4U + 5U + 4U);

    file.Seek(4, CFile::begin);
    CArchive ar(&file, CArchive::load);
    INT nValue = 0;
    ar >> nValue;
    ar.Flush();
    EXPECT_EQ(file.GetPosition(), 8U);
    CString str;
    ar >> str;
    EXPECT_EQ(nValue, 4711);
    EXPECT_EQ(str, "Text");
    ar.Close();
    EXPECT_EQ(file.GetPosition(), 13U);
    char end[5] = {};
    EXPECT_EQ(file.Read(end, 4), 4U);
    EXPECT_STREQ(end, "Ende");
}

TEST(Archive, FlushHandsWhatIsBufferedToTheFile) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    ar << 1;
    EXPECT_EQ(file.GetLength(), 0U);
    ar.Flush();
    EXPECT_EQ(file.GetLength(), 4U);
    ar << 2;
    ar.Close();
    EXPECT_EQ(file.GetLength(), 8U);
}

TEST(Archive, ItsEndWritesWhatIsBuffered) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        ar << 1;
    }
    EXPECT_EQ(file.GetLength(), 4U);
}

TEST(Archive, KnowsItsDirectionAndItsFile) {
    CMemFile file;
    CArchive out(&file, CArchive::store);
    EXPECT_TRUE(out.IsStoring());
    EXPECT_FALSE(out.IsLoading());
    EXPECT_EQ(out.GetFile(), &file);
    CArchive in(&file, CArchive::load);
    EXPECT_TRUE(in.IsLoading());
    EXPECT_FALSE(in.IsStoring());
    in.Close();
    EXPECT_EQ(in.GetFile(), nullptr);
    in.Close();
}

TEST(Archive, ANullFileAndAnUnknownModeAreInvalidArguments) {
    CMemFile file;
    EXPECT_TRUE(throws<CInvalidArgException>([] { CArchive(nullptr, CArchive::load); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { CArchive(&file, 2); }));
}

TEST(Archive, WorksOverAFileOnDisk) {
    const TestFolder folder;
    const std::string path = folder.path("archiv");
    const CString strLong(std::string(10000, 'x'));
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive ar(&file, CArchive::store);
        ar << 4711 << strLong << 2.5;
        ar.Close();
        file.Close();
    }
    CFile file(path.c_str(), CFile::modeRead);
    CArchive ar(&file, CArchive::load);
    INT nValue = 0;
    CString str;
    double dValue = 0;
    ar >> nValue >> str >> dValue;
    EXPECT_EQ(nValue, 4711);
    EXPECT_EQ(str, strLong);
    EXPECT_EQ(dValue, 2.5);
    EXPECT_EQ(archiveCauseOf([&] { ar >> nValue; }), CArchiveException::endOfFile);
    EXPECT_EQ(nValue, 4711);
}

// ---- Wrong direction, failures, the end

void expectEveryReadFails(CArchive& ar, int cause) {
    BYTE byte = 1;
    CHAR character = 'a';
    SHORT nShort = 2;
    INT nInt = 3;
    LONGLONG nLong = 4;
    double dValue = 5;
    CString str("bleibt");
    CObject* pObject = nullptr;
    EXPECT_EQ(archiveCauseOf([&] { ar >> byte; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar >> character; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar >> nShort; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar >> nInt; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar >> nLong; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar >> dValue; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar >> str; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar >> pObject; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar.Read(&nInt, 1); }), cause);
    EXPECT_EQ(byte, 1);
    EXPECT_EQ(character, 'a');
    EXPECT_EQ(nShort, 2);
    EXPECT_EQ(nInt, 3);
    EXPECT_EQ(nLong, 4);
    EXPECT_EQ(dValue, 5);
    EXPECT_EQ(str, "bleibt");
}

void expectEveryWriteFails(CArchive& ar, int cause) {
    const CObject* const pNull = nullptr;
    EXPECT_EQ(archiveCauseOf([&] { ar << BYTE{1}; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar << SHORT{1}; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar << 1; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar << 1.0; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar << CString("x"); }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar << pNull; }), cause);
    EXPECT_EQ(archiveCauseOf([&] { ar.Write("x", 1); }), cause);
}

TEST(Archive, TheWrongDirectionIsRefusedAndLeavesThingsAsTheyAre) {
    CMemFile file;
    CArchive out(&file, CArchive::store);
    out << 1;
    expectEveryReadFails(out, CArchiveException::writeOnly);
    out << 2;
    out.Close();
    EXPECT_EQ(file.GetLength(), 8U);

    file.Seek(0, CFile::begin);
    CArchive in(&file, CArchive::load);
    INT nValue = 0;
    in >> nValue;
    expectEveryWriteFails(in, CArchiveException::readOnly);
    in >> nValue;
    EXPECT_EQ(nValue, 2);
}

TEST(Archive, AfterAFailureEverythingIsRefused) {
    CMemFile file("\1\2", 2);
    CArchive ar(&file, CArchive::load);
    INT nValue = 7;
    EXPECT_EQ(archiveCauseOf([&] { ar >> nValue; }), CArchiveException::endOfFile);
    constexpr int refused = CArchiveException::genericException;
    expectEveryReadFails(ar, refused);
    expectEveryWriteFails(ar, refused);
    EXPECT_EQ(archiveCauseOf([&] { ar.Flush(); }), refused);
    EXPECT_EQ(ar.GetFile(), &file);
    EXPECT_EQ(archiveCauseOf([&] { ar.Close(); }), refused);
    EXPECT_EQ(ar.GetFile(), nullptr);
    EXPECT_EQ(archiveCauseOf([&] { ar.Close(); }), nothingThrown);
    EXPECT_EQ(nValue, 7);
}

TEST(Archive, AfterCloseEverythingIsRefused) {
    CMemFile file("\1\2\3\4", 4);
    CArchive in(&file, CArchive::load);
    in.Close();
    expectEveryReadFails(in, CArchiveException::genericException);
    EXPECT_EQ(archiveCauseOf([&] { in.Flush(); }), CArchiveException::genericException);
    CArchive out(&file, CArchive::store);
    out.Close();
    expectEveryWriteFails(out, CArchiveException::genericException);
    EXPECT_EQ(file.GetLength(), 4U);
}

// A file that takes a number of bytes and no more.
class SmallFile : public CMemFile {
  public:
    explicit SmallFile(ULONGLONG nRoom) : m_nRoom(nRoom) {}
    void Write(const void* lpBuf, UINT nCount) override {
        if (GetPosition() + nCount > m_nRoom) throw new CFileException(CFileException::diskFull);
        CMemFile::Write(lpBuf, nCount);
    }

  private:
    ULONGLONG m_nRoom;
};

int fileCauseOf(void (*body)(CArchive&), CArchive& ar) {
    return frameworktest::causeOf<CFileException>([&] { body(ar); });
}

TEST(Archive, AnErrorOfTheFilePassesAndEndsTheArchivesUse) {
    void (*const operations[])(CArchive&) = {
        [](CArchive& ar) { ar.Flush(); },
        [](CArchive& ar) { ar.Close(); },
        [](CArchive& ar) { ar << CString(std::string(5000, 'x')); },
        [](CArchive& ar) {
            for (int i = 0; i < 2000; ++i)
                ar << i;
        },
    };
    for (const auto operation : operations) {
        SmallFile file(10);
        CArchive ar(&file, CArchive::store);
        ar << LONGLONG{1} << LONGLONG{2};
        EXPECT_EQ(fileCauseOf(operation, ar), CFileException::diskFull);
        EXPECT_EQ(archiveCauseOf([&] { ar << 1; }), CArchiveException::genericException);
    }
}

TEST(Archive, ItsEndIgnoresErrors) {
    SmallFile file(2);
    EXPECT_EQ(caught([&] {
                  CArchive ar(&file, CArchive::store);
                  ar << 1;
              }),
              nullptr);
    EXPECT_EQ(file.GetLength(), 0U);
}

class FileThatThrowsNumbers : public CMemFile {
  public:
    void Write(const void*, UINT) override { throw 4711; }
};

TEST(Archive, ItsEndIgnoresErrorsOfEveryKind) {
    FileThatThrowsNumbers file;
    EXPECT_NO_THROW({
        CArchive ar(&file, CArchive::store);
        ar << 1;
    });
}

// ---- At random

struct Item {
    int kind = 0;
    LONGLONG number = 0;
    std::string text;
};

std::vector<Item> randomItems(std::mt19937_64& random) {
    std::vector<Item> items(random() % 400);
    for (Item& item : items) {
        item.kind = static_cast<int>(random() % 6);
        item.number = static_cast<LONGLONG>(random());
        const std::size_t nLongest = random() % 20 == 0 ? 9000 : 40;
        if (item.kind >= 4) item.text.assign(random() % nLongest, static_cast<char>(random()));
    }
    return items;
}

void store(CArchive& ar, const Item& item) {
    switch (item.kind) {
        case 0:
            ar << static_cast<BYTE>(item.number);
            break;
        case 1:
            ar << static_cast<SHORT>(item.number);
            break;
        case 2:
            ar << static_cast<UINT>(item.number);
            break;
        case 3:
            ar << item.number;
            break;
        case 4:
            ar << CString(item.text);
            break;
        default:
            ar.Write(item.text.data(), item.text.size());
    }
}

template <class T>
void expectNumber(CArchive& ar, LONGLONG nExpected) {
    T value{};
    ar >> value;
    ASSERT_EQ(value, static_cast<T>(nExpected));
}

void expectItem(CArchive& ar, const Item& item) {
    switch (item.kind) {
        case 0:
            return expectNumber<BYTE>(ar, item.number);
        case 1:
            return expectNumber<SHORT>(ar, item.number);
        case 2:
            return expectNumber<UINT>(ar, item.number);
        case 3:
            return expectNumber<LONGLONG>(ar, item.number);
        case 4: {
            CString str;
            ar >> str;
            ASSERT_EQ(str.View(), item.text);
            return;
        }
        default: {
            std::string text(item.text.size(), '#');
            ar.Read(text.data(), text.size());
            ASSERT_EQ(text, item.text);
        }
    }
}

TEST(Archive, WhatWasWrittenIsReadWhereverTheBufferEnds) {
    std::mt19937_64 random(20040301);
    for (int round = 0; round < 100; ++round) {
        const std::vector<Item> items = randomItems(random);
        const std::string bytes = stored([&](CArchive& ar) {
            for (const Item& item : items)
                store(ar, item);
        });
        loaded(bytes, [&](CArchive& ar) {
            for (const Item& item : items)
                ASSERT_NO_FATAL_FAILURE(expectItem(ar, item));
            BYTE byte = 0;
            EXPECT_EQ(archiveCauseOf([&] { ar >> byte; }), CArchiveException::endOfFile);
        });
    }
}

}  // namespace
