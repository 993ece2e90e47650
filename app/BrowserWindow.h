#pragma once

#include "BrowserSettings.h"
#include "FeatureFailure.h"
#include "ViewChoices.h"

#include <vorn/host/GenicamParameterTree.h>
#include <vorn/host/MvParametersEntryNode.h>

#include <QMainWindow>
#include <QPointer>
#include <QProgressDialog>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class QAbstractItemDelegate;
class QComboBox;
class QLineEdit;
class QSplitter;
class QPlainTextEdit;
class QAction;
class QTimer;

namespace vorn {
namespace core {
class Qt4GenericTreeView;
}
namespace browser {

class ElidedLabel;
class FeatureDetailsPane;
class FeatureModelStack;
class ParameterSource;
class RegisterDialog;

// The parameter browser's window: the tree of one parameter source in the framework's tree view,
// behind the chosen model, the library's filter model and a search filter, with the library's item
// delegate for in-place editing. The toolbar picks visibility level, model, integer view mode and
// search text; the pane below the tree describes the selected feature; the status bar shows the
// device's state and the last error the tree reported. File menu: open a description file, connect
// to a device, save and load feature values.
//
// This is also the example of how a host puts the library's pieces together: see rebuildModels().
class BrowserWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit BrowserWindow(QWidget* parent = nullptr);
    ~BrowserWindow() override;

    // Keys on the tree: Enter and F2 edit the selected value, Space runs a selected command.
    bool eventFilter(QObject* watched, QEvent* event) override;

    // The log keeps this many lines, the newest.
    static constexpr int kLogLines = 1000;

    // The size of a window that nothing remembers yet.
    static QSize defaultSize() { return QSize(920, 720); }

    // Shows this source from now on; the window owns it.
    void setSource(std::unique_ptr<ParameterSource> source);
    ParameterSource* source() const { return m_source.get(); }

    // What the toolbar offers, for start-up choices and scripts; these do not touch the remembered
    // settings (only a person's choices in the toolbar do).
    void setModelKind(ModelKind kind);
    void setVisibility(core::models::ParameterEntryVisibility level);
    void setViewMode(IntegerViewMode mode);
    void setSearchText(const QString& text);
    ModelKind modelKind() const;
    core::models::ParameterEntryVisibility visibility() const;
    IntegerViewMode viewMode() const;

    // Makes the first row that shows this feature current (opening its categories); false when no
    // row shows it at the current visibility and search.
    bool selectFeature(const QString& name);

    // Saves the writable values to a file; false and why in *error.
    bool saveValues(const QString& path, QString* error);
    // Applies a value file; returns the values that did not take and the lines that are not
    // assignments, by line; *error is set when the file cannot be read at all.
    std::vector<FeatureFailure> loadValues(const QString& path, QString* error);

    core::Qt4GenericTreeView* view() const { return m_view; }
    FeatureModelStack* models() const { return m_models.get(); }
    FeatureDetailsPane* details() const { return m_details; }
    QString deviceStateText() const;
    QString lastErrorText() const;
    // Edit > Undo: writes back the value before the last change; false when there was none or the
    // tree refused it (the refusal is logged).
    bool undoLastChange();

    // Opens a live device without waiting for it: a progress dialog with Cancel shows while it
    // takes a moment, the window stays in use, and the device is shown once open (a failure is
    // logged and shown in the status bar). A newer choice cancels one under way.
    void connectTo(const QString& deviceId);
    bool isConnecting() const;
    void cancelConnecting();

    // The register dialog (from the Guru level on, for GenICam devices); the open one, or nullptr.
    RegisterDialog* openRegisters();
    RegisterDialog* registers() const;

    // The log's lines, oldest first: "HH:mm:ss text".
    QStringList logLines() const;

public slots:
    void openDescription();
    void connectToDevice();
    void openSimulatedCamera();
    void openExampleDevice();
    void saveValuesAs();
    void loadValuesFrom();
    void refresh();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildActions();
    void buildToolBar();
    void buildStatusBar();
    void rebuildModels();
    // Expands the categories a person had expanded (kept by name across model changes, searches and
    // visibility changes); on a source's first showing, its top-level categories.
    void restoreExpansion();
    void applyExpansion();
    // Notes which categories are expanded now (not while a search shows everything expanded).
    void rememberExpansion();
    void installDelegate();
    void fitFeatureColumn();
    void showCurrentFeature();
    void updateDeviceState();
    void showDeviceState();
    void updateRegistersAction();
    // Tells the source which features are on screen, soon after what the view shows changed.
    void scheduleOnScreen();
    void tellFeaturesOnScreen();
    void reportError(const QString& message);
    void commandStarted(const QString& name);
    void commandAnswered(const QString& name);
    void watchCommand(const QString& name);
    // A time-stamped line in the log dock: device events, refusals, loads and saves.
    void log(const QString& text);
    bool openSource(std::unique_ptr<ParameterSource> source, const QString& error);
    // While one lives, the window waits for the device to answer writes (a value load, an undo, a
    // save that steps through selectors), and the event loop runs meanwhile: a source change or a
    // close asked for then would free the tree under the waiting code, so they wait for its end.
    class WritesUnderWay;
    friend class WritesUnderWay;
    void afterWrites();
    boost::shared_ptr<core::models::MvParametersEntryNode> currentFeature() const;

    BrowserSettings m_settings;
    std::unique_ptr<ParameterSource> m_source;
    std::unique_ptr<FeatureModelStack> m_models;
    boost::shared_ptr<QAbstractItemDelegate> m_delegate;
    std::set<std::string> m_expanded; // categories expanded by name
    bool m_expansionKnown = false;    // false until the source's first showing
    bool m_searching = false;         // the models filter by a search text

    core::Qt4GenericTreeView* m_view = nullptr;
    FeatureDetailsPane* m_details = nullptr;
    QSplitter* m_splitter = nullptr;
    QComboBox* m_visibilityBox = nullptr;
    QComboBox* m_modelBox = nullptr;
    QComboBox* m_viewModeBox = nullptr;
    QLineEdit* m_searchBox = nullptr;
    ElidedLabel* m_stateLabel = nullptr;
    ElidedLabel* m_errorLabel = nullptr;
    QTimer* m_stateTimer = nullptr;
    QTimer* m_onScreenTimer = nullptr;           // gathers the view's changes of one moment
    std::vector<std::string> m_featuresOnScreen; // as the source was last told
    QPlainTextEdit* m_log = nullptr;
    QAction* m_registersAction = nullptr;
    QPointer<RegisterDialog> m_registers; // reads through the source: closed before it changes
    QString m_lastState;                  // the device state last logged
    int m_writesUnderWay = 0;             // WritesUnderWay scopes alive
    bool m_sourceWaiting = false;         // m_nextSource is to be shown once the writes are answered
    std::unique_ptr<ParameterSource> m_nextSource;
    bool m_closeWaiting = false; // a close asked for while writes were under way
    // Commands run and not yet answered, by name: why the tree refused one, empty while none came.
    std::map<QString, QString> m_commandsRunning;
    std::unique_ptr<core::models::GenicamParameterTree::Opening> m_opening; // a device being opened
    QPointer<QProgressDialog> m_connecting;                                 // its progress
    QString m_connectingTo;                                                 // the device it opens
};

} // namespace browser
} // namespace vorn
