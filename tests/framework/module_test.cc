#include <nkfw/Module.h>

#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace {

using nkfw::ExtensionModule;

ExtensionModule module;

// The library under test is a module too, and counts.
const std::size_t modulesBefore = ExtensionModule::count();

TEST(Module, IsRegisteredFromInitializeToTerminate) {
    EXPECT_FALSE(module.isRegistered());
    EXPECT_TRUE(module.initialize(&module));
    EXPECT_TRUE(module.isRegistered());
    EXPECT_EQ(ExtensionModule::count(), modulesBefore + 1);
    module.terminate();
    EXPECT_FALSE(module.isRegistered());
    EXPECT_EQ(ExtensionModule::count(), modulesBefore);
}

TEST(Module, RegistersOnceOnly) {
    EXPECT_TRUE(module.initialize(&module));
    const std::string name = module.fileName();
    EXPECT_FALSE(module.initialize(nullptr));
    EXPECT_EQ(module.fileName(), name);
    EXPECT_EQ(ExtensionModule::count(), modulesBefore + 1);
    module.terminate();
    module.terminate();
    EXPECT_EQ(ExtensionModule::count(), modulesBefore);
}

TEST(Module, KnowsTheFileThatHoldsTheAddress) {
    EXPECT_STREQ(module.fileName(), "");
    ASSERT_TRUE(module.initialize(&module));
    EXPECT_EQ(std::filesystem::path(module.fileName()).filename(),
              std::filesystem::path(program_invocation_name).filename());
    EXPECT_LE(std::strlen(module.fileName()), nkfw::maxModuleFileName);
    module.terminate();
    EXPECT_STREQ(module.fileName(), "");
}

TEST(Module, HasNoFileNameForAnAddressThatBelongsToNone) {
    ASSERT_TRUE(module.initialize(nullptr));
    EXPECT_TRUE(module.isRegistered());
    EXPECT_STREQ(module.fileName(), "");
    module.terminate();
}

TEST(Module, SeveralModulesAreCounted) {
    ExtensionModule second;
    ASSERT_TRUE(module.initialize(&module));
    ASSERT_TRUE(second.initialize(&module));
    EXPECT_EQ(ExtensionModule::count(), modulesBefore + 2);
    module.terminate();
    EXPECT_EQ(ExtensionModule::count(), modulesBefore + 1);
    EXPECT_TRUE(second.isRegistered());
    second.terminate();
}

// The system knows a program by the name it was started with: this test starts itself again under a name that
// is too long, and checks there.
TEST(Module, CutsAFileNameLongerThan260Bytes) {
    const std::string longName = '/' + std::string(299, 'x');
    if (longName == program_invocation_name) {
        ASSERT_TRUE(module.initialize(&module));
        EXPECT_EQ(module.fileName(), longName.substr(0, 260));
        module.terminate();
        return;
    }
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    std::string name = longName;
    std::string filter = "--gtest_filter=Module.CutsAFileNameLongerThan260Bytes";
    std::string output = "--gtest_output=";
    char* const arguments[] = {name.data(), filter.data(), output.data(), nullptr};
    pid_t child = 0;
    ASSERT_EQ(::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ), 0);
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "status " << status;
}

}  // namespace
