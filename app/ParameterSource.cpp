#include "ParameterSource.h"

#include "FeatureTreeWalk.h"
#include "FeatureWriter.h"

#include "example/ExampleTree.h"

#include <QCoreApplication>
#include <QTimer>

#include <boost/make_shared.hpp>

namespace vorn {
namespace browser {

using core::models::GenicamParameterTree;

namespace {

std::unique_ptr<ParameterSource> failed(const std::string& why, QString* error)
{
    if (error)
        *error = QString::fromStdString(why);
    return nullptr;
}

} // namespace

std::unique_ptr<ParameterSource> ParameterSource::openSimulated(QString* error)
{
    std::string why;
    auto tree = GenicamParameterTree::openSimulated(&why);
    if (!tree)
        return failed("cannot open the simulated camera: " + why, error);
    std::unique_ptr<ParameterSource> source(new ParameterSource);
    source->m_device = tree;
    source->m_description = QStringLiteral("simulated camera");
    source->keepHistory();
    return source;
}

std::unique_ptr<ParameterSource> ParameterSource::openXmlFile(const QString& path, QString* error)
{
    std::string why;
    auto tree = GenicamParameterTree::openXmlFile(path.toStdString(), &why);
    if (!tree)
        return failed(why, error);
    std::unique_ptr<ParameterSource> source(new ParameterSource);
    source->m_device = tree;
    source->m_description = path;
    source->m_offline = true;
    source->keepHistory();
    return source;
}

std::unique_ptr<ParameterSource> ParameterSource::openDevice(const QString& deviceId, QString* error)
{
    std::string why;
    auto tree = GenicamParameterTree::openDevice(deviceId.toStdString(), &why);
    if (!tree)
        return failed(why.empty() ? "no device " + deviceId.toStdString() : why, error);
    return ofDevice(deviceId, tree);
}

std::unique_ptr<GenicamParameterTree::Opening> ParameterSource::openDeviceLater(const QString& deviceId,
                                                                                OpenDone done)
{
    return GenicamParameterTree::openDeviceLater(
        deviceId.toStdString(),
        [deviceId, done](boost::shared_ptr<GenicamParameterTree> tree, const std::string& why) {
            if (!tree) {
                done(nullptr,
                     QString::fromStdString(why.empty() ? "no device " + deviceId.toStdString() : why));
                return;
            }
            done(ofDevice(deviceId, tree), QString());
        });
}

std::unique_ptr<ParameterSource>
ParameterSource::ofDevice(const QString& deviceId, const boost::shared_ptr<GenicamParameterTree>& tree)
{
    std::unique_ptr<ParameterSource> source(new ParameterSource);
    source->m_device = tree;
    source->m_address = deviceId;
    // The device as it named itself, so that the title and the status say which camera this is.
    source->m_description =
        tree->identity().empty()
            ? deviceId
            : QStringLiteral("%1 (%2)").arg(deviceId, QString::fromStdString(tree->identity()));
    source->keepHistory();
    return source;
}

std::unique_ptr<ParameterSource> ParameterSource::openExample()
{
    std::unique_ptr<ParameterSource> source(new ParameterSource);
    source->m_example = example::buildExampleTree();
    source->m_description = QStringLiteral("example device");
    source->keepHistory();
    return source;
}

ParameterSource::~ParameterSource()
{
    // The tree's root forgets the history before the history goes.
    if (m_history && model())
        model()->root()->setCallback(m_history->tree());
}

void ParameterSource::keepHistory()
{
    auto tree = model()->root()->getCallback().lock();
    if (!tree)
        return;
    m_history = boost::make_shared<EditHistory>(tree);
    model()->root()->setCallback(m_history);
}

bool ParameterSource::undo(std::vector<FeatureFailure>* failures, std::string* what)
{
    if (!m_history || m_history->empty())
        return false;
    const EditHistory::Change change = m_history->takeLatest();
    *what = change.previous.key() + ": " + change.now + " back to " + change.previous.value;
    m_history->pause(true);
    *failures = FeatureWriter(*this).apply({change.previous});
    m_history->pause(false);
    return true;
}

boost::shared_ptr<core::models::MvParametersModel> ParameterSource::model() const
{
    return m_device ? m_device->model() : m_example->model();
}

QString ParameterSource::description() const
{
    return m_description;
}

std::vector<std::pair<std::string, std::vector<std::string>>> ParameterSource::selectors() const
{
    return m_device ? m_device->selectors() : std::vector<std::pair<std::string, std::vector<std::string>>>();
}

int ParameterSource::pollingMs(const std::string& feature) const
{
    return m_device ? m_device->pollingMs(feature) : 0;
}

void ParameterSource::readRegister(std::uint64_t address, RegisterAnswer done)
{
    if (!m_device) {
        done(false, 0, "the example device has no registers");
        return;
    }
    m_device->readRegister(address, std::move(done));
}

void ParameterSource::writeRegister(std::uint64_t address, std::uint32_t value, RegisterAnswer done)
{
    if (!m_device) {
        done(false, 0, "the example device has no registers");
        return;
    }
    m_device->writeRegister(address, value, std::move(done));
}

bool ParameterSource::isConnected() const
{
    return !m_device || m_device->deviceState() == GenicamParameterTree::dsConnected;
}

QString ParameterSource::answeringDevice() const
{
    if (!m_device || m_device->deviceState() != GenicamParameterTree::dsOtherDevice)
        return QString();
    return QStringLiteral("%1 (%2)").arg(m_address, QString::fromStdString(m_device->answeringDevice()));
}

std::vector<ParameterSource::EntryPtr> ParameterSource::nodesNamed(const std::string& name) const
{
    std::vector<EntryPtr> found;
    FeatureTreeWalk::forEach(model()->root(), [&](const EntryPtr& node, int) {
        if (node->getName() == name)
            found.push_back(node);
    });
    return found;
}

bool ParameterSource::waitIdle(int timeoutMs)
{
    if (m_device)
        return m_device->waitIdle(timeoutMs);
    // The example tree answers every write at once; only its timers run later.
    QCoreApplication::processEvents();
    return true;
}

void ParameterSource::whenIdle(std::function<void()> done)
{
    if (m_device) {
        m_device->whenIdle(std::move(done));
        return;
    }
    // The example tree answers every write at once.
    QTimer::singleShot(0, m_idleContext.get(), std::move(done));
}

void ParameterSource::setFeaturesOnScreen(const std::vector<std::string>& features)
{
    // The example tree changes only by its own writes: nothing to poll.
    if (m_device)
        m_device->setFeaturesOnScreen(features);
}

void ParameterSource::refresh()
{
    if (m_device)
        m_device->refresh();
    else
        m_example->notifyAllChanged();
}

} // namespace browser
} // namespace vorn
