// Damaged archives: every prefix and every change of a single byte gives a value or an exception, never a
// crash, never more memory than the archive could hold, and a value that could not be loaded is as it was.

#include <nkdt/NkDt.h>
#include <nkfw/Memory.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ValueTesting.h"
#include "support/Instruments.h"

namespace {

using namespace valuetest;

// The largest request for memory of a scope.
class LargestRequest {
  public:
    LargestRequest() {
        largest = 0;
        nkfw::setAllocationProbe([](std::size_t bytes) noexcept {
            if (bytes > largest) largest = bytes;
            return true;
        });
    }
    ~LargestRequest() { nkfw::setAllocationProbe(nullptr); }
    LargestRequest(const LargestRequest&) = delete;
    LargestRequest& operator=(const LargestRequest&) = delete;
    static std::size_t bytes() { return largest; }

  private:
    static inline std::size_t largest = 0;
};

// A text may be held a few times over while it is read, and an error takes its own size.
std::size_t allowedFor(const Bytes& archive) {
    return 2 * archive.size() + NkEhBasis::nMaxSize;
}

/// Every prefix of the archive, and every archive that differs from it in one byte; under valgrind one in 17
/// of these.
void forEachDamaged(const Bytes& whole, const std::function<void(const Bytes&)>& body) {
    for (std::size_t length = 0; length < whole.size(); ++length)
        body(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        Bytes damaged = whole;
        for (int change = 1; change < 256; change += nktest::isUnderValgrind() ? 17 : 1) {
            damaged[at] = static_cast<BYTE>(whole[at] ^ change);
            body(damaged);
        }
    }
}

template <class Value>
class ArchiveFault : public ::testing::Test {
  protected:
    static std::vector<Bytes> samples() {
        std::vector<Bytes> archives;
        for (Value value :
             {Sample<Value>::one(), Sample<Value>::other(), Sample<Value>::empty(), Value(NkDtWmNull)})
            archives.push_back(stored(value));
        return archives;
    }
};
TYPED_TEST_SUITE(ArchiveFault, ValueClasses, ClassNames);

// TRUE if the value could be loaded. A decimal is archived as a text, which it may refuse.
template <class Value>
bool loads(Value& value, const Bytes& bytes) {
    try {
        load(value, bytes);
    } catch (CArchiveException* exception) {
        exception->Delete();
        return false;
    } catch (NkEhBasis* error) {
        const ErrorPtr owner(error);
        EXPECT_EQ(error->GetErrorNumber(), NkDtErrFolgefehler) << error->Report().GetString();
        return false;
    }
    return true;
}

// What must hold of a value whatever it was loaded from: it can be copied, shown, and given another value.
template <class Value>
void expectSound(Value& value) {
    const Value copy(value);
    EXPECT_EQ(textOf(copy), textOf(value));
    EXPECT_EQ(stateOf(copy), stateOf(value));
    Value back;
    load(back, stored(value));
    EXPECT_EQ(textOf(back), textOf(value));
    EXPECT_EQ(back.IsDefined(), value.IsDefined());
    value = Sample<Value>::one();
    EXPECT_EQ(textOf(value), Sample<Value>::oneText);
}

TYPED_TEST(ArchiveFault, GivesAValueOrAnExceptionAndThenTheValueIsAsItWas) {
    std::size_t loaded = 0;
    std::size_t refused = 0;
    TypeParam modified(NkDtWmMissing);
    modified = Sample<TypeParam>::other();
    for (const TypeParam& target : {TypeParam(NkDtWmNull), Sample<TypeParam>::other(), modified}) {
        for (const Bytes& whole : this->samples()) {
            forEachDamaged(whole, [&](const Bytes& damaged) {
                TypeParam value(target);
                std::size_t largest = 0;
                bool complete = false;
                {
                    const LargestRequest requests;
                    complete = loads(value, damaged);
                    largest = requests.bytes();
                }
                EXPECT_LE(largest, allowedFor(damaged));
                ++(complete ? loaded : refused);
                if (complete) {
                    expectSound(value);
                } else {
                    EXPECT_EQ(textOf(value), textOf(target));
                    EXPECT_EQ(stateOf(value), stateOf(target));
                }
            });
        }
    }
    EXPECT_GT(loaded, 0U);
    EXPECT_GT(refused, 0U);
}

TYPED_TEST(ArchiveFault, RefusesEveryPrefix) {
    for (const Bytes& whole : this->samples()) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            TypeParam value = Sample<TypeParam>::one();
            const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            EXPECT_FALSE(loads(value, prefix));
            EXPECT_EQ(describe(value), describe(Sample<TypeParam>::one()));
        }
    }
}

// The objects of an archive, each once.
class Objects {
  public:
    explicit Objects(const Bytes& bytes) {
        reading(bytes, [&](CArchive& archive) {
            try {
                for (int i = 0; i < 5; ++i) {
                    CObject* object = nullptr;
                    archive >> object;
                    adopt(object);
                }
                m_complete = true;
            } catch (CArchiveException* exception) {
                exception->Delete();
            }
        });
    }
    bool complete() const { return m_complete; }
    const std::vector<std::unique_ptr<CObject>>& all() const { return m_objects; }

  private:
    // An archive gives the same object out again where it was written again.
    void adopt(CObject* object) {
        if (object == nullptr) return;
        for (const auto& each : m_objects) {
            if (each.get() == object) return;
        }
        m_objects.emplace_back(object);
    }

    std::vector<std::unique_ptr<CObject>> m_objects;
    bool m_complete = false;
};

TEST(ObjectArchiveFault, GivesObjectsOfKnownClassesOrAnException) {
    const NkDtLong number(17);
    const NkDtShort small(-3);
    const NkDtString text("M\xFCller");
    const Bytes whole = written([&](CArchive& archive) {
        archive << &number << &small << &text << static_cast<const CObject*>(nullptr) << &number;
    });
    const Objects undamaged(whole);
    ASSERT_TRUE(undamaged.complete());
    ASSERT_EQ(undamaged.all().size(), 3U);

    std::size_t complete = 0;
    std::size_t refused = 0;
    forEachDamaged(whole, [&](const Bytes& damaged) {
        std::size_t largest = 0;
        {
            const LargestRequest requests;
            const Objects objects(damaged);
            largest = requests.bytes();
            ++(objects.complete() ? complete : refused);
            for (const auto& object : objects.all()) {
                auto* const value = dynamic_cast<NkDtBasis*>(object.get());
                ASSERT_NE(value, nullptr);
                const std::unique_ptr<NkDtBasis> copy(value->NewObject());
                EXPECT_EQ(copy->IsDefined(), value->IsDefined());
            }
        }
        EXPECT_LE(largest, allowedFor(damaged));
    });
    EXPECT_GT(complete, 0U);
    EXPECT_GT(refused, 0U);
}

TEST(TextArchiveFault, RefusesALengthThatTheArchiveDoesNotHaveWithoutAskingForIt) {
    const Bytes lengths[] = {
        {1, 0, 0, 0, 200},                                       // one byte
        {1, 0, 0, 0, 0xFF, 0xFD, 0xFF},                          // 16 bits
        {1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F},  // 32 bits: 2147483647
        {1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},  // 4294967295
        {1, 0, 0, 0, 0xFF, 0xFE, 0xFF},                          // no length at all
    };
    for (const Bytes& bytes : lengths) {
        NkDtString text("abc");
        std::size_t largest = 0;
        {
            const LargestRequest requests;
            EXPECT_FALSE(loads(text, bytes));
            largest = requests.bytes();
        }
        EXPECT_LE(largest, allowedFor(bytes));
        EXPECT_EQ(describe(text), "'abc' 3/3 defined");
    }
}

}  // namespace
