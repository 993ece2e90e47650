#pragma once

#include <vorn/host/GenericModelNode.h>
#include <vorn/host/ParameterEnums.h>

#include <string>

namespace vorn {
namespace core {
namespace models {

// Gives a node class its dynamic identity: Derived::typeId() answered through GenericModelNode's
// type id slot, so that a static typeId() and the virtual query never share a name.
template <class Derived, class Base> class TypedParameterNode : public Base
{
public:
    using Base::Base;

protected:
    std::uint32_t doTypeId() const override { return Derived::typeId(); }
};

// Every parameter of a tree: name, texts, type, visibility, access and validity. The setters are for
// the owner of the tree (a backend or a builder); views only read.
class VORN_PARAMETERS_API MvParametersEntryNode : public GenericModelNode
{
public:
    // The node whose children are the entries shown below this one (the features of a category).
    class VORN_PARAMETERS_API ChildNodesEntryNode : public GenericModelNode
    {
    public:
        using GenericModelNode::GenericModelNode;
        static std::uint32_t typeId() { return pntChildNodes; }

    protected:
        std::uint32_t doTypeId() const override { return pntChildNodes; }
    };

    MvParametersEntryNode(const boost::shared_ptr<GenericModel>& model, const std::string& name);
    ~MvParametersEntryNode() override;

    // Beware: called through a pointer of a derived class this static member answers for that
    // class; the dynamic identity is GenericModelNode::typeId() through a GenericModelNode pointer.
    static std::uint32_t typeId() { return pntEntry; }

    const std::string& getName() const { return m_name; }
    const std::string& getDisplayName() const { return m_displayName.empty() ? m_name : m_displayName; }
    const std::string& getToolTip() const { return m_toolTip; }
    const std::string& getDescription() const { return m_description; }
    ParameterEntryType getType() const { return m_type; }
    ParameterEntryVisibility getVisibility() const { return m_visibility; }
    ParameterEntryAccessMode getAccessMode() const { return m_accessMode; }
    bool getDataValid() const { return m_dataValid; }

    // Empty for a node that has no children.
    boost::shared_ptr<ChildNodesEntryNode> getChildNodesEntryNode() const { return m_childNodes; }

    void setDisplayName(const std::string& text) { m_displayName = text; }
    void setToolTip(const std::string& text) { m_toolTip = text; }
    void setDescription(const std::string& text) { m_description = text; }
    void setType(ParameterEntryType type) { m_type = type; }
    void setVisibility(ParameterEntryVisibility visibility) { m_visibility = visibility; }
    void setAccessMode(ParameterEntryAccessMode mode) { m_accessMode = mode; }
    void setDataValid(bool valid) { m_dataValid = valid; }

    // Appends child below this entry: it joins the child nodes and this entry becomes its parent.
    void addChild(const boost::shared_ptr<MvParametersEntryNode>& child);

    // Whether the access mode allows a write now (read/write, or read/write with valid data).
    bool isWritable() const;

protected:
    std::uint32_t doTypeId() const override { return pntEntry; }

private:
    std::string m_name;
    std::string m_displayName;
    std::string m_toolTip;
    std::string m_description;
    boost::shared_ptr<ChildNodesEntryNode> m_childNodes;
    ParameterEntryType m_type = petFeature;
    ParameterEntryVisibility m_visibility = pevBeginner;
    ParameterEntryAccessMode m_accessMode = peamReadWrite;
    bool m_dataValid = true;
};

} // namespace models
} // namespace core
} // namespace vorn
