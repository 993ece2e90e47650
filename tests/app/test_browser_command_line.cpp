// The browser's command line, run as a program: dumps of every shared description and of the
// simulated camera against the checked-in trees, writes before the dump, refusals and their exit
// codes, value files, screenshots.

#include "BrowserProcess.h"

#include "support/ModelDump.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using vorn::test::BrowserRun;
using vorn::test::runBrowser;

namespace {

QString sharedFile(const char* name)
{
    return QStringLiteral(VORN_GENICAM_SHARED_DATA "/") + QLatin1String(name);
}

// The value column of the first row whose feature column reads feature (indentation aside).
QString valueIn(const QString& dump, const QString& feature)
{
    const QStringList lines = dump.split(QLatin1Char('\n'));
    const int valueColumn = lines.value(0).indexOf(QLatin1String("Value"));
    for (const QString& line : lines)
        if (line.left(valueColumn).trimmed() == feature)
            return line.mid(valueColumn).trimmed();
    return QStringLiteral("<no row %1>").arg(feature);
}

struct DumpCase
{
    const char* expected; // file name under tests/app/expected
    QStringList arguments;
};

void PrintTo(const DumpCase& c, std::ostream* os)
{
    *os << c.expected;
}

std::vector<DumpCase> dumpCases()
{
    const QString all = QStringLiteral("--visibility=all");
    return {
        // What a person sees first: the simulated camera in the default model at the beginner level.
        {"simulated-camera.txt", {QStringLiteral("--dump")}},
        {"simulated-camera-plain-all.txt", {QStringLiteral("--dump"), QStringLiteral("--model=plain"), all}},
        {"xml-simulated-camera.txt",
         {QStringLiteral("--dump"), QStringLiteral("--xml"), sharedFile("simulated-camera.xml"), all}},
        {"xml-reference-node-types.txt",
         {QStringLiteral("--dump"), QStringLiteral("--xml"), sharedFile("reference-node-types.xml"), all}},
        {"xml-reference-node-types-plain.txt",
         {QStringLiteral("--dump"), QStringLiteral("--xml"), sharedFile("reference-node-types.xml"),
          QStringLiteral("--model=plain"), all}},
        {"xml-video-adapter.txt",
         {QStringLiteral("--dump"), QStringLiteral("--xml"), sharedFile("video-adapter.xml"), all}},
        {"xml-video-adapter-hex.txt",
         {QStringLiteral("--dump"), QStringLiteral("--xml"), sharedFile("video-adapter.xml"), all,
          QStringLiteral("--view-mode=hex")}},
        {"example-beginner.txt", {QStringLiteral("--dump"), QStringLiteral("--example")}},
        {"example-guru-plain.txt",
         {QStringLiteral("--dump"), QStringLiteral("--example"), QStringLiteral("--visibility=guru"),
          QStringLiteral("--model=plain")}},
        {"example-all-binary.txt",
         {QStringLiteral("--dump"), QStringLiteral("--example"), all, QStringLiteral("--view-mode=binary")}},
        {"example-events.txt",
         {QStringLiteral("--dump"), QStringLiteral("--example"), all, QStringLiteral("--model=events")}},
    };
}

class DumpTest : public ::testing::TestWithParam<DumpCase>
{};

// VORN_UPDATE_EXPECTED=1 writes what the browser prints into the expected files instead, for a
// person to review with git diff.
TEST_P(DumpTest, printsTheTreeAsTheCheckedInFileHasIt)
{
    const DumpCase& c = GetParam();
    const BrowserRun run = runBrowser(c.arguments);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.errorLines().isEmpty()) << run.err.toStdString();

    QFile file(QStringLiteral(VORN_BROWSER_EXPECTED "/") + QLatin1String(c.expected));
    if (qEnvironmentVariableIsSet("VORN_UPDATE_EXPECTED")) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        const QByteArray bytes = run.out.toUtf8();
        ASSERT_EQ(file.write(bytes), bytes.size());
        // Rewriting compared nothing: the run must not pass as a check.
        FAIL() << "rewrote " << file.fileName().toStdString()
               << "; review it with git diff, then run again without VORN_UPDATE_EXPECTED";
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    const QString expected = QString::fromUtf8(file.readAll());
    EXPECT_EQ(run.out.split(QLatin1Char('\n')), expected.split(QLatin1Char('\n')));
}

INSTANTIATE_TEST_SUITE_P(EverySource, DumpTest, ::testing::ValuesIn(dumpCases()),
                         [](const ::testing::TestParamInfo<DumpCase>& info) {
                             std::string name = info.param.expected;
                             name = name.substr(0, name.size() - 4);
                             for (char& c : name)
                                 if (c == '-')
                                     c = '_';
                             return name;
                         });

TEST(CommandLine, setsAFeatureOfEachKindBeforeTheDump)
{
    const BrowserRun run = runBrowser({
        QStringLiteral("--example"),
        QStringLiteral("--visibility=all"),
        QStringLiteral("--model=plain"),
        QStringLiteral("--set"),
        QStringLiteral("DeviceUserID=line 7"), // string
        QStringLiteral("--set"),
        QStringLiteral("Width=640"), // integer
        QStringLiteral("--set"),
        QStringLiteral("TimestampLatch=18446744073709551615"), // unsigned 64-bit
        QStringLiteral("--set"),
        QStringLiteral("ExposureTime=2.5e3"), // float
        QStringLiteral("--set"),
        QStringLiteral("ReverseX=true"), // boolean
        QStringLiteral("--set"),
        QStringLiteral("PixelFormat=RGB8"), // enumeration, by symbol
        QStringLiteral("--set"),
        QStringLiteral("AcquisitionMode=Single Frame"), // enumeration, by shown name
        QStringLiteral("--set"),
        QStringLiteral("TriggerEnable=false"), // integer check box
        QStringLiteral("--set"),
        QStringLiteral("CounterValue[2]=7"), // one index of a field
        QStringLiteral("--set"),
        QStringLiteral("AcquisitionStart="), // command
        QStringLiteral("--dump"),
    });
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(valueIn(run.out, QStringLiteral("User ID")), QStringLiteral("line 7"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Width")), QStringLiteral("640 px"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Timestamp")), QStringLiteral("18446744073709551615"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Exposure Time")), QStringLiteral("2500 \u00b5s"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Reverse X")), QStringLiteral("[x]"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Pixel Format")), QStringLiteral("RGB 8"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Acquisition Mode")), QStringLiteral("Single Frame"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Trigger Enable")), QStringLiteral("[ ]"));
    EXPECT_TRUE(run.out.contains(QStringLiteral("  Counter Value                       7\n")))
        << run.out.toStdString();
}

TEST(CommandLine, setsTheSimulatedCameraThroughItsDeviceThread)
{
    const BrowserRun run =
        runBrowser({QStringLiteral("--set"), QStringLiteral("Width=256"), QStringLiteral("--set"),
                    QStringLiteral("ExposureTimeAbs=20000"), QStringLiteral("--set"),
                    QStringLiteral("PixelFormat=Mono16"), QStringLiteral("--set"),
                    QStringLiteral("AcquisitionStart=execute"), QStringLiteral("--dump")});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Width")), QStringLiteral("256"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("ExposureTimeAbs")), QStringLiteral("20000"));
    EXPECT_EQ(valueIn(run.out, QStringLiteral("Pixel format")), QStringLiteral("Mono16"));
    // PayloadSize follows Width, Height and the pixel format: the tree read everything again.
    EXPECT_EQ(valueIn(run.out, QStringLiteral("PayloadSize")), QString::number(256 * 512 * 2));
}

struct Refusal
{
    QStringList arguments;
    const char* reason; // the whole line on stderr
};

TEST(CommandLine, aRefusedValueEndsTheRunWithItsReasonAndNoDump)
{
    const std::vector<Refusal> refusals = {
        {{QStringLiteral("--set"), QStringLiteral("Width=4097")},
         "parameter-browser: Cannot set Width to 4097: 4097 is above the maximum 2048"},
        {{QStringLiteral("--set"), QStringLiteral("DeviceVendorName=Someone")},
         "parameter-browser: Cannot set DeviceVendorName to \"Someone\": the feature is read-only"},
        {{QStringLiteral("--set"), QStringLiteral("Height=tall")},
         "parameter-browser: Cannot set Height to tall: not an integer"},
        {{QStringLiteral("--set"), QStringLiteral("NoSuchFeature=1")},
         "parameter-browser: Cannot set NoSuchFeature to 1: no such feature"},
        {{QStringLiteral("--example"), QStringLiteral("--set"), QStringLiteral("Width=641")},
         "parameter-browser: Cannot set Width to 641: 641 is not a multiple of the increment 16 from 16"},
        {{QStringLiteral("--example"), QStringLiteral("--set"), QStringLiteral("PixelFormat=Mono16")},
         "parameter-browser: Cannot set PixelFormat to Mono16: the entry Mono16 is not available"},
        {{QStringLiteral("--example"), QStringLiteral("--set"), QStringLiteral("ReverseY=maybe")},
         "parameter-browser: Cannot set ReverseY to maybe: not a boolean (true or false)"},
    };
    for (const Refusal& r : refusals) {
        QStringList arguments = r.arguments;
        arguments << QStringLiteral("--dump");
        const BrowserRun run = runBrowser(arguments);
        EXPECT_EQ(run.exitCode, 1) << r.reason;
        EXPECT_EQ(run.errorLines(), QStringList{QString::fromUtf8(r.reason)});
        EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
    }
}

TEST(CommandLine, everyRefusedValueIsNamedNotOnlyTheFirst)
{
    const BrowserRun run =
        runBrowser({QStringLiteral("--set"), QStringLiteral("Width=4097"), QStringLiteral("--set"),
                    QStringLiteral("Height=256"), QStringLiteral("--set"), QStringLiteral("Nope=1")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errorLines(),
              QStringList({QStringLiteral(
                               "parameter-browser: Cannot set Width to 4097: 4097 is above the maximum 2048"),
                           QStringLiteral("parameter-browser: Cannot set Nope to 1: no such feature")}));
}

TEST(CommandLine, aBadDescriptionFileEndsTheRunWithOneLineThatNamesIt)
{
    QTemporaryDir dir;
    const QString garbage = dir.filePath(QStringLiteral("garbage.xml"));
    QFile file(garbage);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("this is not a description <");
    file.close();

    for (const QString& path : {dir.filePath(QStringLiteral("missing.xml")), garbage}) {
        const BrowserRun run = runBrowser({QStringLiteral("--xml"), path, QStringLiteral("--dump")});
        EXPECT_EQ(run.exitCode, 1);
        ASSERT_EQ(run.errorLines().size(), 1) << run.err.toStdString();
        EXPECT_TRUE(run.errorLines().first().contains(path)) << run.err.toStdString();
        EXPECT_TRUE(run.out.isEmpty());
    }
}

TEST(CommandLine, anUnknownDeviceEndsTheRunWithOneLineThatNamesIt)
{
    const BrowserRun run = runBrowser(
        {QStringLiteral("--device"), QStringLiteral("No-Such-Camera-4711"), QStringLiteral("--dump")});
    EXPECT_EQ(run.exitCode, 1);
    ASSERT_EQ(run.errorLines().size(), 1) << run.err.toStdString();
    EXPECT_TRUE(run.errorLines().first().contains(QStringLiteral("No-Such-Camera-4711")));
}

TEST(CommandLine, aMistakeInTheArgumentsIsAUsageError)
{
    for (const QStringList& arguments :
         {QStringList{QStringLiteral("--model=fancy")}, QStringList{QStringLiteral("--visibility=wizard")},
          QStringList{QStringLiteral("--example"), QStringLiteral("--xml"), QStringLiteral("x.xml")},
          QStringList{QStringLiteral("--set"), QStringLiteral("Width")},
          QStringList{QStringLiteral("--bogus")}}) {
        const BrowserRun run = runBrowser(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(run.errorLines().size(), 1) << run.err.toStdString();
    }
}

TEST(CommandLine, helpNamesEveryOption)
{
    const BrowserRun run = runBrowser({QStringLiteral("--help")});
    EXPECT_EQ(run.exitCode, 0);
    for (const char* option :
         {"--xml", "--device", "--example", "--list-devices", "--model", "--visibility", "--view-mode",
          "--set", "--load", "--save", "--dump", "--screenshot", "--select"})
        EXPECT_TRUE(run.out.contains(QLatin1String(option))) << option;
}

TEST(CommandLine, listsTheDevicesPresent)
{
    const BrowserRun run = runBrowser({QStringLiteral("--list-devices")});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(run.out.isEmpty());
}

TEST(CommandLine, aScreenshotIsAPictureOfTheWindow)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("window.png"));
    const BrowserRun run = runBrowser({QStringLiteral("--example"), QStringLiteral("--select=Width"),
                                       QStringLiteral("--screenshot"), path});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(path));
    const QImage image(path);
    EXPECT_EQ(image.size(), QSize(920, 720));
}

TEST(CommandLine, savedValuesComeBackWhenLoaded)
{
    QTemporaryDir dir;
    const QString saved = dir.filePath(QStringLiteral("values.txt"));
    const QStringList changes = {QStringLiteral("--set"), QStringLiteral("Width=1024"),
                                 QStringLiteral("--set"), QStringLiteral("DeviceUserID=a=b\\c"),
                                 QStringLiteral("--set"), QStringLiteral("ReverseY=false"),
                                 QStringLiteral("--set"), QStringLiteral("TimerDuration[1]=0.125")};
    const QStringList dumpAll = {QStringLiteral("--dump"), QStringLiteral("--visibility=all")};

    const BrowserRun save =
        runBrowser(QStringList{QStringLiteral("--example"), QStringLiteral("--save"), saved} + changes);
    ASSERT_EQ(save.exitCode, 0) << save.err.toStdString();
    const BrowserRun changed = runBrowser(QStringList{QStringLiteral("--example")} + changes + dumpAll);
    const BrowserRun loaded =
        runBrowser(QStringList{QStringLiteral("--example"), QStringLiteral("--load"), saved} + dumpAll);
    ASSERT_EQ(loaded.exitCode, 0) << loaded.err.toStdString();
    EXPECT_EQ(loaded.out, changed.out);
    EXPECT_EQ(valueIn(loaded.out, QStringLiteral("User ID")), QStringLiteral("a=b\\c"));
}

TEST(CommandLine, loadingNamesEachValueThatDidNotTakeByLine)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("values.txt"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("# hand-written\n"
               "Width=512\n"
               "Height=9999\n"
               "just some words\n"
               "Unknown=3\n"
               "OffsetX=16\n");
    file.close();
    const BrowserRun run = runBrowser({QStringLiteral("--load"), path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(
        run.errorLines(),
        QStringList(
            {QStringLiteral("parameter-browser: line 3: Cannot set Height to 9999: 9999 is above the "
                            "maximum 2048"),
             QStringLiteral("parameter-browser: line 4: expected Name=Value, found \"just some words\""),
             QStringLiteral("parameter-browser: line 5: Cannot set Unknown to 3: no such feature")}));
}

TEST(CommandLine, aDeepTreeDumpsWithItsDepthWrittenOutBeyondThirtyTwoLevels)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("deep.xml"));
    QByteArray xml = "<?xml version=\"1.0\"?>\n<RegisterDescription ModelName=\"Deep\" VendorName=\"Vorn\" "
                     "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n"
                     "<Category Name=\"Root\"><pFeature>C0</pFeature></Category>\n";
    const int depth = 40;
    for (int i = 0; i < depth; ++i)
        xml += "<Category Name=\"C" + QByteArray::number(i) + "\"><pFeature>C" + QByteArray::number(i + 1) +
               "</pFeature></Category>\n";
    xml += "<Integer Name=\"C" + QByteArray::number(depth) +
           "\"><Value>7</Value></Integer>\n</RegisterDescription>\n";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(xml);
    file.close();
    const BrowserRun run = runBrowser({QStringLiteral("--xml"), path, QStringLiteral("--dump")});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList lines = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), depth + 2);
    // Two spaces a level up to 32 levels, then the level as a number: a deep tree's dump grows with
    // its rows, not with their square.
    EXPECT_EQ(lines[33], QString(64, QLatin1Char(' ')) + QStringLiteral("C32"));
    EXPECT_EQ(lines[34], QString(64, QLatin1Char(' ')) + QStringLiteral("[33] C33"));
    EXPECT_TRUE(lines.last().startsWith(QString(64, QLatin1Char(' ')) + QStringLiteral("[40] C40")))
        << lines.last().toStdString();
    EXPECT_TRUE(lines.last().endsWith(QStringLiteral(" 7")));
}

TEST(CommandLine, aSaveThatFailsSaysSoAndExitsWithAnError)
{
    const BrowserRun run =
        runBrowser({QStringLiteral("--example"), QStringLiteral("--save"), QStringLiteral("/dev/full")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(
        run.errorLines(),
        QStringList{QStringLiteral(
            "parameter-browser: /dev/full: is not a regular file; feature values are saved to files only")});
}

TEST(CommandLine, setTakesLatin1TextAndRefusesWhatLatin1CannotHold)
{
    QTemporaryDir dir;
    const QString saved = dir.filePath(QStringLiteral("values.txt"));
    const BrowserRun accented =
        runBrowser({QStringLiteral("--example"), QStringLiteral("--set"),
                    QStringLiteral("DeviceUserID=Caf\u00e9"), QStringLiteral("--save"), saved});
    ASSERT_EQ(accented.exitCode, 0) << accented.err.toStdString();
    QFile file(saved);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("DeviceUserID=Caf\xc3\xa9\n"));

    const BrowserRun euro = runBrowser({QStringLiteral("--example"), QStringLiteral("--set"),
                                        QStringLiteral("DeviceUserID=\u20ac5"), QStringLiteral("--dump")});
    EXPECT_EQ(euro.exitCode, 2);
    EXPECT_EQ(euro.errorLines(),
              QStringList{QStringLiteral("parameter-browser: --set DeviceUserID=\u20ac5: only "
                                         "Latin-1 characters can be set (see --help)")});
}

} // namespace
