#pragma once

#include <vorn/base/VornExport.h>
#include <vorn/host/EnableThisPtr.h>

#include <QMetaType>
#include <QVariant>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <vector>

class QWidget;

namespace vorn {
namespace core {

class GenericModelNode;
class Qt4AbstractModel;
class Qt4GenericModelNode;

// A row of a Qt4AbstractModel. The model forwards every question about an index to the node behind
// it: data() picks the per-role operation, and flags() is made of the per-column is...() answers.
// The virtual operations below are in a fixed order that derived classes rely on; do not reorder.
class VORN_MODELQT4_API Qt4AbstractModelNode : public EnableThisPtr<Qt4AbstractModelNode>
{
public:
    Qt4AbstractModelNode();
    Qt4AbstractModelNode(const Qt4AbstractModelNode& other);
    Qt4AbstractModelNode& operator=(const Qt4AbstractModelNode& other);

    virtual ~Qt4AbstractModelNode();                                                     // 1
    virtual void postInsert() = 0;                                                       // 2
    virtual QVariant data(int column, int role);                                         // 3
    virtual void setCheckedState(int column, Qt::CheckState state);                      // 4
    virtual QVariant dataDisplayRole(int column);                                        // 5
    virtual QVariant dataDecorationRole(int column);                                     // 6
    virtual QVariant dataEditRole(int column);                                           // 7
    virtual QVariant dataFontRole(int column);                                           // 8
    virtual QVariant dataTextAlignmentRole(int column);                                  // 9
    virtual QVariant dataBackgroundRole(int column);                                     // 10
    virtual QVariant dataForegroundRole(int column);                                     // 11
    virtual QVariant dataToolTipRole(int column);                                        // 12
    virtual QVariant dataCheckStateRole(int column);                                     // 13
    virtual QVariant dataSizeHintRole(int column);                                       // 14
    virtual QVariant dataBranchBackgroundRole(int column);                               // 15
    virtual bool isEnabled(int column);                                                  // 16
    virtual bool isReadOnly(int column);                                                 // 17
    virtual bool isSelectable(int column);                                               // 18
    virtual bool isUserCheckable(int column);                                            // 19
    virtual bool getUserFlag(int column);                                                // 20
    virtual bool isGridEnabled(int column);                                              // 21
    virtual bool hasIndexWidget(int column);                                             // 22
    virtual QWidget* createIndexWidget(int column);                                      // 23
    virtual bool enableFirstColumnSpanning();                                            // 24
    virtual bool enableAutoExpand();                                                     // 25
    virtual bool filterAcceptsNode();                                                    // 26
    virtual bool isCustomSortingPossible(boost::shared_ptr<Qt4AbstractModelNode> other); // 27
    virtual bool lessThan(boost::shared_ptr<Qt4AbstractModelNode> other, bool flag);     // 28
    virtual unsigned long long uid();                                                    // 29

    // Binds this node as the root of model and builds the rows below it.
    void setupAsRootNode(boost::shared_ptr<Qt4AbstractModel> model);

    // Tree structure, answered in constant time for the model's index() and parent().
    Qt4AbstractModelNode* parentNode() const { return m_parent; }
    int row() const { return m_row; }
    int childCount() const { return static_cast<int>(m_children.size()); }
    Qt4AbstractModelNode* childAt(int row) const
    {
        return row >= 0 && row < childCount() ? m_children[static_cast<std::size_t>(row)].get() : nullptr;
    }
    // The model this node belongs to; null before it is inserted.
    Qt4AbstractModel* model() const { return m_model; }

protected:
    virtual void setupNode();         // 30
    virtual void setupChildren() = 0; // 31
    virtual boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                             boost::shared_ptr<GenericModelNode> parent,
                                                             const boost::any& extra) = 0; // 32
    virtual boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                             const boost::any& extra) = 0; // 33

    // Appends child as the last row below this node (used while the model builds its rows).
    void appendChildNode(const boost::shared_ptr<Qt4AbstractModelNode>& child);

private:
    friend class Qt4AbstractModel;

    Qt4AbstractModel* m_model = nullptr;
    Qt4AbstractModelNode* m_parent = nullptr;
    std::vector<boost::shared_ptr<Qt4AbstractModelNode>> m_children;
    int m_row = 0;
};

using Qt4AbstractModelNodePtr = boost::shared_ptr<Qt4AbstractModelNode>;

} // namespace core
} // namespace vorn

Q_DECLARE_METATYPE(vorn::core::Qt4AbstractModelNodePtr)
