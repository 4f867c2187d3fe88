#include <nkfw/Archive.h>
#include <nkfw/File.h>
#include <nkfw/Object.h>

#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

class Artikel : public CObject {
  public:
    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject() { return new Artikel; }
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
};

class Buch : public Artikel {
  public:
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
};

constexpr CRuntimeClass classArtikel{"Artikel", sizeof(Artikel), 1, &Artikel::CreateObject,
                                     &CObject::GetThisClass};
constexpr CRuntimeClass classBuch{"Buch", sizeof(Buch), 1, nullptr, &Artikel::GetThisClass};
constexpr CRuntimeClass classOtherArtikel{"Artikel", sizeof(Artikel), 2, &Artikel::CreateObject,
                                          &CObject::GetThisClass};

const CRuntimeClass* Artikel::GetThisClass() noexcept {
    return &classArtikel;
}
const CRuntimeClass* Buch::GetThisClass() noexcept {
    return &classBuch;
}

using Registration = std::optional<CClassRegistration>;

TEST(RuntimeClass, IsTheSameForTheClassAndItsObjects) {
    EXPECT_EQ(Buch().GetRuntimeClass(), RUNTIME_CLASS(Buch));
    EXPECT_STREQ(RUNTIME_CLASS(Buch)->m_lpszClassName, "Buch");
    const Buch book;
    const CObject& object = book;
    EXPECT_EQ(object.GetRuntimeClass(), RUNTIME_CLASS(Buch));
    EXPECT_EQ(object.CObject::GetRuntimeClass(), RUNTIME_CLASS(CObject));
}

TEST(RuntimeClass, DerivesFromItselfAndFromEveryClassAboveIt) {
    EXPECT_TRUE(RUNTIME_CLASS(Buch)->IsDerivedFrom(RUNTIME_CLASS(Buch)));
    EXPECT_TRUE(RUNTIME_CLASS(Buch)->IsDerivedFrom(RUNTIME_CLASS(Artikel)));
    EXPECT_TRUE(RUNTIME_CLASS(Buch)->IsDerivedFrom(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(RUNTIME_CLASS(Artikel)->IsDerivedFrom(RUNTIME_CLASS(Buch)));
    EXPECT_FALSE(RUNTIME_CLASS(CObject)->IsDerivedFrom(RUNTIME_CLASS(Artikel)));
    EXPECT_FALSE(RUNTIME_CLASS(Buch)->IsDerivedFrom(nullptr));
}

TEST(RuntimeClass, IsToldByItsAddressAndNotByItsName) {
    EXPECT_FALSE(RUNTIME_CLASS(Artikel)->IsDerivedFrom(&classOtherArtikel));
}

TEST(RuntimeClass, AnObjectIsOfItsClassAndOfThoseAboveIt) {
    const Artikel article;
    EXPECT_TRUE(article.IsKindOf(RUNTIME_CLASS(Artikel)));
    EXPECT_TRUE(article.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(article.IsKindOf(RUNTIME_CLASS(Buch)));
}

TEST(RuntimeClass, MakesObjectsOfItsClass) {
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(Artikel)->CreateObject());
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->GetRuntimeClass(), RUNTIME_CLASS(Artikel));
}

TEST(RuntimeClass, MakesNoObjectOfAnAbstractClass) {
    EXPECT_EQ(RUNTIME_CLASS(Buch)->CreateObject(), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(CObject)->CreateObject(), nullptr);
}

TEST(Object, HasNothingToCheckAndNothingToStore) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    Artikel article;
    article.AssertValid();
    article.Serialize(archive);
    archive.Close();
    EXPECT_EQ(file.GetLength(), 0U);
}

TEST(Registry, FindsAClassByNameWhileItsRegistrationLives) {
    EXPECT_EQ(CRuntimeClass::FromName("Artikel"), nullptr);
    {
        const CClassRegistration registration(classArtikel);
        EXPECT_EQ(CRuntimeClass::FromName("Artikel"), &classArtikel);
    }
    EXPECT_EQ(CRuntimeClass::FromName("Artikel"), nullptr);
}

TEST(Registry, FindsNothingForUnknownEmptyAndNullNames) {
    const CClassRegistration registration(classArtikel);
    EXPECT_EQ(CRuntimeClass::FromName("Artike"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("Artikel "), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("artikel"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(""), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(nullptr), nullptr);
}

TEST(Registry, FindsTheLaterOfTwoClassesOfOneName) {
    const CClassRegistration first(classArtikel);
    {
        const CClassRegistration second(classOtherArtikel);
        EXPECT_EQ(CRuntimeClass::FromName("Artikel"), &classOtherArtikel);
    }
    EXPECT_EQ(CRuntimeClass::FromName("Artikel"), &classArtikel);
}

TEST(Registry, RegistrationsEndInAnyOrder) {
    constexpr CRuntimeClass classes[] = {
        {"A", 0, 0, nullptr, nullptr}, {"B", 0, 0, nullptr, nullptr}, {"C", 0, 0, nullptr, nullptr}};
    constexpr int orders[][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (const auto& order : orders) {
        Registration registrations[3];
        for (int i = 0; i < 3; ++i)
            registrations[i].emplace(classes[i]);
        for (const int ended : order) {
            registrations[ended].reset();
            for (int i = 0; i < 3; ++i) {
                const CRuntimeClass* const wanted = registrations[i].has_value() ? &classes[i] : nullptr;
                EXPECT_EQ(CRuntimeClass::FromName(classes[i].m_lpszClassName), wanted);
            }
        }
    }
}

TEST(Registry, TakesRegistrationsFromSeveralThreadsAtATime) {
    constexpr int threads = 4;
    constexpr int registrationsOfAThread = 200;
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back([] {
            for (int n = 0; n < registrationsOfAThread; ++n) {
                const CClassRegistration registration(classBuch);
            }
        });
    }
    const CClassRegistration registration(classArtikel);
    for (std::thread& thread : running)
        thread.join();
    EXPECT_EQ(CRuntimeClass::FromName("Buch"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("Artikel"), &classArtikel);
}

}  // namespace
