#pragma once

// Helpers of the GenICam backend tests: where the description files are, and a way to read a whole
// tree back as text.

#include <vorn/host/GenicamParameterTree.h>
#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersCategoryNode.h>
#include <vorn/host/MvParametersCommandNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>

#include <QThread>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace vorn {
namespace test {

using namespace vorn::core;
using namespace vorn::core::models;

inline std::string sharedFile(const std::string& name)
{
    return std::string(VORN_GENICAM_SHARED_DATA) + "/" + name;
}

inline std::string ownFile(const std::string& name)
{
    return std::string(VORN_GENICAM_TEST_DATA) + "/" + name;
}

inline std::uint32_t typeOf(const boost::shared_ptr<MvParametersEntryNode>& node)
{
    return static_cast<const GenericModelNode&>(*node).typeId();
}

inline std::string kindOf(const boost::shared_ptr<MvParametersEntryNode>& node)
{
    switch (typeOf(node)) {
    case pntCategory:
        return "Category";
    case pntInteger:
        return "Integer";
    case pntUInt64:
        return "UInt64";
    case pntFloat:
        return "Float";
    case pntBoolean:
        return "Boolean";
    case pntString:
        return "String";
    case pntEnumeration:
        return "Enumeration";
    case pntCommand:
        return "Command";
    case pntEntry:
        return "Entry";
    default:
        return "?";
    }
}

inline std::vector<boost::shared_ptr<MvParametersEntryNode>>
childrenOf(const boost::shared_ptr<MvParametersEntryNode>& node)
{
    std::vector<boost::shared_ptr<MvParametersEntryNode>> result;
    if (auto children = node->getChildNodesEntryNode()) {
        for (const auto& child : children->children())
            result.push_back(boost::static_pointer_cast<MvParametersEntryNode>(child));
    }
    return result;
}

inline std::vector<std::string> childNames(const boost::shared_ptr<MvParametersEntryNode>& node)
{
    std::vector<std::string> names;
    for (const auto& child : childrenOf(node))
        names.push_back(child->getName());
    return names;
}

inline std::vector<std::string> entryNames(const boost::shared_ptr<MvParametersEntryNode>& node)
{
    std::vector<std::string> names;
    auto enumeration = boost::dynamic_pointer_cast<MvParametersEnumerationNode>(node);
    if (!enumeration)
        return names;
    auto entries = enumeration->getEnumEntryNodes();
    while (entries->hasNext())
        names.push_back(entries->next()->getSymbolic());
    return names;
}

// The value as text, "-" when the data is not valid.
inline std::string valueOf(const boost::shared_ptr<MvParametersEntryNode>& node)
{
    if (!node->getDataValid())
        return "-";
    std::ostringstream out;
    switch (typeOf(node)) {
    case pntInteger:
        out << boost::static_pointer_cast<MvParametersIntegerNode>(node)->getNodeValue();
        break;
    case pntUInt64:
        out << boost::static_pointer_cast<MvParametersUInt64Node>(node)->getNodeValue();
        break;
    case pntFloat:
        out << boost::static_pointer_cast<MvParametersFloatNode>(node)->getNodeValue();
        break;
    case pntBoolean:
        out << (boost::static_pointer_cast<MvParametersBooleanNode>(node)->getValueSet() ? "true" : "false");
        break;
    case pntString:
        out << '"' << boost::static_pointer_cast<MvParametersStringNode>(node)->getNodeValue() << '"';
        break;
    case pntEnumeration:
        out << boost::static_pointer_cast<MvParametersEnumerationNode>(node)->getNodeValue();
        break;
    case pntCommand:
        out << (boost::static_pointer_cast<MvParametersCommandNode>(node)->getActive() ? "active" : "idle");
        break;
    default:
        break;
    }
    return out.str();
}

// One line per node in tree order: indent, name, kind, access mode, visibility and value.
inline void dumpTree(const boost::shared_ptr<MvParametersEntryNode>& node, int depth,
                     std::vector<std::string>& out)
{
    for (const auto& child : childrenOf(node)) {
        std::ostringstream line;
        line << std::string(depth * 2, ' ') << child->getName() << " " << kindOf(child) << " a"
             << child->getAccessMode() << " v" << child->getVisibility() << " " << valueOf(child);
        out.push_back(line.str());
        dumpTree(child, depth + 1, out);
    }
}

inline std::vector<std::string> dumpTree(const boost::shared_ptr<GenicamParameterTree>& tree)
{
    std::vector<std::string> out;
    dumpTree(tree->model()->root(), 0, out);
    return out;
}

// Records what a model tells its observers while it is attached.
class ModelRecorder : public GenericModelObserver
{
public:
    explicit ModelRecorder(const boost::shared_ptr<GenericModel>& model) : m_model(model)
    {
        m_model->addObserver(this);
    }
    ~ModelRecorder() override { m_model->removeObserver(this); }

    void nodesChanged(const std::vector<boost::shared_ptr<GenericModelNode>>& nodes) override
    {
        offGuiThread |= QThread::currentThread() != m_guiThread;
        for (const auto& node : nodes)
            changed.push_back(boost::static_pointer_cast<MvParametersEntryNode>(node)->getName());
    }
    void allNodesChanged() override
    {
        offGuiThread |= QThread::currentThread() != m_guiThread;
        ++allChanged;
    }
    void errorReported(const boost::shared_ptr<GenericModelNode>& node, const std::string& message) override
    {
        offGuiThread |= QThread::currentThread() != m_guiThread;
        errors.push_back(message);
        errorNodes.push_back(node);
    }

    bool sawChange(const std::string& name) const
    {
        return std::find(changed.begin(), changed.end(), name) != changed.end();
    }
    void clear()
    {
        changed.clear();
        errors.clear();
        errorNodes.clear();
        allChanged = 0;
    }

    std::vector<std::string> changed;
    std::vector<std::string> errors;
    std::vector<boost::shared_ptr<GenericModelNode>> errorNodes;
    int allChanged = 0;
    bool offGuiThread = false;

private:
    boost::shared_ptr<GenericModel> m_model;
    QThread* m_guiThread = QThread::currentThread();
};

// Writes through the tree's callback, as a view does, and waits until the device thread answered.
inline void writeAndWait(const boost::shared_ptr<GenicamParameterTree>& tree, const std::string& feature,
                         const boost::any& value)
{
    auto node = tree->find(feature);
    if (!node)
        throw std::runtime_error("no feature " + feature);
    writeThroughCallback(node, value);
    if (!tree->waitIdle(5000))
        throw std::runtime_error("the device thread did not answer");
}

} // namespace test
} // namespace vorn
