#include <vorn/models/Qt4ParametersCommandNode.h>

#include <vorn/delegate/CenteredCommandButton.h>
#include <vorn/models/private/RowAnswers.h>
#include <vorn/models/private/RowFactory.h>

#include <vorn/host/MvParametersCommandNode.h>

#include <QPushButton>
#include <QSize>

namespace vorn {
namespace core {

using models::MvParametersCommandNode;

Qt4ParametersCommandNode::Qt4ParametersCommandNode(boost::shared_ptr<GenericModel> model,
                                                   boost::shared_ptr<GenericModelNode> node,
                                                   const boost::any& data)
    : QObject(nullptr), Qt4ParametersModelNode(std::move(model), std::move(node), data),
      m_cache(new DisplayCache())
{}

Qt4ParametersCommandNode::Qt4ParametersCommandNode(boost::shared_ptr<GenericModel> model,
                                                   boost::shared_ptr<GenericModelNode> node,
                                                   boost::shared_ptr<GenericModelNode> parentNode,
                                                   const boost::any& data)
    : QObject(nullptr),
      Qt4ParametersModelNode(std::move(model), std::move(node), std::move(parentNode), data),
      m_cache(new DisplayCache())
{}

Qt4ParametersCommandNode::~Qt4ParametersCommandNode()
{
    m_cache.reset();
}

boost::shared_ptr<Qt4ParametersCommandNode>
Qt4ParametersCommandNode::create(boost::shared_ptr<GenericModel> model,
                                 boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersCommandNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersCommandNode>
Qt4ParametersCommandNode::create(boost::shared_ptr<GenericModel> model,
                                 boost::shared_ptr<GenericModelNode> node,
                                 boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersCommandNode>(model, node, parentNode, data);
}

// The texts are read once: a command's name and tool tip do not change while it is shown.
void Qt4ParametersCommandNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    auto command = entry();
    Q_ASSERT(command);
    m_cache->text = rows::text(command->getDisplayName());
    m_cache->toolTip = rows::text(command->getToolTip());
    m_cache->font = rows::rowFonts().plain;
    m_cache->icon = rows::typeIcon(":/parameters/command.png");
}

QVariant Qt4ParametersCommandNode::dataDisplayRole(int column)
{
    return column == 0 ? m_cache->text : QVariant();
}

QVariant Qt4ParametersCommandNode::dataDecorationRole(int column)
{
    return column == 0 ? m_cache->icon : QVariant();
}

QVariant Qt4ParametersCommandNode::dataFontRole(int column)
{
    return column == 0 ? m_cache->font : QVariant();
}

QVariant Qt4ParametersCommandNode::dataToolTipRole(int)
{
    return m_cache->toolTip;
}

QVariant Qt4ParametersCommandNode::dataSizeHintRole(int)
{
    return QSize(-1, 17);
}

bool Qt4ParametersCommandNode::isGridEnabled(int)
{
    return true;
}

bool Qt4ParametersCommandNode::hasIndexWidget(int column)
{
    return column == 1;
}

QWidget* Qt4ParametersCommandNode::createIndexWidget(int column)
{
    if (column != 1)
        return nullptr;
    auto* button = new CenteredCommandButton();
    connect(this, SIGNAL(buttonActive(bool)), button, SLOT(setActivationState(bool)));
    connect(this, SIGNAL(buttonEnabled(bool)), button, SLOT(setEnableState(bool)));
    connect(button->ui.commandButton, SIGNAL(clicked()), this, SLOT(buttonClicked()));
    // The new button shows the command's state at once, not only after the next refresh.
    setupNode();
    return button;
}

void Qt4ParametersCommandNode::setupNode()
{
    auto command = boost::static_pointer_cast<MvParametersCommandNode>(node());
    if (!command)
        return;
    const bool active = command->getActive();
    const bool enabled = command->getAccessMode() == models::peamReadWriteIfValid ||
                         command->getAccessMode() == models::peamReadWrite;
    emit buttonActive(active);
    emit buttonEnabled(enabled);
}

// Executes the command; the button follows when the tree reports the command's new state.
void Qt4ParametersCommandNode::buttonClicked()
{
    if (!node())
        return;
    models::writeThroughCallback(entry(), boost::any());
}

} // namespace core
} // namespace vorn
