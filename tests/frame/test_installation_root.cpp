#include "FrameTestSupport.h"

#include <vorn/lib/private/InstallationRoot.h>

#include <gtest/gtest.h>

#include <string>

using vorn::test::ScopedEnvironment;
using vorn::tools::logging::InstallationRoot;

namespace {

// Writes paths with '/' and turns them into the platform's separators.
std::string native(std::string path)
{
    for (char& c : path) {
        if (c == '/')
            c = vorn::test::pathSeparator();
    }
    return path;
}

std::string rootOf(const std::string& modulePath)
{
    std::string root;
    if (!InstallationRoot::rootFromModulePath(native(modulePath).c_str(), &root))
        return "<none>";
    return root;
}

class InstallationRootTest : public ::testing::Test
{
protected:
    void SetUp() override { InstallationRoot::resetCache(); }
    void TearDown() override { InstallationRoot::resetCache(); }

    // Neither variable is set unless a test sets it.
    ScopedEnvironment m_vorndir64{"VORNDIR5_64", nullptr};
    ScopedEnvironment m_vorndir{"VORNDIR5", nullptr};
};

} // namespace

TEST_F(InstallationRootTest, aModuleInBinLib64OrHardwareAppletsYieldsTheDirectoryAbove)
{
    EXPECT_EQ(rootOf("/opt/vorn/bin/x.dll"), native("/opt/vorn"));
    EXPECT_EQ(rootOf("/opt/vorn/lib64/x.dll"), native("/opt/vorn"));
    EXPECT_EQ(rootOf("/opt/vorn/Hardware Applets/x.dll"), native("/opt/vorn"));
    EXPECT_EQ(rootOf("/opt/vorn/dll/x.dll"), native("/opt/vorn"));
    EXPECT_EQ(rootOf("/opt/vorn/lib/x.dll"), native("/opt/vorn"));
}

TEST_F(InstallationRootTest, theDirectoryNamesMatchWithoutRegardToCase)
{
    EXPECT_EQ(rootOf("/opt/vorn/LIB/x.dll"), native("/opt/vorn"));
    EXPECT_EQ(rootOf("/opt/vorn/Bin/x.dll"), native("/opt/vorn"));
    EXPECT_EQ(rootOf("/opt/vorn/hardware applets/x.dll"), native("/opt/vorn"));
}

TEST_F(InstallationRootTest, theWalkGoesUpToTheNearestInstallDirectoryAndCutsRunsOfSeparators)
{
    EXPECT_EQ(rootOf("/opt/vorn/lib/x86_64/plugins/x.so"), native("/opt/vorn"));
    EXPECT_EQ(rootOf("/opt/vorn//bin///x.dll"), native("/opt/vorn"));
    EXPECT_EQ(rootOf("/a/bin/b/lib/x.so"), native("/a/bin/b"));
    EXPECT_EQ(rootOf("relative/bin/x.dll"), "relative");
    EXPECT_EQ(rootOf("/bin/x.dll"), "");
}

TEST_F(InstallationRootTest, aDirectoryThatOnlyStartsLikeAnInstallDirectoryDoesNotMatch)
{
    EXPECT_EQ(rootOf("/opt/vorn/library/x.so"), "<none>");
    EXPECT_EQ(rootOf("/opt/vorn/binaries/x.so"), "<none>");
    EXPECT_EQ(rootOf("/opt/lib.d/x.so"), "<none>");
}

TEST_F(InstallationRootTest, pathsWithoutDirectoriesOrTooLongYieldNothing)
{
    EXPECT_EQ(rootOf(""), "<none>");
    EXPECT_EQ(rootOf("x.dll"), "<none>");
    EXPECT_EQ(rootOf("/x.dll"), "<none>");
    EXPECT_EQ(rootOf("/bin"), "<none>") << "the last component is the module, not a directory";
    std::string longPath = "/root/bin/" + std::string(InstallationRoot::kPathCapacity, 'x');
    EXPECT_EQ(rootOf(longPath), "<none>");
    std::string root;
    EXPECT_FALSE(InstallationRoot::rootFromModulePath(nullptr, &root));
}

TEST_F(InstallationRootTest, aModulePathWithoutInstallDirectoryAndNoEnvironmentYieldsNoRootAndIsNotCached)
{
    const std::string module = native("/opt/vorn/plugins/x.so");
    EXPECT_EQ(InstallationRoot::findFromModulePath(module.c_str()), nullptr);
    EXPECT_EQ(InstallationRoot::findFromModulePath(nullptr), nullptr);

    // The failure was not cached: the next lookup tries again and sees the variable set meanwhile.
    ScopedEnvironment set("VORNDIR5", native("/srv/vorn").c_str());
    const char* root = InstallationRoot::findFromModulePath(module.c_str());
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(std::string(root), native("/srv/vorn"));
}

TEST_F(InstallationRootTest, trailingSeparatorsOfTheVariableAreCut)
{
    const std::string value = native("/srv/vorn///");
    ScopedEnvironment set("VORNDIR5_64", value.c_str());
    const char* root = InstallationRoot::findFromModulePath(nullptr);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(std::string(root), native("/srv/vorn"));
}

TEST_F(InstallationRootTest, vorndir5_64WinsOverVorndir5)
{
    ScopedEnvironment wide("VORNDIR5_64", native("/srv/wide").c_str());
    ScopedEnvironment narrow("VORNDIR5", native("/srv/narrow").c_str());
    const char* root = InstallationRoot::findFromModulePath(nullptr);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(std::string(root), native("/srv/wide"));
}

TEST_F(InstallationRootTest, theModulePathWinsOverTheEnvironment)
{
    ScopedEnvironment wide("VORNDIR5_64", native("/srv/wide").c_str());
    const char* root = InstallationRoot::findFromModulePath(native("/opt/vorn/bin/x.dll").c_str());
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(std::string(root), native("/opt/vorn"));
}

TEST_F(InstallationRootTest, aVariableLongerThanTheBufferIsCutToIt)
{
    const std::string value = native("/") + std::string(2 * InstallationRoot::kPathCapacity, 'v');
    ScopedEnvironment set("VORNDIR5_64", value.c_str());
    const char* root = InstallationRoot::findFromModulePath(nullptr);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(std::string(root), value.substr(0, InstallationRoot::kPathCapacity - 1));
}

TEST_F(InstallationRootTest, aFoundRootIsCachedUntilReset)
{
    const char* first = InstallationRoot::findFromModulePath(native("/opt/first/lib/x.so").c_str());
    ASSERT_NE(first, nullptr);
    const char* second = InstallationRoot::findFromModulePath(native("/opt/second/lib/x.so").c_str());
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(std::string(second), native("/opt/first"));
    InstallationRoot::resetCache();
    EXPECT_EQ(std::string(InstallationRoot::findFromModulePath(native("/opt/second/lib/x.so").c_str())),
              native("/opt/second"));
}

TEST_F(InstallationRootTest, theLibraryInTheBuildTreeFindsTheBuildDirectory)
{
    // The library sits in build/lib (build\bin on Windows), so the build directory is its root.
    const char* root = InstallationRoot::find();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(std::string(root), vorn::test::buildDirectory());
}
