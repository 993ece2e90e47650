#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/host/VornParameters.h>

#include <gtest/gtest.h>

#include <limits>

using namespace vorn::core;
using namespace vorn::core::models;

namespace {

struct ChangeCounter : GenericModelObserver
{
    void nodesChanged(const std::vector<boost::shared_ptr<GenericModelNode>>& nodes) override
    {
        for (const auto& n : nodes)
            names.push_back(boost::static_pointer_cast<MvParametersEntryNode>(n)->getName());
    }
    void allNodesChanged() override { ++all; }
    void errorReported(const boost::shared_ptr<GenericModelNode>&, const std::string& message) override
    {
        errors.push_back(message);
    }
    std::vector<std::string> names;
    std::vector<std::string> errors;
    int all = 0;
};

std::vector<std::string> childNames(const boost::shared_ptr<MvParametersEntryNode>& node)
{
    std::vector<std::string> names;
    if (auto children = node->getChildNodesEntryNode())
        for (const auto& c : children->children())
            names.push_back(boost::static_pointer_cast<MvParametersEntryNode>(c)->getName());
    return names;
}

} // namespace

TEST(InMemoryParameterTreeTest, answersEveryGetterAsBuilt)
{
    auto tree = InMemoryParameterTree::create();
    auto cat = tree->category(tree->root(), "ImageFormat")
                   .displayName("Image Format")
                   .toolTip("Size and format")
                   .visibility(pevExpert)
                   .sortKey(5)
                   .node();
    auto width = tree->integer(cat, "Width")
                     .value(640)
                     .range(16, 4096)
                     .step(16)
                     .unit("px")
                     .representation(pirHexNumber)
                     .field(3)
                     .viewMode(2)
                     .access(peamReadWriteIfValid)
                     .dataValid(false)
                     .visibility(pevGuru)
                     .type(petInternal)
                     .node();
    auto big = tree->uint64(cat, "Big")
                   .value(18446744073709551615ull)
                   .range(1, 18446744073709551615ull)
                   .step(2)
                   .node();
    auto gain = tree->floating(cat, "Gain").value(0.5).range(-1.5, 24.0).unit("dB").field(1).node();
    auto flag = tree->boolean(cat, "Flag").value(true).node();
    auto text = tree->string(cat, "Text").value("abc").maxLength(12).node();
    auto mode = tree->enumeration(cat, "Mode")
                    .entry("Off", 0, "Switched off")
                    .entry("On", 1)
                    .entry("Hidden", 2, "", peamNotAvailable)
                    .value("On")
                    .node();
    auto run = tree->command(cat, "Run").active(true).node();
    auto plain = tree->entry(cat, "Plain").node();

    EXPECT_EQ(childNames(tree->root()), std::vector<std::string>{"ImageFormat"});
    EXPECT_EQ(childNames(cat),
              (std::vector<std::string>{"Width", "Big", "Gain", "Flag", "Text", "Mode", "Run", "Plain"}));
    EXPECT_EQ(cat->getDisplayName(), "Image Format");
    EXPECT_EQ(cat->getToolTip(), "Size and format");
    EXPECT_EQ(cat->getVisibility(), pevExpert);
    EXPECT_TRUE(cat->hasCustomSortKey());
    EXPECT_EQ(cat->customSortKey(), 5u);
    EXPECT_EQ(static_cast<GenericModelNode&>(*cat).typeId(), MvParametersCategoryNode::typeId());

    EXPECT_EQ(width->getName(), "Width");
    EXPECT_EQ(width->getDisplayName(), "Width") << "display name falls back to the name";
    EXPECT_EQ(width->getNodeValue(), 640);
    EXPECT_EQ(width->getMinValue(), 16);
    EXPECT_EQ(width->getMaxValue(), 4096);
    EXPECT_EQ(width->getStepValue(), 16);
    EXPECT_EQ(width->getUnit(), "px");
    EXPECT_EQ(width->getRepresentation(), pirHexNumber);
    EXPECT_TRUE(width->getIsField());
    EXPECT_EQ(width->getCurrentFieldIndex(), 3);
    EXPECT_EQ(width->getViewMode(), 2);
    EXPECT_EQ(width->getAccessMode(), peamReadWriteIfValid);
    EXPECT_FALSE(width->getDataValid());
    EXPECT_EQ(width->getVisibility(), pevGuru);
    EXPECT_EQ(width->getType(), petInternal);
    EXPECT_EQ(width->_parent()->get(), cat);
    EXPECT_EQ(width->model(), tree->model());
    EXPECT_FALSE(width->getChildNodesEntryNode());

    EXPECT_EQ(big->getNodeValue(), 18446744073709551615ull);
    EXPECT_EQ(big->getMinValue(), 1u);
    EXPECT_EQ(big->getStepValue(), 2u);
    EXPECT_EQ(big->getViewMode(), -1);
    EXPECT_EQ(gain->getNodeValue(), 0.5);
    EXPECT_EQ(gain->getMinValue(), -1.5);
    EXPECT_EQ(gain->getMaxValue(), 24.0);
    EXPECT_EQ(gain->getUnit(), "dB");
    EXPECT_EQ(gain->getCurrentFieldIndex(), 1);
    EXPECT_TRUE(flag->getValueSet());
    EXPECT_EQ(text->getNodeValue(), "abc");
    EXPECT_EQ(text->getMaxLength(), 12);
    EXPECT_EQ(mode->getNodeValue(), "On");
    EXPECT_EQ(mode->getNodeIntValue(), 1);
    EXPECT_EQ(mode->getEnumEntryNodesEntry("Off")->getDisplayName(), "Switched off");
    EXPECT_EQ(mode->getEnumEntryNodesEntry("On")->getDisplayName(), "On");
    EXPECT_EQ(mode->getEnumEntryNodesEntry("Hidden")->getAccessMode(), peamNotAvailable);
    EXPECT_FALSE(mode->getEnumEntryNodesEntry("Nope"));
    std::vector<std::string> symbols;
    for (auto it = mode->getEnumEntryNodes(); it->hasNext();) {
        auto e = it->next();
        symbols.push_back(e->getSymbolic() + "=" + std::to_string(e->getValue()));
    }
    EXPECT_EQ(symbols, (std::vector<std::string>{"Off=0", "On=1", "Hidden=2"}));
    EXPECT_TRUE(run->getActive());

    const std::vector<std::pair<boost::shared_ptr<MvParametersEntryNode>, std::uint32_t>> ids = {
        {width, MvParametersIntegerNode::typeId()}, {big, MvParametersUInt64Node::typeId()},
        {gain, MvParametersFloatNode::typeId()},    {flag, MvParametersBooleanNode::typeId()},
        {text, MvParametersStringNode::typeId()},   {mode, MvParametersEnumerationNode::typeId()},
        {run, MvParametersCommandNode::typeId()},   {plain, MvParametersEntryNode::typeId()}};
    for (const auto& id : ids)
        EXPECT_EQ(static_cast<GenericModelNode&>(*id.first).typeId(), id.second) << id.first->getName();
    EXPECT_EQ(tree->find("Mode"), mode);
    EXPECT_FALSE(tree->find("Missing"));
}

TEST(InMemoryParameterTreeTest, callbackRecordsAppliesAndNotifies)
{
    auto tree = InMemoryParameterTree::create();
    auto width = tree->integer(tree->root(), "Width").value(640).range(16, 4096).step(16).node();
    auto big = tree->uint64(tree->root(), "Big").range(0, 18446744073709551615ull).node();
    auto gain = tree->floating(tree->root(), "Gain").range(0, 10).node();
    auto flag = tree->boolean(tree->root(), "Flag").node();
    auto text = tree->string(tree->root(), "Text").maxLength(4).node();
    auto mode = tree->enumeration(tree->root(), "Mode").entry("A", 10).entry("B", 20).node();
    int executed = 0;
    auto run = tree->command(tree->root(), "Run")
                   .onExecute([&](const boost::shared_ptr<MvParametersCommandNode>& c) {
                       ++executed;
                       c->setActive(true);
                   });

    ChangeCounter counter;
    tree->model()->addObserver(&counter);
    auto callback = tree->root()->getCallback().lock();
    ASSERT_TRUE(callback);
    callback->setValue(width, boost::any(1024ll));
    callback->setValue(big, boost::any(18446744073709551614ull));
    callback->setValue(gain, boost::any(2.5));
    callback->setValue(flag, boost::any(true));
    callback->setValue(text, boost::any(std::string("abcd")));
    callback->setValue(mode, boost::any(20ll));
    callback->setValue(run.node(), boost::any());

    ASSERT_EQ(tree->calls().size(), 7u);
    EXPECT_EQ(tree->calls()[0].node, width);
    EXPECT_EQ(tree->calls()[0].value.type(), typeid(long long));
    EXPECT_EQ(boost::any_cast<long long>(tree->calls()[0].value), 1024);
    EXPECT_EQ(tree->calls()[1].value.type(), typeid(unsigned long long));
    EXPECT_EQ(tree->calls()[2].value.type(), typeid(double));
    EXPECT_EQ(tree->calls()[3].value.type(), typeid(bool));
    EXPECT_EQ(tree->calls()[4].value.type(), typeid(std::string));
    EXPECT_TRUE(tree->calls()[6].value.empty());
    for (const auto& call : tree->calls())
        EXPECT_TRUE(call.applied) << call.node->getName() << ": " << call.error;

    EXPECT_EQ(width->getNodeValue(), 1024);
    EXPECT_EQ(big->getNodeValue(), 18446744073709551614ull);
    EXPECT_EQ(gain->getNodeValue(), 2.5);
    EXPECT_TRUE(flag->getValueSet());
    EXPECT_EQ(text->getNodeValue(), "abcd");
    EXPECT_EQ(mode->getNodeValue(), "B");
    EXPECT_EQ(mode->getNodeIntValue(), 20);
    EXPECT_EQ(executed, 1);
    EXPECT_TRUE(run.node()->getActive());
    EXPECT_EQ(counter.names,
              (std::vector<std::string>{"Width", "Big", "Gain", "Flag", "Text", "Mode", "Run"}));
    EXPECT_TRUE(counter.errors.empty());
    tree->model()->removeObserver(&counter);
}

TEST(InMemoryParameterTreeTest, refusedWritesChangeNothingAndReportWhy)
{
    auto tree = InMemoryParameterTree::create();
    auto width = tree->integer(tree->root(), "Width").value(640).range(16, 4096).step(16).node();
    auto locked = tree->integer(tree->root(), "Locked").value(1).range(0, 9).access(peamReadOnly).node();
    auto later =
        tree->integer(tree->root(), "Later").range(0, 9).access(peamReadWriteIfValid).dataValid(false).node();
    auto mode =
        tree->enumeration(tree->root(), "Mode").entry("A", 10).entry("B", 20, "", peamNotAvailable).node();
    auto text = tree->string(tree->root(), "Text").maxLength(2).node();

    ChangeCounter counter;
    tree->model()->addObserver(&counter);
    auto callback = tree->root()->getCallback().lock();
    callback->setValue(width, boost::any(5000ll));
    callback->setValue(width, boost::any(17ll));
    callback->setValue(width, boost::any(32)); // int, not long long
    callback->setValue(locked, boost::any(2ll));
    callback->setValue(later, boost::any(2ll));
    callback->setValue(mode, boost::any(20ll));
    callback->setValue(mode, boost::any(30ll));
    callback->setValue(text, boost::any(std::string("abc")));

    EXPECT_EQ(width->getNodeValue(), 640);
    EXPECT_EQ(locked->getNodeValue(), 1);
    EXPECT_EQ(mode->getNodeValue(), "A");
    EXPECT_EQ(text->getNodeValue(), "");
    EXPECT_TRUE(counter.names.empty());
    EXPECT_EQ(counter.errors, (std::vector<std::string>{
                                  "Cannot set Width to 5000: 5000 is above the maximum 4096",
                                  "Cannot set Width to 17: 17 is not a multiple of the increment 16 from 16",
                                  "Cannot set Width: expects a value of type long long",
                                  "Cannot set Locked to 2: the feature is read-only",
                                  "Cannot set Later to 2: the feature is not available",
                                  "Cannot set Mode to B: the entry B is not available",
                                  "Cannot set Mode to 30: no entry has the value 30",
                                  "Cannot set Text to \"abc\": the text is longer than 2 bytes",
                              }));
    ASSERT_EQ(tree->calls().size(), 8u);
    for (const auto& call : tree->calls())
        EXPECT_FALSE(call.applied);
    tree->model()->removeObserver(&counter);
}

TEST(InMemoryParameterTreeTest, incrementIsCheckedAcrossTheWholeSignedRange)
{
    auto tree = InMemoryParameterTree::create();
    const long long min = std::numeric_limits<long long>::min();
    const long long max = std::numeric_limits<long long>::max();
    auto big = tree->integer(tree->root(), "Big").value(min).range(min, max).step(3).node();
    ChangeCounter counter;
    tree->model()->addObserver(&counter);

    // max - min is 2^64 - 1, a multiple of 3.
    EXPECT_TRUE(writeThroughCallback(big, boost::any(max)));
    EXPECT_EQ(big->getNodeValue(), max);
    EXPECT_TRUE(writeThroughCallback(big, boost::any(max - 1)));
    EXPECT_EQ(big->getNodeValue(), max);
    EXPECT_EQ(counter.errors,
              (std::vector<std::string>{
                  "Cannot set Big to 9223372036854775806: 9223372036854775806 is not a multiple of "
                  "the increment 3 from -9223372036854775808"}));
    tree->model()->removeObserver(&counter);
}

TEST(InMemoryParameterTreeTest, expiredCallbackDropsWritesSilently)
{
    auto tree = InMemoryParameterTree::create();
    auto width = tree->integer(tree->root(), "Width").value(1).range(0, 9).node();
    EXPECT_TRUE(writeThroughCallback(width, boost::any(2ll)));
    EXPECT_EQ(width->getNodeValue(), 2);
    tree->releaseCallback();
    EXPECT_FALSE(tree->root()->getCallback().lock());
    EXPECT_FALSE(writeThroughCallback(width, boost::any(3ll)));
    EXPECT_EQ(width->getNodeValue(), 2);
    EXPECT_EQ(tree->calls().size(), 1u);
}

TEST(InMemoryParameterTreeTest, enumerationIntValueWithoutEntryClearsTheSymbol)
{
    auto tree = InMemoryParameterTree::create();
    auto mode = tree->enumeration(tree->root(), "Mode").entry("A", 10).intValue(42).node();
    EXPECT_EQ(mode->getNodeIntValue(), 42);
    EXPECT_EQ(mode->getNodeValue(), "");
    EXPECT_FALSE(mode->getEnumEntryNodesEntry(mode->getNodeValue()));
}

TEST(VornParametersTest, initAndDeinitKeepAUseCount)
{
    const unsigned before = VornParametersUseCount();
    VornParametersInit();
    EXPECT_EQ(VornParametersUseCount(), before + 1);
    VornParametersDeinit();
    EXPECT_EQ(VornParametersUseCount(), before);
    VornParametersDeinit(); // unmatched: ignored, never wraps
    EXPECT_EQ(VornParametersUseCount(), before);
}
