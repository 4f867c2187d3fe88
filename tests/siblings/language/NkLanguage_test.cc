#include <nkfw/Exception.h>
#include <nklang/NkLanguagePublisher.h>
#include <nklang/NkLanguageResManager.h>

#include <gtest/gtest.h>

#include "support/FrameworkExceptions.h"

using frameworktest::throws;

namespace {

// Sets the publisher's module and takes the one before back at its end.
class PublishedModule {
  public:
    explicit PublishedModule(const NkLanguageModule* module)
        : m_before(NkLanguagePublisher::Instance()->SetLangDependentResource(module)) {}
    ~PublishedModule() { NkLanguagePublisher::Instance()->SetLangDependentResource(m_before); }
    PublishedModule(const PublishedModule&) = delete;
    PublishedModule& operator=(const PublishedModule&) = delete;

    const NkLanguageModule* before() const { return m_before; }

  private:
    const NkLanguageModule* m_before;
};

const NkLanguageModule* german() {
    return NkLanguagePublisher::GetModule(usNkLangDeutsch);
}
const NkLanguageModule* english() {
    return NkLanguagePublisher::GetModule(usNkLangEnglisch);
}

TEST(NkLanguagePublisher, IsOneForTheProcess) {
    ASSERT_NE(NkLanguagePublisher::Instance(), nullptr);
    EXPECT_EQ(NkLanguagePublisher::Instance(), NkLanguagePublisher::Instance());
}

TEST(NkLanguagePublisher, StartsWithTheGermanModule) {
    ASSERT_NE(german(), nullptr);
    EXPECT_EQ(NkLanguagePublisher::Instance()->GetLangDependentResource(), german());
}

TEST(NkLanguagePublisher, KnowsGermanAndEnglishOnly) {
    ASSERT_NE(english(), nullptr);
    EXPECT_NE(german(), english());
    EXPECT_EQ(german()->GetLanguage(), 1031);
    EXPECT_EQ(english()->GetLanguage(), 1033);
    EXPECT_EQ(NkLanguagePublisher::GetModule(1036), nullptr);
    EXPECT_EQ(NkLanguagePublisher::GetModule(0), nullptr);
}

TEST(NkLanguagePublisher, SetsTheModuleAndTellsTheOneBefore) {
    const PublishedModule published(english());
    EXPECT_EQ(published.before(), german());
    EXPECT_EQ(NkLanguagePublisher::Instance()->GetLangDependentResource(), english());
}

TEST(NkLanguagePublisher, TellsTheModulesName) {
    const PublishedModule published(english());
    EXPECT_STREQ(NkLanguagePublisher::Instance()->GetLangDependentResourceName(), english()->GetName());
    EXPECT_STRNE(english()->GetName(), german()->GetName());
    EXPECT_STRNE(english()->GetName(), "");
}

TEST(NkLanguagePublisher, RaisesWithoutAModule) {
    const PublishedModule published(nullptr);
    EXPECT_EQ(NkLanguagePublisher::Instance()->GetLangDependentResource(), nullptr);
    EXPECT_TRUE(throws<CInvalidArgException>(
        [] { NkLanguagePublisher::Instance()->GetLangDependentResourceName(); }));
}

TEST(NkLanguagePublisher, TakesAnApplicationsOwnModule) {
    static constexpr NkLanguageModule::Entry texts[] = {{uNkLangWahr, "Oui"}, {uNkLangFalsch, "Non"}};
    static constexpr NkLanguageModule french("franz", 1036, texts, 2);
    const PublishedModule published(&french);
    EXPECT_STREQ(NkLanguagePublisher::Instance()->GetLangDependentResourceName(), "franz");
    EXPECT_STREQ(NkLanguagePublisher::Instance()->GetLangDependentResource()->GetText(3206), "Oui");
    EXPECT_EQ(NkLanguagePublisher::Instance()->GetLangDependentResource()->GetText(371), nullptr);
}

TEST(NkLanguageModule, HoldsItsLanguagesTexts) {
    struct Case {
        UINT id;
        LPCTSTR german;
        LPCTSTR english;
    };
    const Case cases[] = {
        {371, "Der Wert konnte nicht verarbeitet werden.", "The value could not be processed."},
        {372, "Fehler", "Error"},
        {3206, "Ja", "Yes"},
        {3207, "Nein", "No"}};
    for (const Case& c : cases) {
        EXPECT_STREQ(german()->GetText(c.id), c.german);
        EXPECT_STREQ(english()->GetText(c.id), c.english);
    }
}

TEST(NkLanguageModule, HasNoTextForOtherIds) {
    for (const UINT id : {0U, 370U, 373U, 3205U, 3208U, 0xFFFFFFFFU}) {
        EXPECT_EQ(german()->GetText(id), nullptr) << id;
        EXPECT_EQ(english()->GetText(id), nullptr) << id;
    }
}

TEST(NkLanguageResManager, LoadsFromItsModule) {
    const NkLanguageResManager resources(english());
    EXPECT_STREQ(resources.LoadString(uNkLangWahr), "Yes");
    EXPECT_STREQ(resources.FindString(uNkLangFalsch), "No");
}

TEST(NkLanguageResManager, LoadsGermanTextsWithoutAModule) {
    const PublishedModule published(nullptr);
    const NkLanguageResManager resources(NkLanguagePublisher::Instance()->GetLangDependentResource());
    EXPECT_STREQ(resources.LoadString(uNkLangWahr), "Ja");
    EXPECT_STREQ(resources.LoadString(uNkLangFalsch), "Nein");
}

TEST(NkLanguageResManager, LoadsAnEmptyTextForAnUnknownId) {
    const NkLanguageResManager resources(german());
    EXPECT_STREQ(resources.LoadString(1), "");
    EXPECT_EQ(resources.FindString(1), nullptr);
}

TEST(NkLanguageResManager, KeepsItsModuleWhenThePublisherChanges) {
    const NkLanguageResManager resources(NkLanguagePublisher::Instance()->GetLangDependentResource());
    const PublishedModule published(english());
    EXPECT_STREQ(resources.LoadString(uNkLangWahr), "Ja");
}

}  // namespace
