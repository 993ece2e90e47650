// Saving and loading value files as the browser does: a save is whole or leaves the old file as it
// was, a load reads text of bounded size once and says what it refuses, and both scale.

#include "FeatureValueFile.h"
#include "FeatureValueStore.h"
#include "FeatureWriter.h"
#include "ParameterSource.h"

#include <vorn/host/ParameterKind.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

// Texts in failure messages as a person reads them.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
QT_END_NAMESPACE

using namespace vorn::browser;
using namespace vorn::core::models;

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

void put(const QString& path, const QByteArray& content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(content), content.size());
}

std::vector<std::string> texts(const std::vector<FeatureFailure>& failures)
{
    std::vector<std::string> out;
    for (const auto& f : failures)
        out.push_back(f.text());
    return out;
}

std::string valueOf(ParameterSource& source, const std::string& name)
{
    const auto nodes = source.nodesNamed(name);
    return nodes.empty() ? "<none>"
                         : ParameterKind::of(*nodes.front()).format(*nodes.front()).value_or("<no value>");
}

// Makes every write past a few bytes fail as on a full disk, while it lives (a limit on file size:
// the process is told with EFBIG instead of SIGXFSZ).
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = m_old;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};

class ValueStore : public ::testing::Test
{
protected:
    QString path(const char* name) const { return m_dir.filePath(QLatin1String(name)); }

    QTemporaryDir m_dir;
    std::unique_ptr<ParameterSource> source = ParameterSource::openExample();
};

} // namespace

TEST_F(ValueStore, aSaveThatRunsOutOfSpaceLeavesTheOldFileAsItWas)
{
    const QString target = path("values.txt");
    put(target, "Width=640\n");
    QString error;
    bool saved = true;
    {
        FullDisk full(64);
        saved = FeatureValueStore::save(*source, target, &error);
    }
    EXPECT_FALSE(saved);
    EXPECT_EQ(error,
              target + QStringLiteral(": cannot be written (File too large); the file there is unchanged"));
    EXPECT_EQ(contentOf(target), QByteArray("Width=640\n"));
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("values.txt")})
        << "no temporary file is left behind";
}

TEST_F(ValueStore, aSaveToSomethingThatIsNoFileIsRefused)
{
    QString error;
    EXPECT_FALSE(FeatureValueStore::save(*source, QStringLiteral("/dev/full"), &error));
    EXPECT_EQ(error,
              QStringLiteral("/dev/full: is not a regular file; feature values are saved to files only"));
    EXPECT_FALSE(FeatureValueStore::save(*source, m_dir.path(), &error));
    EXPECT_EQ(error, m_dir.path() +
                         QStringLiteral(": is not a regular file; feature values are saved to files only"));
}

TEST_F(ValueStore, aSaveIntoAMissingOrReadOnlyFolderSaysWhy)
{
    QString error;
    const QString missing = path("absent/values.txt");
    EXPECT_FALSE(FeatureValueStore::save(*source, missing, &error));
    EXPECT_EQ(error.left(missing.size() + 21), missing + QStringLiteral(": cannot be written ("));
    // /proc accepts no new files, for root too.
    EXPECT_FALSE(FeatureValueStore::save(*source, QStringLiteral("/proc/vorn-values.txt"), &error));
    EXPECT_EQ(error.left(39), QStringLiteral("/proc/vorn-values.txt: cannot be writte"));
}

TEST_F(ValueStore, aSavedFileIsUtf8AndLoadsBack)
{
    const QString target = path("values.txt");
    QString error;
    ASSERT_TRUE(FeatureValueStore::save(*source, target, &error)) << error.toStdString();
    const QByteArray saved = contentOf(target);
    EXPECT_TRUE(saved.startsWith("# Feature values of example device, saved by parameter-browser on "));
    EXPECT_TRUE(FeatureValueStore::load(*source, target, &error).empty());
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
}

TEST_F(ValueStore, loadsAcceptAByteOrderMarkAndCrlfLineEnds)
{
    const QString file = path("windows.txt");
    put(file, "\xef\xbb\xbfWidth=800\r\n# comment\r\nHeight=600\r\n");
    QString error;
    EXPECT_EQ(texts(FeatureValueStore::load(*source, file, &error)), std::vector<std::string>{});
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
    EXPECT_EQ(valueOf(*source, "Width"), "800");
    EXPECT_EQ(valueOf(*source, "Height"), "600");
}

TEST_F(ValueStore, loadsRefuseWhatIsNotText)
{
    QString error;
    const QString nul = path("nul.txt");
    put(nul, QByteArray("Width=800\nDeviceUserID=ab\0cd\n", 28));
    EXPECT_TRUE(FeatureValueStore::load(*source, nul, &error).empty());
    EXPECT_EQ(error, nul + QStringLiteral(": line 2 holds a NUL byte; value files are text"));

    const QString latin1 = path("latin1.txt");
    put(latin1, "Width=800\nDeviceUserID=caf\xe9\n");
    EXPECT_TRUE(FeatureValueStore::load(*source, latin1, &error).empty());
    EXPECT_EQ(error, latin1 + QStringLiteral(": line 2 is not UTF-8 text; value files are UTF-8"));
    EXPECT_EQ(valueOf(*source, "Width"), "1280") << "nothing of a refused file is set";

    EXPECT_TRUE(FeatureValueStore::load(*source, QStringLiteral("/dev/zero"), &error).empty());
    EXPECT_EQ(error, QStringLiteral("/dev/zero: is not a regular file"));
    const QString fifo = path("pipe.txt");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    EXPECT_TRUE(FeatureValueStore::load(*source, fifo, &error).empty());
    EXPECT_EQ(error, fifo + QStringLiteral(": is not a regular file"));

    const QString huge = path("huge.txt");
    {
        QFile file(huge);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.resize(FeatureValueStore::kMaxFileSize + 1));
    }
    EXPECT_TRUE(FeatureValueStore::load(*source, huge, &error).empty());
    EXPECT_EQ(error, huge + QStringLiteral(
                                ": is larger than 16777216 bytes; value files are text of a few kilobytes"));
}

TEST_F(ValueStore, utf8TextReachesTheTreeAsLatin1AndWhatLatin1CannotHoldIsRefused)
{
    const QString file = path("text.txt");
    put(file, "DeviceUserID=Caf\xc3\xa9 \xc2\xb5s\nDeviceUserID=\xe2\x82\xac\n");
    QString error;
    EXPECT_EQ(
        texts(FeatureValueStore::load(*source, file, &error)),
        std::vector<std::string>{"line 2: holds a character that no feature's text can hold (only Latin-1 "
                                 "characters can be set)"});
    EXPECT_EQ(valueOf(*source, "DeviceUserID"), "Caf\xe9 \xb5s");
    // Saved back, the text is UTF-8 again.
    const QString saved = path("saved.txt");
    ASSERT_TRUE(FeatureValueStore::save(*source, saved, &error));
    EXPECT_TRUE(contentOf(saved).contains("DeviceUserID=Caf\xc3\xa9 \xc2\xb5s\n"));
}

TEST_F(ValueStore, aReportListsAHundredFailuresAndCountsTheRest)
{
    QByteArray text;
    for (int i = 0; i < 5000; ++i)
        text += "NoSuchFeature" + QByteArray::number(i) + "=1\n";
    const QString file = path("many.txt");
    put(file, text);
    QString error;
    const auto failures = FeatureValueStore::load(*source, file, &error);
    ASSERT_EQ(failures.size(), 5000u);
    const QStringList lines = FeatureValueStore::reportLines(failures);
    ASSERT_EQ(lines.size(), 101);
    EXPECT_EQ(lines.front(), QStringLiteral("line 1: Cannot set NoSuchFeature0 to 1: no such feature"));
    EXPECT_EQ(lines.back(), QStringLiteral("... and 4900 more"));
}

TEST_F(ValueStore, aSaveKeepsTheValueUnderEachSelectorValueAndALoadPutsThemBackInAnyOrder)
{
    const QString description = QStringLiteral(VORN_GENICAM_TEST_DATA "/selector.xml");
    QString error;
    auto camera = ParameterSource::openXmlFile(description, &error);
    ASSERT_TRUE(camera) << error.toStdString();
    const std::vector<FeatureAssignment> settings = {
        {"GainSelector", -1, "Red", 0}, {"Gain", -1, "20", 0},          {"GainSelector", -1, "Blue", 0},
        {"Gain", -1, "30", 0},          {"GainSelector", -1, "All", 0}, {"Gain", -1, "10", 0},
        {"Width", -1, "40", 0},         {"OffsetX", -1, "60", 0}};
    ASSERT_TRUE(FeatureWriter(*camera).apply(settings).empty());
    const QString file = path("camera.txt");
    ASSERT_TRUE(FeatureValueStore::save(*camera, file, &error)) << error.toStdString();
    const QByteArray saved = contentOf(file);
    EXPECT_TRUE(saved.endsWith(
        "GainSelector=All\nGain=10\nOffsetX=60\nWidth=40\n\n# Under each value of GainSelector\n"
        "GainSelector=All\nGain=10\nGainSelector=Red\nGain=20\nGainSelector=Blue\nGain=30\n"
        "GainSelector=All\n"))
        << saved.toStdString();
    EXPECT_EQ(valueOf(*camera, "GainSelector"), "All") << "saving leaves the selector as it was";

    // Another camera of the model, in another state: its width leaves no room for the saved offset,
    // which the load sets once the width is in.
    auto other = ParameterSource::openXmlFile(description, &error);
    ASSERT_TRUE(other);
    ASSERT_TRUE(
        FeatureWriter(*other).apply({{"Width", -1, "100", 0}, {"GainSelector", -1, "Blue", 0}}).empty());
    EXPECT_EQ(texts(FeatureValueStore::load(*other, file, &error)), std::vector<std::string>{});
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
    EXPECT_EQ(valueOf(*other, "OffsetX"), "60");
    EXPECT_EQ(valueOf(*other, "Width"), "40");
    EXPECT_EQ(valueOf(*other, "GainSelector"), "All");
    for (const auto& [selector, gain] :
         {std::pair<const char*, const char*>{"All", "10"}, {"Red", "20"}, {"Blue", "30"}}) {
        ASSERT_TRUE(FeatureWriter(*other).apply({{"GainSelector", -1, selector, 0}}).empty());
        EXPECT_EQ(valueOf(*other, "Gain"), gain) << selector;
    }
}
