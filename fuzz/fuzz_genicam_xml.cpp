// GenICam descriptions of any content, opened through the GenICam backend as a host opens a file:
// the description is checked, parsed, mapped onto parameter nodes and served by a simulated device on
// the tree's device thread. A file the backend cannot use must give an error that names it; a file it
// opens must give a tree that a model can show and that answers writes (each refused write with one
// message) without hanging.
#include "FuzzSupport.h"

#include <vorn/host/GenicamParameterTree.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>

#include <QDir>
#include <QFile>

#include <vector>

using namespace vorn::core;
using namespace vorn::core::models;

namespace {

// How many features of a tree get written to; enough to reach every kind in the seeds.
const int kWrites = 24;
// How many rows have every role read. A description may make up to 250,000 rows (a lattice of
// categories that list each other twice); past a few thousand the rows repeat the shapes already
// read, and reading them all under the sanitizers would outlast the fuzzer's time limit per input.
const int kReadRows = 5000;

class ErrorCounter : public GenericModelObserver
{
public:
    explicit ErrorCounter(const boost::shared_ptr<GenericModel>& model) : m_model(model)
    {
        m_model->addObserver(this);
    }
    ~ErrorCounter() override { m_model->removeObserver(this); }
    void nodesChanged(const std::vector<boost::shared_ptr<GenericModelNode>>&) override {}
    void allNodesChanged() override {}
    void errorReported(const boost::shared_ptr<GenericModelNode>&, const std::string& message) override
    {
        FUZZ_CHECK(message.rfind("Cannot ", 0) == 0, "unclear error '%s'", message.c_str());
        ++errors;
    }
    int errors = 0;

private:
    boost::shared_ptr<GenericModel> m_model;
};

// Every node below root in tree order; the nesting is the input's, so the walk keeps its own stack.
void collect(const boost::shared_ptr<MvParametersEntryNode>& root,
             std::vector<boost::shared_ptr<MvParametersEntryNode>>& out)
{
    std::vector<boost::shared_ptr<MvParametersEntryNode>> pending{root};
    while (!pending.empty()) {
        const auto node = pending.back();
        pending.pop_back();
        if (node != root)
            out.push_back(node);
        if (auto children = node->getChildNodesEntryNode()) {
            const auto& list = children->children();
            for (auto it = list.rbegin(); it != list.rend(); ++it)
                pending.push_back(boost::static_pointer_cast<MvParametersEntryNode>(*it));
        }
    }
}

// A value of the node's own type, a little off its current one (or outside its range).
boost::any valueFor(const boost::shared_ptr<MvParametersEntryNode>& node, int n)
{
    switch (static_cast<const GenericModelNode&>(*node).typeId()) {
    case pntInteger:
        return boost::any(static_cast<long long>(n * 7 - 3));
    case pntUInt64:
        return boost::any(static_cast<unsigned long long>(n) << 40);
    case pntFloat:
        return boost::any(n * 0.5 - 1.0);
    case pntBoolean:
        return boost::any(n % 2 == 0);
    case pntString:
        return boost::any(std::string(static_cast<std::size_t>(n), 'x'));
    case pntEnumeration: {
        auto entries = boost::static_pointer_cast<MvParametersEnumerationNode>(node)->getEnumEntryNodes();
        long long value = n;
        for (int i = 0; i <= n % 3 && entries->hasNext(); ++i)
            value = entries->next()->getValue();
        return boost::any(value);
    }
    case pntCommand:
        return boost::any();
    default:
        return boost::any(n); // categories and plain entries hold no value
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QString path =
        QDir::temp().filePath(QStringLiteral("vorn-fuzz-genicam-%1.xml").arg(getpid()));
    {
        QFile file(path);
        FUZZ_CHECK(file.open(QIODevice::WriteOnly | QIODevice::Truncate), "cannot write %s",
                   qPrintable(path));
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    const std::string file = path.toStdString();
    std::string error;
    auto tree = GenicamParameterTree::openXmlFile(file, &error);
    if (!tree) {
        FUZZ_CHECK(error.rfind(file + ": ", 0) == 0, "unclear error '%s'", error.c_str());
        return 0;
    }
    FUZZ_CHECK(error.empty(), "an opened tree with the error '%s'", error.c_str());

    // Shown by a model, every role of every row read once.
    auto model = Qt4ParametersModel::create(
        Qt4ParametersModelNode::create(tree->model(), tree->model()->root(), boost::any()));
    std::vector<QModelIndex> pending{QModelIndex()};
    int rowsRead = 0;
    while (!pending.empty() && rowsRead < kReadRows) {
        const QModelIndex parent = pending.back();
        pending.pop_back();
        for (int row = 0; row < model->rowCount(parent) && rowsRead < kReadRows; ++row, ++rowsRead) {
            for (int column = 0; column < model->columnCount(parent); ++column) {
                const QModelIndex index = model->index(row, column, parent);
                for (int role = Qt::DisplayRole; role <= Qt::SizeHintRole; ++role)
                    index.data(role);
            }
            pending.push_back(model->index(row, 0, parent));
        }
    }

    // Writes of every kind; the device thread answers all of them, refusals with one message each.
    std::vector<boost::shared_ptr<MvParametersEntryNode>> nodes;
    collect(tree->model()->root(), nodes);
    ErrorCounter counter(tree->model());
    int writes = 0;
    for (std::size_t i = 0; i < nodes.size() && writes < kWrites; ++i, ++writes)
        FUZZ_CHECK(writeThroughCallback(nodes[i], valueFor(nodes[i], writes)), "write dropped");
    FUZZ_CHECK(tree->waitIdle(10000), "the device thread did not answer %d writes in 10 s", writes);
    FUZZ_CHECK(counter.errors <= writes, "%d errors for %d writes", counter.errors, writes);
    return 0;
}
