// The entry points register the icons on every init and remove them on every deinit.
#include <vorn/lib/VornParametersQt4.h>
#include <vorn/lib/private/ResourceRegistration.h>

#include <QFile>

#include <gtest/gtest.h>

namespace {

bool iconsRegistered()
{
    return QFile::exists(":/parameters/integer.png");
}

} // namespace

TEST(ResourceLifecycleTest, iconsComeWithEveryInitAndGoWithEveryDeinit)
{
    EXPECT_TRUE(iconsRegistered()) << "registered when the library was loaded";
    VornParametersQt4Init();
    EXPECT_TRUE(iconsRegistered());
    VornParametersQt4Init();
    VornParametersQt4Deinit();
    EXPECT_FALSE(iconsRegistered()) << "the first deinit removes them, however often they were registered";
    VornParametersQt4Deinit();
    EXPECT_FALSE(iconsRegistered());

    VornParametersQt4Init();
    EXPECT_TRUE(iconsRegistered());
    VornParametersQt4Deinit();
    EXPECT_FALSE(iconsRegistered());
    // Leave them as the library's load left them.
    vorn::core::registerLibraryResources();
}
