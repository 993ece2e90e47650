#include "BrowserWindow.h"

#include "FeatureIndex.h"

#include "DeviceDialog.h"
#include "ElidedLabel.h"
#include "FeatureDetailsPane.h"
#include "FeatureModelStack.h"
#include "FeatureSearchModel.h"
#include "FeatureValueStore.h"
#include "ParameterSource.h"
#include "RegisterDialog.h"

#include <vorn/delegate/Qt4ParametersItemDelegate.h>
#include <vorn/host/ParameterKind.h>
#include <vorn/host/Qt4GenericModelNode.h>
#include <vorn/host/Qt4GenericTreeView.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolBar>

#include <algorithm>

namespace vorn {
namespace browser {

using core::models::ParameterEntryVisibility;

namespace {

QComboBox* comboBox(const QString& objectName, const QStringList& items, const QString& toolTip,
                    QWidget* parent)
{
    auto* box = new QComboBox(parent);
    box->setObjectName(objectName);
    box->addItems(items);
    box->setToolTip(toolTip);
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return box;
}

// The visibility box lists Beginner, Expert, Guru and All; All is the filter's level 4.
int visibilityIndex(ParameterEntryVisibility level)
{
    return level >= core::models::pevInvisible ? 3 : static_cast<int>(level);
}

ParameterEntryVisibility visibilityAt(int index)
{
    return index >= 3 ? core::models::pevAll : static_cast<ParameterEntryVisibility>(index);
}

} // namespace

BrowserWindow::BrowserWindow(QWidget* parent) : QMainWindow(parent)
{
    setWindowTitle(QStringLiteral("Parameter Browser"));

    m_view = new core::Qt4GenericTreeView;
    m_view->setObjectName(QStringLiteral("featureTree"));
    m_view->installEventFilter(this);
    m_view->setAlternatingRowColors(true);
    m_view->setUniformRowHeights(false);
    m_view->setAllColumnsShowFocus(true);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->header()->setStretchLastSection(true);
    m_view->header()->setSectionsMovable(false);

    m_details = new FeatureDetailsPane;
    m_details->setObjectName(QStringLiteral("detailsPane"));

    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->addWidget(m_view);
    m_splitter->addWidget(m_details);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setChildrenCollapsible(false);
    setCentralWidget(m_splitter);

    // What happened when: device events, refused writes, loads and saves. The status bar shows
    // only the current state.
    m_log = new QPlainTextEdit;
    m_log->setObjectName(QStringLiteral("log"));
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(kLogLines);
    auto* logDock = new QDockWidget(QStringLiteral("Log"), this);
    logDock->setObjectName(QStringLiteral("logDock"));
    logDock->setWidget(m_log);
    addDockWidget(Qt::BottomDockWidgetArea, logDock);
    logDock->hide();

    buildActions();
    buildToolBar();
    buildStatusBar();
    showDeviceState();

    m_stateTimer = new QTimer(this);
    m_stateTimer->setInterval(500);
    connect(m_stateTimer, &QTimer::timeout, this, &BrowserWindow::updateDeviceState);
    m_stateTimer->start();

    // Scrolling, expanding or filtering changes what is on screen many times a second: the source
    // hears of it once things settle.
    m_onScreenTimer = new QTimer(this);
    m_onScreenTimer->setSingleShot(true);
    m_onScreenTimer->setInterval(50);
    connect(m_onScreenTimer, &QTimer::timeout, this, &BrowserWindow::tellFeaturesOnScreen);
    connect(m_view->verticalScrollBar(), &QScrollBar::valueChanged, this, &BrowserWindow::scheduleOnScreen);
    connect(m_view, &QTreeView::expanded, this, &BrowserWindow::scheduleOnScreen);
    connect(m_view, &QTreeView::collapsed, this, &BrowserWindow::scheduleOnScreen);
    m_view->viewport()->installEventFilter(this);

    // The remembered choices; the command line may change them before the window shows.
    setModelKind(m_settings.modelKind());
    setVisibility(m_settings.visibility());
    setViewMode(m_settings.viewMode());

    resize(defaultSize());
    m_splitter->setSizes({560, 160});
    restoreGeometry(m_settings.windowGeometry());
    m_splitter->restoreState(m_settings.splitterState());
}

// The view goes first, while the models and the delegate it uses still exist.
BrowserWindow::~BrowserWindow()
{
    // Hiding the view as it goes would report to a window half gone.
    m_view->viewport()->removeEventFilter(this);
    m_view->removeEventFilter(this);
    delete m_view;
    m_view = nullptr;
}

void BrowserWindow::buildActions()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    QAction* open =
        file->addAction(QStringLiteral("&Open Description..."), this, &BrowserWindow::openDescription);
    open->setShortcut(QKeySequence::Open);
    file->addAction(QStringLiteral("&Connect to Device..."), this, &BrowserWindow::connectToDevice);
    file->addAction(QStringLiteral("Open &Simulated Camera"), this, &BrowserWindow::openSimulatedCamera);
    file->addAction(QStringLiteral("Open &Example Device"), this, &BrowserWindow::openExampleDevice);
    // Another window beside this one, for a second device: each tree has a device thread of its own.
    QAction* newWindow = file->addAction(QStringLiteral("&New Window"), this, [] {
        auto* window = new BrowserWindow;
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
    });
    newWindow->setObjectName(QStringLiteral("newWindowAction"));
    newWindow->setShortcut(QKeySequence::New);
    file->addSeparator();
    QAction* save =
        file->addAction(QStringLiteral("Sa&ve Feature Values..."), this, &BrowserWindow::saveValuesAs);
    save->setShortcut(QKeySequence::Save);
    file->addAction(QStringLiteral("&Load Feature Values..."), this, &BrowserWindow::loadValuesFrom);
    file->addSeparator();
    QAction* quit = file->addAction(QStringLiteral("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);

    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    QAction* undo = edit->addAction(QStringLiteral("&Undo"), this, [this] { undoLastChange(); });
    undo->setObjectName(QStringLiteral("undoAction"));
    undo->setShortcut(QKeySequence::Undo);
    undo->setToolTip(QStringLiteral("Writes back the value before the last change"));

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    if (auto* dock = findChild<QDockWidget*>(QStringLiteral("logDock")))
        view->addAction(dock->toggleViewAction());
    view->addSeparator();
    m_registersAction = view->addAction(QStringLiteral("&Registers..."), this, [this] { openRegisters(); });
    m_registersAction->setObjectName(QStringLiteral("registersAction"));
    m_registersAction->setToolTip(
        QStringLiteral("Reads and writes a register by address (from the Guru level on)"));
    view->addAction(QStringLiteral("&Expand All"), m_view, &QTreeView::expandAll);
    view->addAction(QStringLiteral("&Collapse All"), m_view, &QTreeView::collapseAll);
}

void BrowserWindow::buildToolBar()
{
    QToolBar* bar = addToolBar(QStringLiteral("View"));
    bar->setObjectName(QStringLiteral("viewToolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);

    auto addLabelled = [bar](const QString& label, QWidget* widget) {
        auto* text = new QLabel(label, bar);
        text->setContentsMargins(6, 0, 4, 0);
        text->setBuddy(widget);
        bar->addWidget(text);
        bar->addWidget(widget);
    };

    m_visibilityBox = comboBox(
        QStringLiteral("visibilityBox"),
        {QStringLiteral("Beginner"), QStringLiteral("Expert"), QStringLiteral("Guru"), QStringLiteral("All")},
        QStringLiteral("Shows the features up to this level; All also shows invisible ones"), bar);
    addLabelled(QStringLiteral("&Visibility:"), m_visibilityBox);

    m_modelBox = comboBox(QStringLiteral("modelBox"),
                          {QStringLiteral("Plain"), QStringLiteral("Styled"), QStringLiteral("Events")},
                          QStringLiteral("Plain: compact rows; Styled: grid, icons and integer details; "
                                         "Events: the boolean features as check boxes"),
                          bar);
    addLabelled(QStringLiteral("&Model:"), m_modelBox);
    // What each model is for, on its entry in the list.
    m_modelBox->setItemData(0, QStringLiteral("Name and value in two compact columns, every category open"),
                            Qt::ToolTipRole);
    m_modelBox->setItemData(1,
                            QStringLiteral("A grid with kind icons, integers in decimal, hex or binary, "
                                           "read-only values greyed: for reading and editing values"),
                            Qt::ToolTipRole);
    m_modelBox->setItemData(2,
                            QStringLiteral("Only the on/off features (event and trigger switches) as check "
                                           "boxes: to see and flip many of them at once"),
                            Qt::ToolTipRole);

    m_viewModeBox = comboBox(QStringLiteral("viewModeBox"),
                             {QStringLiteral("Decimal"), QStringLiteral("Hex"), QStringLiteral("Binary")},
                             QStringLiteral("How the styled model writes integers"), bar);
    addLabelled(QStringLiteral("&Integers:"), m_viewModeBox);

    bar->addSeparator();
    m_searchBox = new QLineEdit(bar);
    m_searchBox->setObjectName(QStringLiteral("searchBox"));
    m_searchBox->setPlaceholderText(QStringLiteral("Search features"));
    m_searchBox->setClearButtonEnabled(true);
    m_searchBox->setMinimumWidth(180);
    m_searchBox->setMaximumWidth(300);
    m_searchBox->setToolTip(QStringLiteral("Shows the features whose name contains this text"));
    bar->addWidget(m_searchBox);

    QAction* refresh = bar->addAction(style()->standardIcon(QStyle::SP_BrowserReload),
                                      QStringLiteral("Refresh"), this, &BrowserWindow::refresh);
    refresh->setObjectName(QStringLiteral("refreshAction"));
    refresh->setShortcut(QKeySequence::Refresh);
    refresh->setToolTip(QStringLiteral("Reads every value from the device again (F5)"));

    // currentIndexChanged applies a choice however it was made; activated (a person's choice only)
    // also remembers it for the next run.
    connect(m_visibilityBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int index) {
        if (!m_models)
            return;
        const auto selected = currentFeature();
        rememberExpansion();
        m_models->setVisibility(visibilityAt(index));
        updateRegistersAction();
        if (selected)
            selectFeature(QString::fromStdString(selected->getName()));
        restoreExpansion();
    });
    connect(m_visibilityBox, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { m_settings.setVisibility(visibilityAt(index)); });
    connect(m_modelBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this] { rebuildModels(); });
    connect(m_modelBox, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { m_settings.setModelKind(static_cast<ModelKind>(index)); });
    connect(m_viewModeBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int index) {
        BrowserSettings::applyViewMode(static_cast<IntegerViewMode>(index));
        // The styled rows read the host setting whenever they are asked for their text.
        if (m_models)
            m_models->refreshAll();
    });
    connect(m_viewModeBox, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { m_settings.setViewMode(static_cast<IntegerViewMode>(index)); });
    connect(m_searchBox, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (!m_models)
            return;
        const auto selected = currentFeature();
        rememberExpansion();
        m_searching = !text.trimmed().isEmpty();
        m_models->setSearchText(text);
        if (selected)
            selectFeature(QString::fromStdString(selected->getName()));
        restoreExpansion();
    });
}

void BrowserWindow::buildStatusBar()
{
    m_stateLabel = new ElidedLabel(this);
    m_stateLabel->setObjectName(QStringLiteral("deviceStateLabel"));
    // The state is short and always shown whole; the error takes what is left and is shortened.
    m_stateLabel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    m_stateLabel->setContentsMargins(2, 0, 12, 0);
    m_errorLabel = new ElidedLabel(this);
    m_errorLabel->setObjectName(QStringLiteral("lastErrorLabel"));
    QPalette alert = m_errorLabel->palette();
    alert.setColor(QPalette::WindowText, QColor(170, 20, 20));
    m_errorLabel->setPalette(alert);
    statusBar()->addWidget(m_stateLabel);
    statusBar()->addWidget(m_errorLabel, 1);
}

class BrowserWindow::WritesUnderWay
{
public:
    explicit WritesUnderWay(BrowserWindow* window) : m_window(window) { ++m_window->m_writesUnderWay; }
    ~WritesUnderWay()
    {
        if (--m_window->m_writesUnderWay == 0)
            m_window->afterWrites();
    }
    WritesUnderWay(const WritesUnderWay&) = delete;
    WritesUnderWay& operator=(const WritesUnderWay&) = delete;

private:
    BrowserWindow* m_window;
};

void BrowserWindow::afterWrites()
{
    Q_ASSERT(m_writesUnderWay == 0);
    if (m_sourceWaiting) {
        m_sourceWaiting = false;
        setSource(std::move(m_nextSource));
    }
    if (m_closeWaiting) {
        m_closeWaiting = false;
        close();
    }
}

void BrowserWindow::setSource(std::unique_ptr<ParameterSource> source)
{
    if (m_writesUnderWay > 0) {
        // The newest choice wins; the tree in use stays until its writes are answered.
        m_nextSource = std::move(source);
        m_sourceWaiting = true;
        log(QStringLiteral(
            "Waiting for the writes under way to be answered before the next source is shown"));
        return;
    }
    // The register dialog reads through the old source: it goes first.
    delete m_registers.data();
    // The models over the old tree go before the tree itself.
    m_view->setModel(nullptr);
    m_models.reset();
    m_source = std::move(source);
    m_commandsRunning.clear();
    if (m_source)
        m_source->setCommandObserver(
            [this](const std::string& name) { commandStarted(QString::fromLatin1(name.c_str())); });
    m_expanded.clear();
    m_expansionKnown = false;
    m_searching = !m_searchBox->text().trimmed().isEmpty();
    m_errorLabel->setFullText(QString());
    setWindowTitle(m_source ? QStringLiteral("%1 - Parameter Browser").arg(m_source->description())
                            : QStringLiteral("Parameter Browser"));
    rebuildModels();
    updateDeviceState();
    updateRegistersAction();
}

// How a host shows a parameter tree: a root row over the tree's root node, the chosen model over it,
// the filter model for visibility levels (here under a search filter of the browser's own), the
// framework's tree view and the library's item delegate.
void BrowserWindow::rebuildModels()
{
    if (!m_source)
        return;
    const auto selected = currentFeature();
    rememberExpansion();
    m_view->setModel(nullptr);
    m_models.reset(new FeatureModelStack(m_source->model(), modelKind()));
    m_models->setVisibility(visibility());
    m_models->setSearchText(m_searchBox->text());
    installDelegate();
    m_view->setModel(m_models->view());
    restoreExpansion();

    connect(m_models->parameters(), &core::Qt4GenericModel::errorReported, this, &BrowserWindow::reportError);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &BrowserWindow::showCurrentFeature);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &BrowserWindow::scheduleOnScreen);
    QAbstractItemModel* shown = m_models->view();
    connect(shown, &QAbstractItemModel::rowsInserted, this, &BrowserWindow::scheduleOnScreen);
    connect(shown, &QAbstractItemModel::rowsRemoved, this, &BrowserWindow::scheduleOnScreen);
    connect(shown, &QAbstractItemModel::layoutChanged, this, &BrowserWindow::scheduleOnScreen);
    connect(shown, &QAbstractItemModel::modelReset, this, &BrowserWindow::scheduleOnScreen);
    m_featuresOnScreen.clear();
    scheduleOnScreen();
    // The integer view mode only changes what the styled model shows.
    m_viewModeBox->setEnabled(modelKind() == ModelKind::Styled);

    fitFeatureColumn();
    if (!selected || !selectFeature(QString::fromStdString(selected->getName())))
        showCurrentFeature();
}

bool BrowserWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (m_view && watched == m_view->viewport()) {
        if (event->type() == QEvent::Resize || event->type() == QEvent::Show || event->type() == QEvent::Hide)
            scheduleOnScreen();
        return QMainWindow::eventFilter(watched, event);
    }
    if (watched != m_view || event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid())
        return QMainWindow::eventFilter(watched, event);
    // The value is in the last column (the events model has only one).
    const QModelIndex value =
        current.sibling(current.row(), m_view->model()->columnCount(current.parent()) - 1);
    if (key == Qt::Key_Space) {
        QWidget* cell = m_view->indexWidget(value);
        auto* button = cell ? cell->findChild<QAbstractButton*>() : nullptr;
        if (button) {
            if (button->isEnabled())
                button->click();
            return true;
        }
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2) {
        if (value.flags() & Qt::ItemIsEditable) {
            m_view->setCurrentIndex(value);
            m_view->edit(value);
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void BrowserWindow::scheduleOnScreen()
{
    m_onScreenTimer->start();
}

void BrowserWindow::tellFeaturesOnScreen()
{
    if (!m_source || !m_view->model())
        return;
    std::vector<std::string> names;
    if (m_view->viewport()->isVisible()) {
        // The rows from the top of the viewport to its bottom: as many as fit on screen.
        const int bottom = m_view->viewport()->height();
        for (QModelIndex index = m_view->indexAt(QPoint(0, 0)); index.isValid();
             index = m_view->indexBelow(index)) {
            if (m_view->visualRect(index).top() >= bottom)
                break;
            if (const auto feature = featureAt(index))
                names.push_back(feature->getName());
        }
    }
    // The description pane shows the current feature wherever the view is scrolled.
    if (const auto current = currentFeature())
        names.push_back(current->getName());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    if (names == m_featuresOnScreen)
        return;
    m_featuresOnScreen = names;
    m_source->setFeaturesOnScreen(names);
}

void BrowserWindow::rememberExpansion()
{
    QAbstractItemModel* model = m_view->model();
    if (!model || m_searching || !m_expansionKnown)
        return;
    m_expanded.clear();
    std::vector<QModelIndex> pending{QModelIndex()};
    while (!pending.empty()) {
        const QModelIndex parent = pending.back();
        pending.pop_back();
        for (int row = 0; row < model->rowCount(parent); ++row) {
            const QModelIndex index = model->index(row, 0, parent);
            if (!m_view->isExpanded(index))
                continue;
            if (const auto feature = featureAt(index))
                m_expanded.insert(feature->getName());
            pending.push_back(index);
        }
    }
}

// Now, and once more when the view has applied the rows' own expansion hooks (which it does after
// the events of a change).
void BrowserWindow::restoreExpansion()
{
    applyExpansion();
    QTimer::singleShot(0, this, [this] { applyExpansion(); });
}

void BrowserWindow::applyExpansion()
{
    QAbstractItemModel* model = m_view->model();
    if (!model)
        return;
    if (m_searching) {
        // A search shows every match with its categories.
        m_view->expandAll();
        return;
    }
    if (!m_expansionKnown) {
        m_expanded.clear();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (const auto feature = featureAt(model->index(row, 0)))
                m_expanded.insert(feature->getName());
        }
        m_expansionKnown = true;
    }
    std::vector<QModelIndex> pending{QModelIndex()};
    while (!pending.empty()) {
        const QModelIndex parent = pending.back();
        pending.pop_back();
        for (int row = 0; row < model->rowCount(parent); ++row) {
            const QModelIndex index = model->index(row, 0, parent);
            if (model->rowCount(index) == 0)
                continue;
            const auto feature = featureAt(index);
            const bool expand = feature && m_expanded.count(feature->getName());
            m_view->setExpanded(index, expand);
            if (expand)
                pending.push_back(index);
        }
    }
    // The selected feature stays in sight.
    if (m_view->selectionModel())
        for (QModelIndex above = m_view->currentIndex().parent(); above.isValid(); above = above.parent())
            m_view->expand(above);
}

// A fresh delegate per model: it remembers open editors by row, and the grid belongs to the styled look.
void BrowserWindow::installDelegate()
{
    auto delegate = core::Qt4ParametersItemDelegate::create();
    delegate->enableGrid(modelKind() == ModelKind::Styled);
    m_view->setItemDelegate(delegate.get());
    m_delegate = delegate;
}

// Wide enough for the longest name shown in the first column (with its indentation and icon), but
// never more than half the view, so that values keep room.
void BrowserWindow::fitFeatureColumn()
{
    QAbstractItemModel* model = m_view->model();
    if (!model || model->columnCount() < 2)
        return;
    const int indent = m_view->indentation();
    int widest = 0;
    std::vector<std::pair<QModelIndex, int>> pending{{QModelIndex(), 0}};
    while (!pending.empty()) {
        const auto [parent, depth] = pending.back();
        pending.pop_back();
        for (int row = 0; row < model->rowCount(parent); ++row) {
            const QModelIndex index = model->index(row, 0, parent);
            pending.emplace_back(index, depth + 1);
            // Spanning rows (styled categories) run into the value column and need no room here.
            if (m_view->isFirstColumnSpanned(row, parent))
                continue;
            const QVariant font = index.data(Qt::FontRole);
            const QFontMetrics metrics(font.isValid() ? font.value<QFont>() : m_view->font());
            int width = indent * (depth + 1) + metrics.horizontalAdvance(index.data().toString()) + 16;
            if (index.data(Qt::DecorationRole).isValid())
                width += m_view->iconSize().isValid() ? m_view->iconSize().width() + 4 : 20;
            widest = std::max(widest, width);
        }
    }
    // Before the window is first laid out the view has no width of its own yet; the window has.
    const int available = std::max(m_view->viewport()->width(), width() - 40);
    const int limit = std::max(200, available / 2);
    m_view->header()->resizeSection(0, std::clamp(widest, 180, limit));
}

void BrowserWindow::setModelKind(ModelKind kind)
{
    if (m_modelBox->currentIndex() == static_cast<int>(kind))
        return;
    m_modelBox->setCurrentIndex(static_cast<int>(kind));
}

void BrowserWindow::setVisibility(ParameterEntryVisibility level)
{
    m_visibilityBox->setCurrentIndex(visibilityIndex(level));
}

void BrowserWindow::setViewMode(IntegerViewMode mode)
{
    m_viewModeBox->setCurrentIndex(static_cast<int>(mode));
    // The first setting may equal the box's initial index, which emits nothing.
    BrowserSettings::applyViewMode(mode);
}

void BrowserWindow::setSearchText(const QString& text)
{
    m_searchBox->setText(text);
}

ModelKind BrowserWindow::modelKind() const
{
    return static_cast<ModelKind>(std::max(0, m_modelBox->currentIndex()));
}

ParameterEntryVisibility BrowserWindow::visibility() const
{
    return visibilityAt(m_visibilityBox->currentIndex());
}

IntegerViewMode BrowserWindow::viewMode() const
{
    return static_cast<IntegerViewMode>(std::max(0, m_viewModeBox->currentIndex()));
}

boost::shared_ptr<core::models::MvParametersEntryNode> BrowserWindow::currentFeature() const
{
    if (!m_models || !m_view->selectionModel())
        return nullptr;
    return featureAt(m_view->selectionModel()->currentIndex());
}

void BrowserWindow::showCurrentFeature()
{
    const auto feature = currentFeature();
    FeatureLinks links;
    if (feature && m_source) {
        const std::string& name = feature->getName();
        links.pollingMs = m_source->pollingMs(name);
        for (const auto& [selector, selected] : m_source->selectors()) {
            if (selector == name)
                for (const std::string& s : selected)
                    links.selects << QString::fromLatin1(s.c_str());
            if (std::find(selected.begin(), selected.end(), name) != selected.end())
                links.selectedBy << QString::fromLatin1(selector.c_str());
        }
    }
    m_details->showFeature(feature, links);
}

bool BrowserWindow::selectFeature(const QString& name)
{
    QAbstractItemModel* model = m_view->model();
    if (!model)
        return false;
    std::vector<QModelIndex> pending{QModelIndex()};
    while (!pending.empty()) {
        const QModelIndex parent = pending.front();
        pending.erase(pending.begin());
        for (int row = 0; row < model->rowCount(parent); ++row) {
            const QModelIndex index = model->index(row, 0, parent);
            const auto entry = featureAt(index);
            if (entry && QString::fromStdString(entry->getName()) == name) {
                for (QModelIndex above = parent; above.isValid(); above = above.parent())
                    m_view->expand(above);
                m_view->setCurrentIndex(index);
                m_view->scrollTo(index);
                showCurrentFeature();
                return true;
            }
            pending.push_back(index);
        }
    }
    return false;
}

QString BrowserWindow::deviceStateText() const
{
    return m_stateLabel->fullText();
}

QString BrowserWindow::lastErrorText() const
{
    return m_errorLabel->fullText();
}

void BrowserWindow::updateDeviceState()
{
    showDeviceState();
    const QString state = m_stateLabel->fullText();
    if (state != m_lastState) {
        m_lastState = state;
        log(state);
    }
}

void BrowserWindow::showDeviceState()
{
    if (!m_source) {
        m_stateLabel->setFullText(QStringLiteral("Nothing open"));
        return;
    }
    if (m_source->isOffline()) {
        m_stateLabel->setFullText(QStringLiteral("%1: offline description").arg(m_source->description()));
        return;
    }
    const QString stranger = m_source->answeringDevice();
    if (!stranger.isEmpty()) {
        m_stateLabel->setFullText(
            QStringLiteral("Another device answers at %1, not %2: the values shown are out of date")
                .arg(stranger, m_source->description()));
        return;
    }
    const bool connected = m_source->isConnected();
    m_stateLabel->setFullText(connected
                                  ? QStringLiteral("Connected: %1").arg(m_source->description())
                                  : QStringLiteral("No answer from %1: the values shown are out of date")
                                        .arg(m_source->description()));
}

bool BrowserWindow::undoLastChange()
{
    if (!m_source)
        return false;
    std::vector<FeatureFailure> failures;
    std::string what;
    WritesUnderWay writes(this);
    if (!m_source->undo(&failures, &what)) {
        statusBar()->showMessage(QStringLiteral("Nothing to undo"), 3000);
        return false;
    }
    log(QStringLiteral("Undo %1").arg(QString::fromLatin1(what.c_str())));
    for (const FeatureFailure& failure : failures)
        reportError(QString::fromLatin1(failure.text().c_str()));
    return failures.empty();
}

RegisterDialog* BrowserWindow::openRegisters()
{
    if (!m_registersAction->isEnabled() || !m_source)
        return nullptr;
    if (!m_registers) {
        m_registers = new RegisterDialog(*m_source, this);
        m_registers->setAttribute(Qt::WA_DeleteOnClose);
    }
    // Not modal: the tree stays in use beside it, and nothing waits for it.
    m_registers->show();
    m_registers->raise();
    return m_registers;
}

RegisterDialog* BrowserWindow::registers() const
{
    return m_registers.data();
}

// Registers are for experts: from the Guru level on, and only where there is a device.
void BrowserWindow::updateRegistersAction()
{
    const bool expert = visibility() >= core::models::pevGuru;
    m_registersAction->setEnabled(expert && m_source && m_source->hasRegisters());
    if (!m_registersAction->isEnabled() && m_registers)
        m_registers->close();
}

void BrowserWindow::log(const QString& text)
{
    m_log->appendPlainText(
        QStringLiteral("%1  %2").arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), text));
}

QStringList BrowserWindow::logLines() const
{
    return m_log->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void BrowserWindow::reportError(const QString& message)
{
    // A running command's refusal ends its "Running" line in the log instead of a line of its own.
    bool ofCommand = false;
    for (auto& [name, failure] : m_commandsRunning) {
        const QString prefix = QStringLiteral("Cannot execute %1: ").arg(name);
        if (failure.isEmpty() && message.startsWith(prefix)) {
            failure = message.mid(prefix.size());
            ofCommand = true;
            break;
        }
    }
    if (!ofCommand)
        log(message);
    m_errorLabel->setFullText(
        QStringLiteral("%1  %2").arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), message));
}

// A command shows that it runs ("running..." on its button, "Running X" in the log) and then how it
// ended: "X done" once the device has answered and the command no longer runs, or "X failed: <the
// device's reason>".
void BrowserWindow::commandStarted(const QString& name)
{
    if (m_commandsRunning.count(name))
        return; // started again before it ended: one account of it
    m_commandsRunning[name] = QString();
    log(QStringLiteral("Running %1").arg(name));
    // The source calls back only while it lives, and this window owns it.
    m_source->whenIdle([this, name] { commandAnswered(name); });
}

void BrowserWindow::commandAnswered(const QString& name)
{
    const auto it = m_commandsRunning.find(name);
    if (it == m_commandsRunning.end())
        return;
    if (!it->second.isEmpty()) {
        log(QStringLiteral("%1 failed: %2").arg(name, it->second));
        m_commandsRunning.erase(it);
        return;
    }
    watchCommand(name);
}

// A command the device still runs (its done flag not set) is looked at again a little later; the
// look reads the tree's copy, not the device.
void BrowserWindow::watchCommand(const QString& name)
{
    const auto it = m_commandsRunning.find(name);
    if (it == m_commandsRunning.end() || !m_source)
        return;
    bool running = false;
    for (const auto& node : m_source->nodesNamed(name.toStdString()))
        running = running || (node && core::models::ParameterKind::of(*node).active(*node));
    if (!running) {
        log(QStringLiteral("%1 done").arg(name));
        m_commandsRunning.erase(it);
        return;
    }
    const ParameterSource* source = m_source.get();
    QTimer::singleShot(100, this, [this, name, source] {
        if (m_source.get() == source)
            watchCommand(name);
    });
}

bool BrowserWindow::openSource(std::unique_ptr<ParameterSource> source, const QString& error)
{
    if (!source) {
        QMessageBox::warning(this, QStringLiteral("Cannot Open"), error);
        return false;
    }
    setSource(std::move(source));
    return true;
}

void BrowserWindow::openDescription()
{
    const QString path = QFileDialog::getOpenFileName(
        this, QStringLiteral("Open Device Description"), m_settings.lastDirectory(),
        QStringLiteral("GenICam descriptions (*.xml);;All files (*)"));
    if (path.isEmpty())
        return;
    m_settings.setLastDirectory(QFileInfo(path).absolutePath());
    QString error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    auto source = ParameterSource::openXmlFile(path, &error);
    QApplication::restoreOverrideCursor();
    openSource(std::move(source), error);
}

void BrowserWindow::connectToDevice()
{
    DeviceDialog dialog(this);
    dialog.discover();
    if (dialog.exec() != QDialog::Accepted)
        return;
    connectTo(dialog.deviceId());
}

void BrowserWindow::connectTo(const QString& deviceId)
{
    // A connection under way gives way to the newest choice.
    cancelConnecting();
    log(QStringLiteral("Connecting to %1").arg(deviceId));
    m_connecting = new QProgressDialog(QStringLiteral("Connecting to %1...").arg(deviceId),
                                       QStringLiteral("Cancel"), 0, 0, this);
    m_connecting->setWindowTitle(QStringLiteral("Connect to Device"));
    m_connecting->setAttribute(Qt::WA_DeleteOnClose);
    // Shown only when opening takes a moment; the window stays in use meanwhile.
    m_connecting->setMinimumDuration(500);
    m_connectingTo = deviceId;
    connect(m_connecting, &QProgressDialog::canceled, this, &BrowserWindow::cancelConnecting);
    m_opening = ParameterSource::openDeviceLater(
        deviceId, [this, deviceId](std::unique_ptr<ParameterSource> source, const QString& error) {
            // The opening is over: let go of it after this call, which it makes (unless a newer
            // one has taken its place by then).
            const core::models::GenicamParameterTree::Opening* over = m_opening.get();
            QTimer::singleShot(0, this, [this, over] {
                if (m_opening.get() == over)
                    m_opening.reset();
            });
            if (m_connecting) {
                // Closing a progress dialog counts as cancelling it.
                QObject::disconnect(m_connecting, &QProgressDialog::canceled, this, nullptr);
                m_connecting->close();
                m_connecting = nullptr;
            }
            if (!source) {
                log(QStringLiteral("Cannot connect to %1: %2").arg(deviceId, error));
                reportError(error);
                return;
            }
            setSource(std::move(source));
        });
}

bool BrowserWindow::isConnecting() const
{
    return !m_connecting.isNull();
}

void BrowserWindow::cancelConnecting()
{
    if (!m_connecting)
        return;
    QProgressDialog* progress = m_connecting;
    m_connecting = nullptr;
    // Closing a progress dialog counts as cancelling it: once is enough.
    QObject::disconnect(progress, &QProgressDialog::canceled, this, nullptr);
    progress->close();
    m_opening.reset();
    log(QStringLiteral("Cancelled connecting to %1").arg(m_connectingTo));
}

void BrowserWindow::openSimulatedCamera()
{
    QString error;
    auto source = ParameterSource::openSimulated(&error);
    openSource(std::move(source), error);
}

void BrowserWindow::openExampleDevice()
{
    setSource(ParameterSource::openExample());
}

bool BrowserWindow::saveValues(const QString& path, QString* error)
{
    if (!m_source) {
        *error = QStringLiteral("nothing is open");
        return false;
    }
    WritesUnderWay writes(this);
    const bool saved = FeatureValueStore::save(*m_source, path, error);
    log(saved ? QStringLiteral("Saved the feature values to %1").arg(path) : *error);
    return saved;
}

std::vector<FeatureFailure> BrowserWindow::loadValues(const QString& path, QString* error)
{
    if (!m_source) {
        *error = QStringLiteral("nothing is open");
        return {};
    }
    // Until the end: what the load did is logged before a source change asked for meanwhile.
    WritesUnderWay writes(this);
    auto failures = FeatureValueStore::load(*m_source, path, error);
    if (!error->isEmpty())
        log(*error);
    else if (failures.empty())
        log(QStringLiteral("Set every value from %1").arg(path));
    else
        log(QStringLiteral("Loaded %1: %2 value(s) not set").arg(path).arg(failures.size()));
    return failures;
}

void BrowserWindow::saveValuesAs()
{
    const QString suggested = QDir(m_settings.lastDirectory()).filePath(QStringLiteral("feature-values.txt"));
    const QString path =
        QFileDialog::getSaveFileName(this, QStringLiteral("Save Feature Values"), suggested,
                                     QStringLiteral("Feature values (*.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    m_settings.setLastDirectory(QFileInfo(path).absolutePath());
    QString error;
    if (!saveValues(path, &error)) {
        QMessageBox::warning(this, QStringLiteral("Cannot Save"), error);
        return;
    }
    statusBar()->showMessage(QStringLiteral("Saved the feature values to %1").arg(path), 5000);
}

void BrowserWindow::loadValuesFrom()
{
    const QString path =
        QFileDialog::getOpenFileName(this, QStringLiteral("Load Feature Values"), m_settings.lastDirectory(),
                                     QStringLiteral("Feature values (*.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    m_settings.setLastDirectory(QFileInfo(path).absolutePath());
    QString error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto failures = loadValues(path, &error);
    QApplication::restoreOverrideCursor();
    if (!error.isEmpty()) {
        QMessageBox::warning(this, QStringLiteral("Cannot Load"), error);
        return;
    }
    if (failures.empty()) {
        statusBar()->showMessage(QStringLiteral("Set every value from %1").arg(path), 5000);
        return;
    }
    // At most a hundred lines, however broken the file: the dialog fits the screen.
    const QStringList lines = FeatureValueStore::reportLines(failures);
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Some Values Were Not Set"),
                    QStringLiteral("%1 value(s) from %2 could not be set:").arg(failures.size()).arg(path),
                    QMessageBox::Ok, this);
    box.setInformativeText(lines.mid(0, 12).join(QLatin1Char('\n')) +
                           (lines.size() > 12 ? QStringLiteral("\n...") : QString()));
    box.setDetailedText(lines.join(QLatin1Char('\n')));
    box.exec();
}

void BrowserWindow::refresh()
{
    if (m_source)
        m_source->refresh();
}

void BrowserWindow::closeEvent(QCloseEvent* event)
{
    if (m_writesUnderWay > 0) {
        event->ignore();
        m_closeWaiting = true;
        return;
    }
    m_settings.setWindowGeometry(saveGeometry());
    m_settings.setSplitterState(m_splitter->saveState());
    QMainWindow::closeEvent(event);
}

} // namespace browser
} // namespace vorn
