#include <vorn/host/GenericModel.h>
#include <vorn/host/GenericModelNode.h>
#include <vorn/host/MovaniApplication.h>
#include <vorn/host/VornCore.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

using namespace vorn::core;

namespace {

// A folder of the test's own for its files, removed with them. Plain C++: the core library is Qt-free,
// and its tests also run against its Windows DLL.
class ScratchFolder
{
public:
    ScratchFolder()
    {
        std::random_device random;
        m_path = std::filesystem::temp_directory_path() / ("vorn-core-test-" + std::to_string(random()));
        std::filesystem::create_directories(m_path);
    }
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    std::string filePath(const char* name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

class NamedNode : public GenericModelNode
{
public:
    NamedNode(const boost::shared_ptr<GenericModel>& model, int id) : GenericModelNode(model), id(id) {}
    int id;

protected:
    std::uint32_t doTypeId() const override { return 42; }
};

class OtherNode : public GenericModelNode
{
public:
    using GenericModelNode::GenericModelNode;
};

class RecordingObserver : public GenericModelObserver
{
public:
    void nodesChanged(const std::vector<boost::shared_ptr<GenericModelNode>>& nodes) override
    {
        changed.insert(changed.end(), nodes.begin(), nodes.end());
    }
    void allNodesChanged() override { ++allChanged; }
    void errorReported(const boost::shared_ptr<GenericModelNode>&, const std::string& message) override
    {
        errors.push_back(message);
    }
    std::vector<boost::shared_ptr<GenericModelNode>> changed;
    int allChanged = 0;
    std::vector<std::string> errors;
};

} // namespace

TEST(GenericModelNodeTest, keepsChildrenInOrderWithParentAndModel)
{
    boost::shared_ptr<GenericModel> model(new GenericModel());
    boost::shared_ptr<GenericModelNode> parent(new NamedNode(model, 0));
    for (int i = 1; i <= 3; ++i)
        parent->appendChild(
            boost::shared_ptr<GenericModelNode>(new NamedNode(boost::shared_ptr<GenericModel>(), i)));

    ASSERT_EQ(parent->childCount(), 3u);
    for (int i = 0; i < 3; ++i) {
        auto child = boost::dynamic_pointer_cast<NamedNode>(parent->child(i));
        ASSERT_TRUE(child);
        EXPECT_EQ(child->id, i + 1);
        EXPECT_EQ(child->_parent()->get(), parent);
        EXPECT_EQ(child->model(), model) << "a child without a model joins its parent's";
    }
    EXPECT_FALSE(parent->_parent()->get());
    EXPECT_FALSE(parent->child(3));
}

TEST(GenericModelNodeTest, typeIdIsTheMostDerivedClassIdentity)
{
    boost::shared_ptr<GenericModelNode> named(new NamedNode(boost::shared_ptr<GenericModel>(), 1));
    boost::shared_ptr<GenericModelNode> plain(new OtherNode());
    EXPECT_EQ(named->typeId(), 42u);
    EXPECT_EQ(plain->typeId(), 0u);
}

TEST(GenericModelNodeTest, customSortKeyIsOptional)
{
    OtherNode node;
    EXPECT_FALSE(node.hasCustomSortKey());
    node.setCustomSortKey(18446744073709551615ull);
    EXPECT_TRUE(node.hasCustomSortKey());
    EXPECT_EQ(node.customSortKey(), 18446744073709551615ull);
    node.clearCustomSortKey();
    EXPECT_FALSE(node.hasCustomSortKey());
}

TEST(GenericModelNodeTest, modelIsEmptyOnceTheModelIsGone)
{
    boost::shared_ptr<GenericModel> model(new GenericModel());
    OtherNode node(model);
    EXPECT_EQ(node.model(), model);
    model.reset();
    EXPECT_FALSE(node.model());
}

TEST(GenericModelNodeChildrenIteratorTest, walksOnlyChildrenOfTheRequestedClass)
{
    boost::shared_ptr<GenericModelNode> parent(new OtherNode());
    parent->appendChild(boost::shared_ptr<GenericModelNode>(new OtherNode()));
    parent->appendChild(
        boost::shared_ptr<GenericModelNode>(new NamedNode(boost::shared_ptr<GenericModel>(), 7)));
    parent->appendChild(boost::shared_ptr<GenericModelNode>(new OtherNode()));
    parent->appendChild(
        boost::shared_ptr<GenericModelNode>(new NamedNode(boost::shared_ptr<GenericModel>(), 9)));

    GenericModelNodeChildrenIterator<NamedNode> it(parent);
    std::vector<int> ids;
    while (it.hasNext())
        ids.push_back(it.next()->id);
    EXPECT_EQ(ids, (std::vector<int>{7, 9}));
    EXPECT_FALSE(it.next());
    it.reset();
    ASSERT_TRUE(it.hasNext());
    EXPECT_EQ(it.next()->id, 7);
}

TEST(GenericModelTest, notifiesObserversUntilTheyLeave)
{
    GenericModel model;
    RecordingObserver first, second;
    model.addObserver(&first);
    model.addObserver(&second);
    model.addObserver(&first); // twice is once
    EXPECT_EQ(model.observerCount(), 2u);

    boost::shared_ptr<GenericModelNode> node(new OtherNode());
    model.notifyNodesChanged({node});
    model.notifyAllNodesChanged();
    model.notifyError(node, "Cannot set X: broken");
    model.removeObserver(&second);
    model.notifyNodesChanged({node});

    EXPECT_EQ(first.changed.size(), 2u);
    EXPECT_EQ(second.changed.size(), 1u);
    EXPECT_EQ(first.allChanged, 1);
    EXPECT_EQ(first.errors, std::vector<std::string>{"Cannot set X: broken"});
}

TEST(VornCoreTest, initAndDeinitKeepAUseCount)
{
    const unsigned before = VornCoreUseCount();
    const unsigned long long inits = VornCoreInitCalls();
    const unsigned long long deinits = VornCoreDeinitCalls();
    VornCoreInit();
    VornCoreInit();
    EXPECT_EQ(VornCoreUseCount(), before + 2);
    VornCoreDeinit();
    VornCoreDeinit();
    EXPECT_EQ(VornCoreUseCount(), before);
    EXPECT_EQ(VornCoreInitCalls(), inits + 2);
    EXPECT_EQ(VornCoreDeinitCalls(), deinits + 2);
}

TEST(MovaniApplicationTest, configIntEntryFallsBackToTheDefault)
{
    MovaniApplication::clearConfig();
    const std::string key = "gui.preferences.gui.params.integer.viewmode";
    EXPECT_EQ(MovaniApplication::getConfigIntEntry(key, 0), 0);
    EXPECT_EQ(MovaniApplication::getConfigIntEntry(key, -5), -5);
    MovaniApplication::setConfigIntEntry(key, 2);
    EXPECT_EQ(MovaniApplication::getConfigIntEntry(key, 0), 2);
    EXPECT_TRUE(MovaniApplication::removeConfigEntry(key));
    EXPECT_FALSE(MovaniApplication::removeConfigEntry(key));
    EXPECT_EQ(MovaniApplication::getConfigIntEntry(key, 7), 7);
}

TEST(MovaniApplicationTest, configPersistsThroughAFile)
{
    const ScratchFolder dir;
    const std::string path = dir.filePath("settings.ini");
    MovaniApplication::clearConfig();
    MovaniApplication::setConfigIntEntry("a.b", -9223372036854775807ll - 1);
    MovaniApplication::setConfigIntEntry("gui.preferences.gui.params.integer.viewmode", 1);
    std::string error;
    ASSERT_TRUE(MovaniApplication::saveConfig(path, &error)) << error;
    MovaniApplication::clearConfig();
    ASSERT_TRUE(MovaniApplication::loadConfig(path, &error)) << error;
    EXPECT_EQ(MovaniApplication::getConfigIntEntry("a.b", 0), -9223372036854775807ll - 1);
    EXPECT_EQ(MovaniApplication::getConfigIntEntry("gui.preferences.gui.params.integer.viewmode", 0), 1);
}

TEST(MovaniApplicationTest, badConfigFileNamesTheLineAndChangesNothing)
{
    const ScratchFolder dir;
    const std::string path = dir.filePath("bad.ini");
    {
        std::ofstream out(path);
        out << "good=1\n# comment\nbroken = twelve\n";
    }
    MovaniApplication::clearConfig();
    std::string error;
    EXPECT_FALSE(MovaniApplication::loadConfig(path, &error));
    EXPECT_EQ(error, path + ":3: expected key=integer, found \"broken = twelve\"");
    EXPECT_EQ(MovaniApplication::getConfigIntEntry("good", -1), -1);

    EXPECT_FALSE(MovaniApplication::loadConfig(dir.filePath("missing.ini"), &error));
    EXPECT_EQ(error.rfind("cannot open ", 0), 0u) << error;
}
