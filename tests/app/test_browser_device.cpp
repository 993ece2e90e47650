// The browser's value writes against a live camera that stops answering: Aravis's simulated GigE
// Vision camera on the loopback interface of this program's own network, frozen just before a load.
#include "BrowserWindow.h"
#include "DeviceDialog.h"
#include "FeatureDetailsPane.h"
#include "FeatureWriter.h"
#include "ParameterSource.h"

#include "support/Eventually.h"
#include "support/ModelDump.h"

#include "genicam/FakeGvCamera.h"

#include <vorn/host/Qt4GenericTreeView.h>

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QTreeWidget>

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

// Connect to Device opens the camera without the window waiting for it, names the camera in the title
// and the status bar, can be cancelled, and says why when the camera does not answer.
TEST(BrowserDevice, theWindowConnectsWithoutWaitingAndNamesTheCamera)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    QStandardPaths::setTestModeEnabled(true);
    QSettings(QStringLiteral("Vorn"), QStringLiteral("parameter-browser")).clear();
    const QString serial = QStringLiteral("VW%1").arg(::getpid());
    FakeGvCamera camera(serial);
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;
    QString error;
    ASSERT_TRUE(openCameraWhenReady(&error)) << error.toStdString();

    BrowserWindow window;
    window.show();
    const QString address = QString::fromLatin1(kCameraAddress);
    window.connectTo(address);
    EXPECT_TRUE(window.isConnecting());
    EXPECT_EQ(window.deviceStateText(), QStringLiteral("Nothing open"))
        << "connectTo returned before the camera was open";
    VORN_WAIT_UNTIL(!window.isConnecting(), 10000);
    const QString named = QStringLiteral("%1 (Aravis Fake, serial %2)").arg(address, serial);
    EXPECT_EQ(window.deviceStateText(), QStringLiteral("Connected: ") + named);
    EXPECT_EQ(window.windowTitle(), named + QStringLiteral(" - Parameter Browser"));
    const ParameterSource* connected = window.source();
    ASSERT_TRUE(connected);

    // Cancelled: the window keeps what it shows.
    window.connectTo(address);
    window.cancelConnecting();
    EXPECT_FALSE(window.isConnecting());
    QTest::qWait(1500);
    EXPECT_EQ(window.source(), connected);
    EXPECT_TRUE(window.logLines().last().endsWith(QStringLiteral("Cancelled connecting to ") + address))
        << window.logLines().join(QLatin1Char('\n')).toStdString();

    // A camera that does not answer: the reason, once opening gives up.
    ASSERT_TRUE(camera.freeze());
    window.connectTo(address);
    VORN_WAIT_UNTIL(!window.isConnecting(), 30000);
    EXPECT_EQ(window.source(), connected);
    EXPECT_TRUE(window.lastErrorText().contains(address + QStringLiteral(": cannot open the device (")))
        << window.lastErrorText().toStdString();
    camera.resume();
    window.close();
}

// The Connect dialog lists what discovery finds, each camera as one row, without the window waiting.
TEST(BrowserDevice, theConnectDialogListsTheCameraItFinds)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    const QString serial = QStringLiteral("VL%1").arg(::getpid());
    FakeGvCamera camera(serial);
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;
    QString error;
    ASSERT_TRUE(openCameraWhenReady(&error)) << error.toStdString();

    DeviceDialog dialog;
    dialog.show();
    QSignalSpy searched(&dialog, &DeviceDialog::searched);
    dialog.discover();
    auto* list = dialog.findChild<QTreeWidget*>();
    ASSERT_TRUE(list);
    ASSERT_EQ(list->topLevelItemCount(), 1);
    EXPECT_EQ(list->topLevelItem(0)->text(0), QStringLiteral("Searching..."));
    VORN_WAIT_EQ(searched.count(), 1, 10000);
    QStringList rows;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < list->columnCount(); ++column)
            cells << list->topLevelItem(row)->text(column);
        rows << cells.join(QStringLiteral(" | "));
    }
    EXPECT_EQ(rows, QStringList{QStringLiteral("Aravis-Fake-%1 | Aravis | Fake | %1 | %2 | GigEVision")
                                    .arg(serial, QString::fromLatin1(kCameraAddress))});
    EXPECT_EQ(dialog.deviceId(), QStringLiteral("Aravis-Fake-") + serial) << "the first camera is chosen";
}

// A camera that goes away and comes back keeps the window as the person left it: what was open or
// closed, and the selected feature.
TEST(BrowserDevice, expansionAndSelectionOutlastALossAndAReconnect)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    QStandardPaths::setTestModeEnabled(true);
    QSettings(QStringLiteral("Vorn"), QStringLiteral("parameter-browser")).clear();
    FakeGvCamera camera(QStringLiteral("VR%1").arg(::getpid()));
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;
    QString error;
    auto source = openCameraWhenReady(&error);
    ASSERT_TRUE(source) << error.toStdString();

    BrowserWindow window;
    window.setSource(std::move(source));
    window.show();
    QCoreApplication::processEvents();
    auto* view = window.view();
    auto expanded = [view](const char* name) {
        return view->isExpanded(findRow(view->model(), QLatin1String(name)));
    };
    ASSERT_TRUE(expanded("DeviceControl"));
    view->collapse(findRow(view->model(), QStringLiteral("DeviceControl")));
    ASSERT_TRUE(window.selectFeature(QStringLiteral("Width")));

    ASSERT_TRUE(camera.freeze());
    VORN_WAIT_UNTIL(!window.source()->isConnected(), 15000);
    camera.resume();
    VORN_WAIT_UNTIL(window.source()->isConnected(), 30000);
    QCoreApplication::processEvents();
    EXPECT_FALSE(expanded("DeviceControl"));
    EXPECT_TRUE(expanded("ImageFormatControl"));
    EXPECT_TRUE(expanded("AcquisitionControl"));
    EXPECT_EQ(window.details()->shownText(QStringLiteral("Name")), QStringLiteral("Width"));
    window.close();
}
