// Description files that cannot be shown: each gives a clear error naming the file and what is
// wrong, never a crash, and nothing on the terminal.
#include "genicam/GenicamTestSupport.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

using namespace vorn::test;

namespace {

// Sends what the process writes to its standard output and error into a file while it lives, to
// see what a user would have seen on the terminal.
class TerminalCapture
{
public:
    TerminalCapture()
    {
        std::fflush(stdout);
        std::fflush(stderr);
        m_file = std::tmpfile();
        m_out = ::dup(1);
        m_err = ::dup(2);
        ::dup2(::fileno(m_file), 1);
        ::dup2(::fileno(m_file), 2);
    }
    ~TerminalCapture() { finish(); }

    std::string finish()
    {
        if (!m_file)
            return m_text;
        std::fflush(stdout);
        std::fflush(stderr);
        ::dup2(m_out, 1);
        ::dup2(m_err, 2);
        ::close(m_out);
        ::close(m_err);
        std::rewind(m_file);
        char buffer[4096];
        std::size_t n = 0;
        while ((n = std::fread(buffer, 1, sizeof buffer, m_file)) > 0)
            m_text.append(buffer, n);
        std::fclose(m_file);
        m_file = nullptr;
        return m_text;
    }

private:
    std::FILE* m_file = nullptr;
    int m_out = -1;
    int m_err = -1;
    std::string m_text;
};

class GenicamBadInput : public ::testing::Test
{
protected:
    std::string write(const std::string& name, const std::string& content)
    {
        const std::string path = m_dir.path().toStdString() + "/" + name;
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }

    // Opens path, expecting a failure whose error starts with the path and contains what.
    void expectRefused(const std::string& path, const std::string& what)
    {
        std::string error;
        boost::shared_ptr<GenicamParameterTree> tree;
        std::string terminal;
        {
            TerminalCapture capture;
            tree = GenicamParameterTree::openXmlFile(path, &error);
            terminal = capture.finish();
        }
        EXPECT_FALSE(tree) << path;
        EXPECT_EQ(error.rfind(path + ": ", 0), 0u) << error;
        EXPECT_NE(error.find(what), std::string::npos) << "error: " << error << "\nexpected: " << what;
        EXPECT_EQ(terminal, "") << "printed while opening " << path;
    }

    QTemporaryDir m_dir;
};

std::string sharedText(const std::string& name)
{
    std::ifstream in(sharedFile(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

} // namespace

TEST_F(GenicamBadInput, missingFile)
{
    expectRefused(m_dir.path().toStdString() + "/absent.xml", "No such file or directory");
}

TEST_F(GenicamBadInput, folderInsteadOfAFile)
{
    expectRefused(m_dir.path().toStdString(), "is a folder, not a description file");
}

TEST_F(GenicamBadInput, unreadableFile)
{
    const std::string path = write("locked.xml", sharedText("video-adapter.xml"));
    ::chmod(path.c_str(), 0);
    if (::access(path.c_str(), R_OK) != 0) {
        expectRefused(path, "cannot be read: Permission denied");
        return;
    }
    // Root reads files whatever their permissions; a file that opens but fails to read stands in.
    expectRefused("/proc/self/mem", "cannot be read: Input/output error");
}

TEST_F(GenicamBadInput, emptyFile)
{
    expectRefused(write("empty.xml", ""), "is empty");
}

TEST_F(GenicamBadInput, truncatedFile)
{
    const std::string text = sharedText("simulated-camera.xml");
    ASSERT_GT(text.size(), 3000u);
    const std::string path = write("truncated.xml", text.substr(0, 3000));
    expectRefused(path, "not well-formed XML (line ");
    std::string error;
    GenicamParameterTree::openXmlFile(path, &error);
    EXPECT_NE(error.find("line 10"), std::string::npos) << error;
}

TEST_F(GenicamBadInput, mismatchedTags)
{
    expectRefused(write("mismatched.xml", "<?xml version=\"1.0\"?>\n<RegisterDescription>\n"
                                          "  <Category Name=\"Root\"><pFeature>X</pFeature></Category>\n"
                                          "</Register>\n"),
                  "not well-formed XML (line 4: Opening and ending tag mismatch");
}

TEST_F(GenicamBadInput, binaryGarbage)
{
    expectRefused(write("garbage.xml", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16)),
                  "not well-formed XML");
}

TEST_F(GenicamBadInput, xmlThatIsNoGenicamDescription)
{
    expectRefused(write("page.xml", "<?xml version=\"1.0\"?>\n<html><body>hello</body></html>\n"),
                  "not a GenICam description (its top element is <html>, not <RegisterDescription>)");
}

TEST_F(GenicamBadInput, descriptionWithoutRootCategory)
{
    expectRefused(write("rootless.xml", "<?xml version=\"1.0\"?>\n<RegisterDescription>\n"
                                        "  <Category Name=\"Main\"><pFeature>X</pFeature></Category>\n"
                                        "  <Integer Name=\"X\"><Value>1</Value></Integer>\n"
                                        "</RegisterDescription>\n"),
                  "not a GenICam description (no category named Root)");
}

TEST_F(GenicamBadInput, noPathAtAll)
{
    std::string error;
    EXPECT_FALSE(GenicamParameterTree::openXmlFile("", &error));
    EXPECT_EQ(error, "no description file given");
}

TEST(GenicamOddDescriptions, registersAnywhereInTheAddressSpaceAreKeptOffline)
{
    std::string error;
    std::string terminal;
    boost::shared_ptr<GenicamParameterTree> tree;
    {
        TerminalCapture capture;
        tree = GenicamParameterTree::openXmlFile(ownFile("outside.xml"), &error);
        terminal = capture.finish();
    }
    ASSERT_TRUE(tree) << error;
    EXPECT_EQ(terminal, "");
    for (const char* name : {"Inside", "Beyond", "FarBeyond"})
        EXPECT_EQ(valueOf(tree->find(name)), "0") << name;
    EXPECT_EQ(valueOf(tree->find("Straddling")), "\"\"");

    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "Inside", 7LL);
    writeAndWait(tree, "FarBeyond", 9ULL); // an unsigned 8-byte register
    EXPECT_EQ(valueOf(tree->find("Inside")), "7");
    EXPECT_EQ(valueOf(tree->find("FarBeyond")), "9");
    EXPECT_EQ(valueOf(tree->find("Beyond")), "0");
    EXPECT_TRUE(recorder.errors.empty()) << recorder.errors[0];
}

TEST(GenicamOddDescriptions, aravisAssertionsAboutADescriptionStayOffTheTerminal)
{
    // Reading Odd makes Aravis assert and log; the feature reads as invalid and the rest is shown.
    TerminalCapture capture;
    auto tree = GenicamParameterTree::openXmlFile(ownFile("odd.xml"));
    ASSERT_TRUE(tree);
    tree->refresh();
    EXPECT_TRUE(tree->waitIdle());
    EXPECT_EQ(capture.finish(), "");
    EXPECT_FALSE(tree->find("Odd")->getDataValid());
    EXPECT_EQ(valueOf(tree->find("Fine")), "3");
}
