// The browser's value writes against a live camera that stops answering: Aravis's simulated GigE
// Vision camera on the loopback interface of this program's own network, frozen just before a load.
#include "FeatureWriter.h"
#include "ParameterSource.h"

#include "genicam/FakeGvCamera.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>

#include <iostream>
#include <map>

using namespace vorn::browser;
using namespace vorn::test;

namespace {

std::unique_ptr<ParameterSource> openCameraWhenReady(QString* error)
{
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        auto source = ParameterSource::openDevice(QString::fromLatin1(kCameraAddress), error);
        if (source || waited.elapsed() > 10000)
            return source;
        QTest::qWait(200);
    }
}

std::string joined(const std::vector<FeatureFailure>& failures)
{
    std::string text;
    for (const FeatureFailure& failure : failures)
        text += failure.text() + "\n";
    return text;
}

} // namespace

// The camera's time-outs keep the first write waiting for several seconds; the load waits for every
// write's outcome however long that takes, and reports each on its own line.
TEST(BrowserDevice, aLoadReportsTheOutcomeOfEveryWriteWhenTheCameraStops)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    FakeGvCamera camera(QStringLiteral("VL%1").arg(::getpid()));
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;
    QString error;
    auto source = openCameraWhenReady(&error);
    ASSERT_TRUE(source) << error.toStdString() << "\n" << camera.output().toStdString();

    ASSERT_TRUE(camera.freeze());
    QElapsedTimer clock;
    clock.start();
    const std::vector<FeatureFailure> failures = FeatureWriter(*source).apply(
        {FeatureAssignment{"Width", -1, "320", 1}, FeatureAssignment{"ExposureTimeAbs", -1, "2500", 2},
         FeatureAssignment{"Height", -1, "256", 3}});
    const qint64 answeredAfterMs = clock.elapsed();
    std::cout << "[ timing   ] a load of three values into a frozen camera answered after " << answeredAfterMs
              << " ms" << std::endl;

    // One outcome per line, each naming its write; the device's loss is reported beside them.
    std::map<int, std::string> byLine;
    for (const FeatureFailure& failure : failures) {
        if (failure.line == 0) {
            EXPECT_EQ(
                failure.message.rfind(std::string("Lost the connection to ") + kCameraAddress + ": ", 0), 0u)
                << joined(failures);
            continue;
        }
        EXPECT_EQ(byLine.count(failure.line), 0u) << "two outcomes for line " << failure.line << "\n"
                                                  << joined(failures);
        byLine[failure.line] = failure.message;
    }
    ASSERT_EQ(byLine.size(), 3u) << joined(failures);
    EXPECT_EQ(byLine[1], "Cannot set Width to 320: the device does not answer") << joined(failures);
    EXPECT_EQ(byLine[2], "Cannot set ExposureTimeAbs to 2500: the device does not answer")
        << joined(failures);
    EXPECT_EQ(byLine[3], "Cannot set Height to 256: the device does not answer") << joined(failures);
    camera.resume();
    source.reset();
    camera.stop();
}
