#pragma once

#include <vorn/models/Qt4ParametersModelNode.h>

#include <QObject>

namespace vorn {
namespace core {

// The row of a command: name, icon and tool tip in column 0, and an "Execute" button as the index
// widget of column 1. A click executes the command through the tree's callback; setupNode() pushes
// the command's active and enabled state to the button whenever the framework refreshes the row.
class VORN_PARAMETERSQT4_API Qt4ParametersCommandNode : public QObject, public Qt4ParametersModelNode
{
    Q_OBJECT

public:
    Qt4ParametersCommandNode(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
                             const boost::any& data);
    Qt4ParametersCommandNode(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
                             boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);
    ~Qt4ParametersCommandNode() override;

    static boost::shared_ptr<Qt4ParametersCommandNode> create(boost::shared_ptr<GenericModel> model,
                                                              boost::shared_ptr<GenericModelNode> node,
                                                              const boost::any& data);
    static boost::shared_ptr<Qt4ParametersCommandNode> create(boost::shared_ptr<GenericModel> model,
                                                              boost::shared_ptr<GenericModelNode> node,
                                                              boost::shared_ptr<GenericModelNode> parentNode,
                                                              const boost::any& data);

    void postInsert() override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataToolTipRole(int column) override;
    QVariant dataSizeHintRole(int column) override;
    bool isGridEnabled(int column) override;
    bool hasIndexWidget(int column) override;
    QWidget* createIndexWidget(int column) override;

signals:
    void buttonActive(bool isActive);
    void buttonEnabled(bool isEnabled);

public slots:
    void buttonClicked();

protected:
    void setupNode() override;

private:
    // What column 0 shows, read once when the row is inserted.
    struct DisplayCache
    {
        QVariant text;
        QVariant toolTip;
        QVariant font;
        QVariant icon;
    };
    boost::shared_ptr<DisplayCache> m_cache;
};

} // namespace core
} // namespace vorn
