#include <nkfw/Archive.h>

#include <memory>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "framework/ArchiveTest.h"
#include "framework/FrameworkTest.h"

namespace {

using namespace std::string_literals;
using frameworktest::archiveCauseOf;
using frameworktest::Blatt;
using frameworktest::Knoten;
using frameworktest::loaded;
using frameworktest::Nodes;
using frameworktest::nothingThrown;
using frameworktest::stored;
using frameworktest::throws;

const std::string newKnoten = "\xFF\xFF\x03\x00\x06\x00Knoten"s;
const std::string newBlatt = "\xFF\xFF\x02\x01\x05\x00"s + "Blatt";

Knoten* node(INT nValue) {
    return new Knoten(nValue);
}

// An object that the archive gives out, taken for a node.
Knoten* readNode(CArchive& ar) {
    CObject* pObject = nullptr;
    ar >> pObject;
    return dynamic_cast<Knoten*>(pObject);
}

// ---- Layout

TEST(ArchiveObjects, NoObjectIsZero) {
    const std::string bytes = stored([](CArchive& ar) { ar << static_cast<const CObject*>(nullptr); });
    EXPECT_EQ(bytes, "\0\0"s);
    loaded(bytes, [](CArchive& ar) { EXPECT_EQ(readNode(ar), nullptr); });
}

TEST(ArchiveObjects, AreWrittenWithTheirClassTheFirstTimeAndItsIndexAfterwards) {
    const Nodes nodes;
    const std::string bytes = stored([](CArchive& ar) {
        Knoten* const pFirst = node(1);
        Blatt* const pLeaf = new Blatt(2);
        pLeaf->m_strName = "Name";
        Knoten* const pSecond = node(3);
        pSecond->m_pNext = pFirst;
        ar << pFirst << pLeaf << pSecond << pFirst << pLeaf << new Blatt(4);
    });
    EXPECT_EQ(bytes, newKnoten + "\1\0\0\0"s + "\0\0\0\0"s +                // class 1, object 2
                         newBlatt + "\2\0\0\0"s + "\0\0\0\0"s + "\4Name" +  // class 3, object 4
                         "\x01\x80"s + "\3\0\0\0"s + "\2\0\0\0"s +          // object 5
                         "\2\0"s + "\4\0"s +                                //
                         "\x03\x80"s + "\4\0\0\0"s + "\0\0\0\0\0"s);        // object 6
}

TEST(ArchiveObjects, ComeBackWithTheirClassesAndContents) {
    const Nodes nodes;
    const std::string bytes =
        newBlatt + "\2\0\0\0"s + "\0\0\0\0"s + "\4Name" + newKnoten + "\1\0\0\0"s + "\2\0"s + "\0\0"s;
    loaded(bytes, [](CArchive& ar) {
        Knoten* const pLeaf = readNode(ar);
        Knoten* const pNode = readNode(ar);
        ASSERT_NE(pLeaf, nullptr);
        ASSERT_NE(pNode, nullptr);
        EXPECT_EQ(pLeaf->GetRuntimeClass(), RUNTIME_CLASS(Blatt));
        EXPECT_EQ(pLeaf->m_nValue, 2);
        EXPECT_EQ(static_cast<Blatt*>(pLeaf)->m_strName, "Name");
        EXPECT_EQ(pNode->GetRuntimeClass(), RUNTIME_CLASS(Knoten));
        EXPECT_EQ(pNode->m_pNext, pLeaf);
        EXPECT_EQ(pNode->m_pOther, nullptr);
    });
}

TEST(ArchiveObjects, SharedObjectsAndCyclesKeepTheirShape) {
    const Nodes nodes;
    const std::string bytes = stored([](CArchive& ar) {
        Knoten* const pFirst = node(1);
        Knoten* const pSecond = node(2);
        pFirst->m_pNext = pSecond;
        pFirst->m_pOther = pFirst;
        pSecond->m_pNext = pFirst;
        pSecond->m_pOther = pSecond;
        ar << pFirst << pSecond;
    });
    loaded(bytes, [](CArchive& ar) {
        Knoten* const pFirst = readNode(ar);
        Knoten* const pSecond = readNode(ar);
        ASSERT_NE(pFirst, nullptr);
        EXPECT_EQ(pFirst->m_pNext, pSecond);
        EXPECT_EQ(pFirst->m_pOther, pFirst);
        EXPECT_EQ(pSecond->m_pNext, pFirst);
        EXPECT_EQ(pSecond->m_pOther, pSecond);
    });
}

TEST(ArchiveObjects, TellTheSchemaTheyWereWrittenWithWhileTheyAreRead) {
    const Nodes nodes;
    const std::string bytes = stored([](CArchive& ar) {
        Knoten* const pOuter = node(1);
        pOuter->m_pNext = new Blatt(2);
        ar << pOuter;
    });
    loaded(bytes, [](CArchive& ar) {
        EXPECT_EQ(ar.GetObjectSchema(), 0U);
        const Knoten* const pOuter = readNode(ar);
        EXPECT_EQ(pOuter->m_nSchemaRead, 3U);
        EXPECT_EQ(pOuter->m_pNext->m_nSchemaRead, 0x102U);
        EXPECT_EQ(ar.GetObjectSchema(), 0U);
    });
}

// ---- Classes

TEST(ArchiveObjects, AreReadAsTheClassWantedOrOneDerivedFromIt) {
    const Nodes nodes;
    const std::string twice = stored([](CArchive& ar) {
        Blatt* const pLeaf = new Blatt(1);
        ar << pLeaf << pLeaf;
    });
    for (const CRuntimeClass* const pWanted :
         {RUNTIME_CLASS(Blatt), RUNTIME_CLASS(Knoten), RUNTIME_CLASS(CObject)}) {
        loaded(twice, [&](CArchive& ar) {
            const CObject* const pLeaf = ar.ReadObject(pWanted);
            EXPECT_NE(pLeaf, nullptr);
            EXPECT_EQ(ar.ReadObject(pWanted), pLeaf);
        });
    }
}

TEST(ArchiveObjects, AnObjectOfAnotherClassThanWantedIsRefused) {
    const Nodes nodes;
    const std::string bytes = stored([](CArchive& ar) {
        Knoten* const pNode = node(1);
        ar << pNode << pNode << node(2);
    });
    const CRuntimeClass* const pWanted = RUNTIME_CLASS(Blatt);
    const auto causeAfter = [&](int nReadBefore) {
        int cause = nothingThrown;
        loaded(bytes, [&](CArchive& ar) {
            for (int i = 0; i < nReadBefore; ++i)
                readNode(ar);
            cause = archiveCauseOf([&] { ar.ReadObject(pWanted); });
        });
        return cause;
    };
    EXPECT_EQ(causeAfter(0), CArchiveException::badClass);  // a new one
    EXPECT_EQ(causeAfter(1), CArchiveException::badClass);  // one met before
    EXPECT_EQ(causeAfter(2), CArchiveException::badClass);  // a new one of a class met before
}

TEST(ArchiveObjects, NullIsAnObjectOfEveryClass) {
    loaded("\0\0"s, [](CArchive& ar) { EXPECT_EQ(ar.ReadObject(RUNTIME_CLASS(Blatt)), nullptr); });
}

struct DamageRow {
    std::string bytes;
    int cause;
};

TEST(ArchiveObjects, ARecordThatStandsForNothingIsRefused) {
    const std::string contents = "\1\0\0\0\0\0\0\0"s;
    const std::string one = newKnoten + contents;
    const DamageRow table[] = {
        {"\1\0"s, CArchiveException::badIndex},
        {"\1\x80"s, CArchiveException::badIndex},
        {one + "\3\0"s, CArchiveException::badIndex},
        {one + "\3\x80"s, CArchiveException::badIndex},
        {one + "\1\0"s, CArchiveException::badIndex},      // the class as an object
        {one + "\2\x80"s, CArchiveException::badIndex},    // the object as a class
        {one + "\x00\x80"s, CArchiveException::badIndex},  // the class 0
        {one + "\xFF\x7F\0\0\0\0"s, CArchiveException::badIndex},
        {one + "\xFF\x7F\0\0\0\x80"s, CArchiveException::badIndex},
        {one + "\xFF\x7F\xFF\xFF\xFF\x7F"s, CArchiveException::badIndex},
        {one + "\xFF\x7F\1\0"s, CArchiveException::endOfFile},
        {"\xFF\xFF\x03\x00\x06\x00Knotex"s + contents, CArchiveException::badClass},
        {"\xFF\xFF\x03\x00\x05\x00Knoten"s + contents, CArchiveException::badClass},
        {"\xFF\xFF\x03\x00\x07\x00Knoten\0"s + contents, CArchiveException::badClass},
        {"\xFF\xFF\x03\x00\x00\x00"s + contents, CArchiveException::badClass},
        {"\xFF\xFF\x03\x00\x40\x00"s + std::string(64, 'x'), CArchiveException::badClass},
        {"\xFF\xFF\x03\x00\xFF\xFF"s + std::string(70000, 'x'), CArchiveException::badClass},
        {"\xFF\xFF\x04\x00\x06\x00Knoten"s + contents, CArchiveException::badSchema},
        {"\xFF\xFF\x03\x01\x06\x00Knoten"s + contents, CArchiveException::badSchema},
        {"\xFF\xFF\x03\x00\x06\x00Knot"s, CArchiveException::endOfFile},
    };
    for (const DamageRow& row : table) {
        const Nodes nodes;
        int cause = nothingThrown;
        loaded(row.bytes, [&](CArchive& ar) {
            cause = archiveCauseOf([&] {
                readNode(ar);
                readNode(ar);
            });
            EXPECT_EQ(archiveCauseOf([&] { readNode(ar); }), CArchiveException::genericException);
        });
        EXPECT_EQ(cause, row.cause) << testing::PrintToString(row.bytes.substr(0, 40));
    }
}

TEST(ArchiveObjects, TheLongFormOfAnIndexStandsForTheSame) {
    const Nodes nodes;
    const std::string bytes =
        newKnoten + "\1\0\0\0\0\0\0\0"s + "\xFF\x7F\2\0\0\0"s + "\xFF\x7F\1\0\0\x80"s + "\5\0\0\0\0\0\0\0"s;
    loaded(bytes, [](CArchive& ar) {
        Knoten* const pFirst = readNode(ar);
        EXPECT_EQ(readNode(ar), pFirst);
        Knoten* const pSecond = readNode(ar);
        EXPECT_NE(pSecond, pFirst);
        EXPECT_EQ(pSecond->m_nValue, 5);
    });
}

// Objects of a class that is given with them.
class Beliebig : public CObject {
  public:
    explicit Beliebig(const CRuntimeClass* pClass) : m_pClass(pClass) {}
    const CRuntimeClass* GetRuntimeClass() const override { return m_pClass; }
    static CObject* CreateObject() { return nullptr; }

  private:
    const CRuntimeClass* m_pClass;
};

int causeOfStoring(const CRuntimeClass& rClass, bool fRegistered = true) {
    std::optional<CClassRegistration> registration;
    if (fRegistered) registration.emplace(rClass);
    return archiveCauseOf([&] {
        stored([&](CArchive& ar) {
            const Beliebig object(&rClass);
            ar << &object;
        });
    });
}

TEST(ArchiveObjects, AClassThatWouldNotComeBackIsNotWritten) {
    static const std::string longest(63, 'x');
    static const std::string tooLong(64, 'x');
    const auto classOf = [](LPCSTR lpszName, UINT nSchema = 1, bool fAbstract = false) {
        return CRuntimeClass{lpszName, sizeof(Beliebig), nSchema,
                             fAbstract ? nullptr : &Beliebig::CreateObject, &CObject::GetThisClass};
    };
    constexpr int refused = CArchiveException::badClass;
    EXPECT_EQ(causeOfStoring(classOf("Beliebig")), nothingThrown);
    EXPECT_EQ(causeOfStoring(classOf("Beliebig"), false), refused);
    EXPECT_EQ(causeOfStoring(classOf("Beliebig", 1, true)), refused);
    EXPECT_EQ(causeOfStoring(classOf("")), refused);
    EXPECT_EQ(causeOfStoring(classOf(longest.c_str())), nothingThrown);
    EXPECT_EQ(causeOfStoring(classOf(tooLong.c_str())), refused);
    EXPECT_EQ(causeOfStoring(classOf("Beliebig", 0xFFFF)), nothingThrown);
    EXPECT_EQ(causeOfStoring(classOf("Beliebig", 0x10000)), refused);
    // Another class took the name later.
    const CRuntimeClass hidden = classOf("Knoten");
    const CClassRegistration registrationHidden(hidden);
    const CClassRegistration registrationAgain(frameworktest::classKnoten);
    EXPECT_EQ(causeOfStoring(hidden, false), refused);
    EXPECT_EQ(causeOfStoring(RUNTIME_CLASS(CObject)[0], false), refused);
}

TEST(ArchiveObjects, AClassThatMakesNoObjectOrIsAbstractIsNotRead) {
    const CRuntimeClass makesNone{"Beliebig", 0, 1, &Beliebig::CreateObject, &CObject::GetThisClass};
    const CRuntimeClass abstract{"Abstrakt", 0, 1, nullptr, &CObject::GetThisClass};
    const CClassRegistration first(makesNone);
    const CClassRegistration second(abstract);
    for (const std::string& bytes :
         {"\xFF\xFF\x01\x00\x08\x00"s + "Beliebig", "\xFF\xFF\x01\x00\x08\x00"s + "Abstrakt"}) {
        loaded(bytes, [](CArchive& ar) {
            EXPECT_EQ(archiveCauseOf([&] { readNode(ar); }), CArchiveException::badClass);
        });
    }
}

// ---- Depth and number

// The first of nLength nodes, each of which holds the next.
Knoten* chain(UINT nLength) {
    Knoten* pFirst = nullptr;
    for (UINT i = 0; i < nLength; ++i) {
        Knoten* const pNode = node(static_cast<INT>(i));
        pNode->m_pNext = pFirst;
        pFirst = pNode;
    }
    return pFirst;
}

TEST(ArchiveObjects, LieWithinEachOtherUpToTheGreatestDepth) {
    const Nodes nodes;
    const std::string bytes = stored([](CArchive& ar) { ar << chain(CArchive::nMaxDepth); });
    loaded(bytes, [](CArchive& ar) {
        UINT nDepth = 0;
        for (const Knoten* pNode = readNode(ar); pNode != nullptr; pNode = pNode->m_pNext)
            ++nDepth;
        EXPECT_EQ(nDepth, CArchive::nMaxDepth);
    });
    EXPECT_EQ(archiveCauseOf([] { stored([](CArchive& ar) { ar << chain(CArchive::nMaxDepth + 1); }); }),
              CArchiveException::genericException);
}

TEST(ArchiveObjects, AnArchiveThatGoesDeeperIsDamaged) {
    const Nodes nodes;
    std::string bytes = newKnoten + "\1\0\0\0"s;
    for (UINT i = 0; i < 100000; ++i)
        bytes += "\x01\x80\1\0\0\0"s;
    loaded(bytes, [](CArchive& ar) {
        EXPECT_EQ(archiveCauseOf([&] { readNode(ar); }), CArchiveException::genericException);
    });
    EXPECT_EQ(Knoten::living(), 0U);
}

TEST(ArchiveObjects, FromIndex32767OnTheLongFormIsWritten) {
    const Nodes nodes;
    // Class 1 and objects 2 to 32768, then class 32769 and its objects.
    constexpr INT nNodes = 32767;
    std::vector<Knoten*> all;
    for (INT i = 0; i < nNodes; ++i)
        all.push_back(node(i));
    const std::string contents = "\7\0\0\0\0\0\0\0\0"s;
    const std::string expectedEnd = "\xFE\x7F"s +                // the object 32766
                                    "\xFF\x7F\xFF\x7F\0\0"s +    // the object 32767
                                    "\xFF\x7F\x00\x80\0\0"s +    // the object 32768
                                    newBlatt + contents +        // the class 32769 with the object 32770
                                    "\xFF\x7F\x01\x80\0\x80"s +  // an object of the class 32769
                                    contents + "\x01\x80"s +     // an object of the class 1
                                    contents.substr(0, 8) +      //
                                    "\xFF\x7F\x02\x80\0\0"s;     // the object 32770
    const std::string bytes = stored([&](CArchive& ar) {
        for (const Knoten* const pNode : all)
            ar << pNode;
        Blatt* const pLeaf = new Blatt(7);
        ar << all[32764] << all[32765] << all[32766] << pLeaf << new Blatt(7) << node(7) << pLeaf;
    });
    ASSERT_GT(bytes.size(), expectedEnd.size());
    EXPECT_EQ(bytes.substr(bytes.size() - expectedEnd.size()), expectedEnd);

    loaded(bytes, [&](CArchive& ar) {
        std::vector<Knoten*> read;
        for (INT i = 0; i < nNodes; ++i) {
            read.push_back(readNode(ar));
            ASSERT_EQ(read.back()->m_nValue, i);
        }
        EXPECT_EQ(readNode(ar), read[32764]);
        EXPECT_EQ(readNode(ar), read[32765]);
        EXPECT_EQ(readNode(ar), read[32766]);
        Knoten* const pLeaf = readNode(ar);
        EXPECT_EQ(pLeaf->GetRuntimeClass(), RUNTIME_CLASS(Blatt));
        EXPECT_EQ(readNode(ar)->GetRuntimeClass(), RUNTIME_CLASS(Blatt));
        EXPECT_EQ(readNode(ar)->GetRuntimeClass(), RUNTIME_CLASS(Knoten));
        EXPECT_EQ(readNode(ar), pLeaf);
    });
}

// ---- Failures inside an object

class Versager : public CObject {
  public:
    enum class Failure { none, number, memory, framework };

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject() { return new Versager; }
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void Serialize(CArchive&) override {
        switch (s_failure) {
            case Failure::number:
                throw 4711;
            case Failure::memory:
                throw std::bad_alloc();
            case Failure::framework:
                throw new CUserException;
            case Failure::none:
                break;
        }
    }
    static inline Failure s_failure = Failure::none;
};
constexpr CRuntimeClass classVersager{"Versager", sizeof(Versager), 1, &Versager::CreateObject,
                                      &CObject::GetThisClass};
const CClassRegistration registrationVersager{classVersager};
const CRuntimeClass* Versager::GetThisClass() noexcept {
    return &classVersager;
}

template <class Body>
std::string nameOfWhatIsThrown(Body body) {
    try {
        body();
    } catch (int) {
        return "number";
    } catch (CException* pException) {
        const std::string name = pException->GetRuntimeClass()->m_lpszClassName;
        pException->Delete();
        return name;
    }
    return "nothing";
}

struct FailureRow {
    Versager::Failure failure;
    std::string name;
};

TEST(ArchiveObjects, WhatAnObjectThrowsPassesAndEndsTheArchivesUse) {
    Versager::s_failure = Versager::Failure::none;
    const std::string bytes = stored([](CArchive& ar) {
        const Versager object;
        ar << &object;
    });
    const FailureRow table[] = {
        {Versager::Failure::number, "number"},
        {Versager::Failure::memory, "CMemoryException"},
        {Versager::Failure::framework, "CUserException"},
    };
    for (const FailureRow& row : table) {
        Versager::s_failure = row.failure;
        CMemFile file;
        CArchive out(&file, CArchive::store);
        const Versager object;
        EXPECT_EQ(nameOfWhatIsThrown([&] { out << &object; }), row.name);
        EXPECT_EQ(archiveCauseOf([&] { out << 1; }), CArchiveException::genericException);
        loaded(bytes, [&](CArchive& in) {
            CObject* pObject = nullptr;
            EXPECT_EQ(nameOfWhatIsThrown([&] { in >> pObject; }), row.name);
            EXPECT_EQ(pObject, nullptr);
            EXPECT_EQ(archiveCauseOf([&] { in >> pObject; }), CArchiveException::genericException);
        });
    }
    Versager::s_failure = Versager::Failure::none;
}

// ---- At random

TEST(ArchiveObjects, RandomGraphsKeepTheirShape) {
    std::mt19937 random(20031124);
    for (int round = 0; round < 100; ++round) {
        const Nodes nodes;
        const std::size_t nCount = 1 + random() % 60;
        std::vector<Knoten*> all;
        for (std::size_t i = 0; i < nCount; ++i)
            all.push_back(random() % 3 == 0 ? new Blatt(static_cast<INT>(i)) : node(static_cast<INT>(i)));
        for (Knoten* const pNode : all) {
            if (random() % 4 != 0) pNode->m_pNext = all[random() % nCount];
            if (random() % 4 != 0) pNode->m_pOther = all[random() % nCount];
        }
        const std::string bytes = stored([&](CArchive& ar) {
            for (const Knoten* const pNode : all)
                ar << pNode;
        });
        loaded(bytes, [&](CArchive& ar) {
            std::vector<Knoten*> read;
            for (std::size_t i = 0; i < nCount; ++i)
                read.push_back(readNode(ar));
            const auto twinOf = [&](const Knoten* pNode) {
                return pNode != nullptr ? read[static_cast<std::size_t>(pNode->m_nValue)] : nullptr;
            };
            for (std::size_t i = 0; i < nCount; ++i) {
                ASSERT_EQ(read[i]->m_nValue, all[i]->m_nValue);
                ASSERT_EQ(read[i]->GetRuntimeClass(), all[i]->GetRuntimeClass());
                ASSERT_EQ(read[i]->m_pNext, twinOf(all[i]->m_pNext));
                ASSERT_EQ(read[i]->m_pOther, twinOf(all[i]->m_pOther));
            }
        });
    }
}

}  // namespace
