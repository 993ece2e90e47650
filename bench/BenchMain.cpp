// The benchmarks: what our models, filter model, tree view and delegate cost against what a careful Qt
// developer would write by hand for the same trees (a QStandardItemModel under a QSortFilterProxyModel
// re-filtered with invalidate(), a QTreeView with command buttons as index widgets only on screen, a
// QStyledItemDelegate), on trees shaped like real camera descriptions. Every figure is measured for
// both sides in the same run, alternating side by side in each round, and the ratio is taken per round:
// on a shared machine only ratios of one run mean anything.
//
// Writes a JSON file with every sample and a Markdown table for the README.

#include "Baseline.h"
#include "CameraShapedTree.h"
#include "Measure.h"

#include "example/ExampleTree.h"

#include <vorn/delegate/Qt4ParametersItemDelegate.h>
#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/models/Qt4ParametersFilterModel.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#ifdef VORN_BENCH_GENICAM
#include "AravisAlone.h"
#include <vorn/host/GenicamParameterTree.h>
#endif

#include <QAbstractSpinBox>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSysInfo>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace vorn;
using namespace vorn::bench;
using namespace vorn::core;
using namespace vorn::core::models;

namespace {

// ---------------------------------------------------------------------------------------------------
// Options

struct Options
{
    std::vector<int> sizes{300, 3000, 10000, 30000, 100000};
    std::vector<HiddenRows> layouts{HiddenRows::Interleaved, HiddenRows::Clustered};
    int samples = 5;
    std::string figures = "level,scroll,edit,paint,open,dump";
    std::string jsonPath = "bench-results.json";
    std::string markdownPath;
    std::string browser;       // the parameter browser, for the dump figure
    int maxScrollPages = 1000; // 0: the whole tree
    bool genicam = true;
    std::string looks = "plain,styled";

    bool wants(const char* figure) const
    {
        return ("," + figures + ",").find(std::string(",") + figure + ",") != std::string::npos;
    }
};

enum class Look { Plain, Styled };

std::vector<Look> looksOf(const Options& options)
{
    std::vector<Look> out;
    if (options.looks.find("plain") != std::string::npos)
        out.push_back(Look::Plain);
    if (options.looks.find("styled") != std::string::npos)
        out.push_back(Look::Styled);
    return out;
}

std::string withThousands(long long n)
{
    std::string digits = std::to_string(n);
    std::string out;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            out += ',';
        out += digits[i];
    }
    return out;
}

// ---------------------------------------------------------------------------------------------------
// Results

// One figure: samples of ours and of the baseline, taken in the same rounds, and their per-round ratio.
struct Figure
{
    Figure(std::string name, std::string tree, std::string ours, std::string versus, std::string unit = "ms")
        : name(std::move(name)), tree(std::move(tree)), ours(std::move(ours)), versus(std::move(versus)),
          unit(std::move(unit))
    {}

    std::string name;   // "level change", "scroll", ...
    std::string tree;   // "3,000 interleaved", a description's file name
    std::string ours;   // which of our sides: "plain", "styled"
    std::string versus; // what the baseline is
    std::string unit;
    int rows = 0;
    std::vector<double> oursSamples;
    std::vector<double> baseSamples;
    std::vector<double> ratios;

    double ratioMedian() const { return median(ratios); }
    double ratioMin() const { return ratios.empty() ? NAN : *std::min_element(ratios.begin(), ratios.end()); }
    double ratioMax() const { return ratios.empty() ? NAN : *std::max_element(ratios.begin(), ratios.end()); }
};

std::vector<Figure> g_figures;

// Runs `rounds` rounds; each measures ours and the baseline once, in alternating order.
Figure sideBySide(Figure figure, int rounds, const std::function<double()>& ours,
                  const std::function<double()>& base)
{
    for (int round = 0; round < rounds; ++round) {
        double a = 0;
        double b = 0;
        if (round % 2 == 0) {
            a = ours();
            b = base();
        } else {
            b = base();
            a = ours();
        }
        figure.oursSamples.push_back(a);
        figure.baseSamples.push_back(b);
        if (b > 0)
            figure.ratios.push_back(a / b);
    }
    std::fprintf(stderr, "  %-28s %-22s %-7s %9.3f %s vs %9.3f: %.2fx [%.2f-%.2f]\n", figure.name.c_str(),
                 figure.tree.c_str(), figure.ours.c_str(), median(figure.oursSamples), figure.unit.c_str(),
                 median(figure.baseSamples), figure.ratioMedian(), figure.ratioMin(), figure.ratioMax());
    g_figures.push_back(figure);
    return figure;
}

// ---------------------------------------------------------------------------------------------------
// The two sides

// Our side: a model of the tree, the filter model, the generic tree view and the item delegate.
struct OurRig
{
    boost::shared_ptr<Qt4GenericModel> model;
    boost::shared_ptr<Qt4ParametersFilterModel> filter;
    boost::shared_ptr<Qt4ParametersItemDelegate> delegate;
    std::unique_ptr<Qt4GenericTreeView> view;
    std::unique_ptr<PaintCounter> paints;

    void changeVisibility(int level)
    {
        filter->changeVisibility(static_cast<ParameterEntryVisibility>(level));
    }
};

// The baseline: the same rows in a QStandardItemModel, a QSortFilterProxyModel, a QTreeView and a
// QStyledItemDelegate.
struct BaseRig
{
    std::unique_ptr<QStandardItemModel> model;
    std::unique_ptr<BaselineFilterModel> filter;
    std::unique_ptr<QStyledItemDelegate> delegate;
    std::unique_ptr<BaselineTreeView> view;
    std::unique_ptr<PaintCounter> paints;

    void changeVisibility(int level) { filter->changeVisibility(level); }
};

boost::shared_ptr<Qt4GenericModel> buildOurs(Look look, const MvParametersModel& tree,
                                             const boost::shared_ptr<MvParametersModel>& model)
{
    if (look == Look::Plain)
        return Qt4ParametersModel::create(Qt4ParametersModelNode::create(model, tree.root(), boost::any()));
    return Qt4StyledParametersModel::create(
        Qt4StyledParametersModelNode::create(model, tree.root(), boost::any()));
}

// Shows a view; `expandAll` opens every row, otherwise the view opens as the model asks (ours) or
// collapsed (baseline).
std::unique_ptr<OurRig> showOurs(Look look, const boost::shared_ptr<MvParametersModel>& tree, bool expandAll,
                                 int level = -1)
{
    auto rig = std::make_unique<OurRig>();
    rig->model = buildOurs(look, *tree, tree);
    rig->filter = Qt4ParametersFilterModel::create(rig->model);
    if (level >= 0)
        rig->changeVisibility(level);
    rig->view = std::make_unique<Qt4GenericTreeView>();
    rig->delegate = Qt4ParametersItemDelegate::create();
    rig->delegate->enableGrid(look == Look::Styled);
    rig->view->setItemDelegate(rig->delegate.get());
    rig->view->setModel(rig->filter.get());
    if (expandAll)
        rig->view->expandAll();
    rig->view->resize(800, 600);
    rig->paints = std::make_unique<PaintCounter>(rig->view->viewport());
    rig->view->show();
    settleUntilPainted(*rig->paints, 0);
    return rig;
}

std::unique_ptr<BaseRig> showBase(Look look, const MvParametersModel& tree, bool expandAll, int level = -1)
{
    auto rig = std::make_unique<BaseRig>();
    rig->model = buildBaselineModel(*tree.root());
    rig->filter = std::make_unique<BaselineFilterModel>();
    rig->filter->setSourceModel(rig->model.get());
    if (level >= 0)
        rig->changeVisibility(level);
    rig->view = std::make_unique<BaselineTreeView>();
    if (look == Look::Styled)
        rig->delegate = std::make_unique<BaselineGridDelegate>();
    else
        rig->delegate = std::make_unique<QStyledItemDelegate>();
    rig->view->setItemDelegate(rig->delegate.get());
    rig->view->setModel(rig->filter.get());
    if (expandAll)
        rig->view->expandAll();
    rig->view->resize(800, 600);
    rig->paints = std::make_unique<PaintCounter>(rig->view->viewport());
    rig->view->show();
    settleUntilPainted(*rig->paints, 0);
    return rig;
}

void settleView(PaintCounter& paints)
{
    settleUntilPainted(paints, paints.count());
}

// ---------------------------------------------------------------------------------------------------
// Figures on generated trees

constexpr int levelsPerRound[] = {0, 4, 1, 3, 2};

// A round of level changes on a fully expanded view; each change until the view has repainted. The view
// is opened fully again (untimed) before each change: rows that came back are collapsed in either view.
template <class Rig> double levelRound(Rig& rig)
{
    double total = 0;
    for (int level : levelsPerRound) {
        rig.view->expandAll();
        settleView(*rig.paints);
        const int seen = rig.paints->count();
        CpuStopwatch clock;
        rig.changeVisibility(level);
        settleUntilPainted(*rig.paints, seen);
        total += clock.ms();
    }
    return total;
}

__attribute__((noipa)) double ourLevelRound(OurRig& rig)
{
    return levelRound(rig);
}

__attribute__((noipa)) double baseLevelRound(BaseRig& rig)
{
    return levelRound(rig);
}

// Page by page from the top to the bottom of the expanded tree (or `maxPages` pages), each page until it
// is painted.
template <class Rig> double scrollThrough(Rig& rig, int maxPages)
{
    QScrollBar* bar = rig.view->verticalScrollBar();
    bar->setValue(0);
    settleView(*rig.paints);
    CpuStopwatch clock;
    for (int page = 0; bar->value() < bar->maximum() && (maxPages <= 0 || page < maxPages); ++page) {
        const int seen = rig.paints->count();
        bar->setValue(bar->value() + bar->pageStep());
        settleUntilPainted(*rig.paints, seen);
    }
    return clock.ms();
}

__attribute__((noipa)) double ourScroll(OurRig& rig, int maxPages)
{
    return scrollThrough(rig, maxPages);
}

__attribute__((noipa)) double baseScroll(BaseRig& rig, int maxPages)
{
    return scrollThrough(rig, maxPages);
}

// The name of the first integer that anyone may write, shown at every level.
std::string editableIntegerName(const MvParametersEntryNode& node)
{
    const auto children = node.getChildNodesEntryNode();
    if (!children)
        return std::string();
    for (const auto& child : children->children()) {
        const auto& entry = static_cast<const MvParametersEntryNode&>(*child);
        if (entry.getVisibility() > pevBeginner)
            continue;
        if (child->typeId() == pntInteger && entry.getAccessMode() == peamReadWrite) {
            const auto& integer = static_cast<const MvParametersIntegerNode&>(*child);
            if (integer.getRepresentation() == pirLinear || integer.getRepresentation() == pirPureNumber)
                return entry.getDisplayName();
        }
        const std::string below = editableIntegerName(entry);
        if (!below.empty())
            return below;
    }
    return std::string();
}

QModelIndex findRow(const QAbstractItemModel* model, const QString& text,
                    const QModelIndex& parent = QModelIndex())
{
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        if (index.data().toString() == text)
            return index;
        const QModelIndex below = findRow(model, text, index);
        if (below.isValid())
            return below;
    }
    return QModelIndex();
}

void pressEnter(QWidget* editor)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(editor, &press);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(editor, &release);
}

// Opens the editor of the value cell, changes the value, presses Enter and waits for the repaint.
template <class Rig> double editOnce(Rig& rig, const QModelIndex& cell, int round)
{
    const int seen = rig.paints->count();
    CpuStopwatch clock;
    rig.view->setCurrentIndex(cell);
    rig.view->edit(cell);
    QWidget* editor = rig.view->indexWidget(cell);
    if (!editor) {
        std::fprintf(stderr, "  edit: no editor opened\n");
        return NAN;
    }
    if (auto* box = qobject_cast<QAbstractSpinBox*>(editor))
        box->stepBy(round % 2 ? -1 : 1);
    else if (auto* line = qobject_cast<QLineEdit*>(editor))
        line->setText(QString::number(16 * (round % 2 + 1)));
    pressEnter(editor);
    settleUntilPainted(*rig.paints, seen);
    return clock.ms();
}

void measureGenerated(const Options& options, int size, HiddenRows layout)
{
    auto tree = buildCameraShapedTree(size, layout);
    const std::string label = withThousands(size) + " " + hiddenRowsName(layout);
    std::fprintf(stderr, "%s\n", label.c_str());
    const auto& model = *tree->model();
    int rows = 0;
    {
        auto probe = buildOurs(Look::Plain, model, tree->model());
        std::function<int(const QModelIndex&)> count = [&](const QModelIndex& parent) {
            int n = probe->rowCount(parent);
            int total = n;
            for (int row = 0; row < n; ++row)
                total += count(probe->index(row, 0, parent));
            return total;
        };
        rows = count(QModelIndex());
    }
    const int samples = options.samples;

    if (options.wants("level")) {
        for (Look look : looksOf(options)) {
            auto ours = showOurs(look, tree->model(), true);
            auto base = showBase(look, model, true);
            Figure f{"level change", label, look == Look::Plain ? "plain" : "styled",
                     "QSortFilterProxyModel::invalidate()"};
            f.rows = rows;
            sideBySide(
                f, samples, [&] { return ourLevelRound(*ours); }, [&] { return baseLevelRound(*base); });
        }
    }

    // Scrolling, editing and the first paint do not depend on where the hidden rows are: measured on
    // the interleaved trees only.
    if (layout != HiddenRows::Interleaved)
        return;

    if (options.wants("scroll")) {
        for (Look look : looksOf(options)) {
            auto ours = showOurs(look, tree->model(), true, pevAll);
            auto base = showBase(look, model, true, pevAll);
            Figure f{"scroll page by page", label, look == Look::Plain ? "plain" : "styled",
                     look == Look::Plain ? "QStyledItemDelegate" : "QStyledItemDelegate drawing the grid"};
            f.rows = rows;
            sideBySide(
                f, samples, [&] { return ourScroll(*ours, options.maxScrollPages); },
                [&] { return baseScroll(*base, options.maxScrollPages); });
        }
    }

    if (options.wants("edit")) {
        const QString name = QString::fromStdString(editableIntegerName(*model.root()));
        auto ours = showOurs(Look::Plain, tree->model(), true, pevAll);
        auto base = showBase(Look::Plain, model, true, pevAll);
        const QModelIndex ourRow = findRow(ours->filter.get(), name);
        const QModelIndex baseRow = findRow(base->filter.get(), name);
        if (!ourRow.isValid() || !baseRow.isValid())
            std::fprintf(stderr, "  edit: no row \"%s\" to edit\n", qPrintable(name));
        if (ourRow.isValid() && baseRow.isValid()) {
            const QModelIndex ourCell = ourRow.sibling(ourRow.row(), 1);
            const QModelIndex baseCell = baseRow.sibling(baseRow.row(), 1);
            ours->view->scrollTo(ourCell, QAbstractItemView::PositionAtCenter);
            base->view->scrollTo(baseCell, QAbstractItemView::PositionAtCenter);
            settleView(*ours->paints);
            settleView(*base->paints);
            int round = 0;
            Figure f{"edit: open, commit, repaint", label, "plain",
                     "QStyledItemDelegate, QStandardItem::setData"};
            f.rows = rows;
            sideBySide(
                f, std::max(samples, 11), [&] { return editOnce(*ours, ourCell, round++); },
                [&] { return editOnce(*base, baseCell, round); });
        }
    }

    if (options.wants("paint")) {
        for (Look look : looksOf(options)) {
            // Models are built once: the figure is the view's, from nothing shown to the first frame.
            Figure f{"first paint", label, look == Look::Plain ? "plain" : "styled",
                     look == Look::Plain ? "expanded QTreeView" : "collapsed QTreeView with the grid"};
            f.rows = rows;
            auto ourModel = buildOurs(look, model, tree->model());
            auto baseModel = buildBaselineModel(*model.root());
            sideBySide(
                f, samples,
                [&] {
                    CpuStopwatch clock;
                    OurRig rig;
                    rig.filter = Qt4ParametersFilterModel::create(ourModel);
                    rig.view = std::make_unique<Qt4GenericTreeView>();
                    rig.delegate = Qt4ParametersItemDelegate::create();
                    rig.delegate->enableGrid(look == Look::Styled);
                    rig.view->setItemDelegate(rig.delegate.get());
                    rig.view->setModel(rig.filter.get()); // opens as the model asks
                    rig.view->resize(800, 600);
                    rig.paints = std::make_unique<PaintCounter>(rig.view->viewport());
                    rig.view->show();
                    settleUntilPainted(*rig.paints, 0);
                    const double ms = clock.ms();
                    rig.paints.reset();
                    rig.view.reset();
                    QCoreApplication::processEvents();
                    return ms;
                },
                [&] {
                    CpuStopwatch clock;
                    BaseRig rig;
                    rig.filter = std::make_unique<BaselineFilterModel>();
                    rig.filter->setSourceModel(baseModel.get());
                    rig.view = std::make_unique<BaselineTreeView>();
                    if (look == Look::Styled)
                        rig.delegate = std::make_unique<BaselineGridDelegate>();
                    else
                        rig.delegate = std::make_unique<QStyledItemDelegate>();
                    rig.view->setItemDelegate(rig.delegate.get());
                    rig.view->setModel(rig.filter.get());
                    if (look == Look::Plain)
                        rig.view->expandAll();
                    rig.view->resize(800, 600);
                    rig.paints = std::make_unique<PaintCounter>(rig.view->viewport());
                    rig.view->show();
                    settleUntilPainted(*rig.paints, 0);
                    const double ms = clock.ms();
                    rig.paints.reset();
                    rig.view.reset();
                    QCoreApplication::processEvents();
                    return ms;
                });
        }
    }
}

// ---------------------------------------------------------------------------------------------------
// GenICam descriptions

#ifdef VORN_BENCH_GENICAM
// Open the description with our backend, show it in the plain model and view, until the first frame.
double openToFirstPaint(const std::string& path)
{
    Stopwatch clock;
    std::string error;
    auto camera = GenicamParameterTree::openXmlFile(path, &error);
    if (!camera)
        return NAN;
    auto rig = showOurs(Look::Plain, camera->model(), false);
    const double ms = clock.ms();
    rig.reset();
    camera.reset();
    QCoreApplication::processEvents();
    return ms;
}

// Runs a program to its end with its output thrown away; CPU time (user and system, ms) and peak
// resident set (KiB) of the program. It runs under GNU time, which reports the peak: a child forked
// from this process would keep this process's resident set as its own peak through exec.
std::pair<double, double> runChild(const std::vector<std::string>& args)
{
    QTemporaryDir dir;
    const std::string report = dir.filePath(QStringLiteral("usage")).toStdString();
    std::vector<std::string> all{"/usr/bin/time", "-f", "%M", "-o", report};
    all.insert(all.end(), args.begin(), args.end());
    std::fflush(stdout); // or the child writes what this process has buffered
    std::fflush(stderr);
    const pid_t pid = fork();
    if (pid == 0) {
        if (std::freopen("/dev/null", "w", stdout) == nullptr)
            _exit(126);
        std::vector<char*> argv;
        for (const auto& a : all)
            argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{}; // GNU time and the program it waited for
    wait4(pid, &status, 0, &usage);
    double peak = NAN;
    if (FILE* f = std::fopen(report.c_str(), "r")) {
        if (std::fscanf(f, "%lf", &peak) != 1)
            peak = NAN;
        std::fclose(f);
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return {NAN, NAN};
    const double cpu = (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3 +
                       (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3;
    return {cpu, peak};
}

void measureDescriptions(const Options& options, const std::string& self)
{
    const QDir dir(QStringLiteral(VORN_BENCH_GENICAM_DATA));
    for (const QString& name : dir.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name)) {
        const std::string path = dir.filePath(name).toStdString();
        const std::string label = name.toStdString();
        std::fprintf(stderr, "%s\n", label.c_str());
        const int samples = std::max(options.samples, 7);
        if (options.wants("open")) {
            Figure f{"open to first paint", label, "plain", "arv_gc_new() on the same file"};
            sideBySide(
                f, samples, [&] { return openToFirstPaint(path); }, [&] { return aravisParseMs(path); });
        }
        if (options.wants("dump") && !options.browser.empty()) {
            Figure cpu{"--dump CPU", label, "browser", "dump through Aravis alone"};
            Figure memory{"--dump peak memory", label, "browser", "dump through Aravis alone", "KiB"};
            for (int round = 0; round < samples; ++round) {
                const auto ours = runChild({options.browser, "--xml", path, "--dump"});
                const auto base = runChild({self, "--arv-dump", path});
                cpu.oursSamples.push_back(ours.first);
                cpu.baseSamples.push_back(base.first);
                cpu.ratios.push_back(ours.first / base.first);
                memory.oursSamples.push_back(ours.second);
                memory.baseSamples.push_back(base.second);
                memory.ratios.push_back(ours.second / base.second);
            }
            for (Figure* f : {&cpu, &memory}) {
                std::fprintf(stderr, "  %-28s %-22s %.2fx [%.2f-%.2f]\n", f->name.c_str(), label.c_str(),
                             f->ratioMedian(), f->ratioMin(), f->ratioMax());
                g_figures.push_back(*f);
            }
        }
    }
}
#endif

// ---------------------------------------------------------------------------------------------------
// The baseline holds what our plain model shows

const int comparedRoles[] = {Qt::DisplayRole,    Qt::DecorationRole, Qt::FontRole,      Qt::ToolTipRole,
                             Qt::CheckStateRole, Qt::SizeHintRole,   Qt::ForegroundRole};

QString describe(const QVariant& value)
{
    if (!value.isValid())
        return QStringLiteral("<invalid>");
    if (value.userType() == QMetaType::QIcon) {
        const QImage image = value.value<QIcon>().pixmap(16, 16).toImage();
        return QStringLiteral("icon %1").arg(qHashBits(image.constBits(), image.sizeInBytes()));
    }
    if (value.userType() == QMetaType::QFont)
        return value.value<QFont>().toString();
    if (value.userType() == QMetaType::QSize)
        return QStringLiteral("%1x%2").arg(value.toSize().width()).arg(value.toSize().height());
    return QStringLiteral("%1:%2").arg(value.typeName(), value.toString());
}

int compareCells(const QAbstractItemModel* ours, const QAbstractItemModel* base, const QModelIndex& o,
                 const QModelIndex& b, int& cells)
{
    int mismatches = 0;
    if (ours->rowCount(o) != base->rowCount(b)) {
        std::fprintf(stderr, "baseline: row counts differ below %s\n", qPrintable(o.data().toString()));
        return 1;
    }
    const Qt::ItemFlags compared =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsUserCheckable;
    for (int row = 0; row < ours->rowCount(o); ++row) {
        for (int column = 0; column < 2; ++column) {
            const QModelIndex oi = ours->index(row, column, o);
            const QModelIndex bi = base->index(row, column, b);
            ++cells;
            for (int role : comparedRoles) {
                const QString a = describe(oi.data(role));
                const QString c = describe(bi.data(role));
                if (a != c && mismatches++ < 10)
                    std::fprintf(stderr, "baseline: %s, column %d, role %d: ours %s, baseline %s\n",
                                 qPrintable(ours->index(row, 0, o).data().toString()), column, role,
                                 qPrintable(a), qPrintable(c));
            }
            if ((oi.flags() & compared) != (bi.flags() & compared) && mismatches++ < 10)
                std::fprintf(stderr, "baseline: %s, column %d: flags differ\n",
                             qPrintable(ours->index(row, 0, o).data().toString()), column);
        }
        mismatches += compareCells(ours, base, ours->index(row, 0, o), base->index(row, 0, b), cells);
    }
    return mismatches;
}

// Cells compared and cells that differ, over the example tree and a generated one.
std::pair<int, int> checkBaseline()
{
    int cells = 0;
    int mismatches = 0;
    const std::vector<boost::shared_ptr<InMemoryParameterTree>> trees{
        example::buildExampleTree(0), buildCameraShapedTree(400, HiddenRows::Interleaved)};
    for (const auto& tree : trees) {
        auto ours = buildOurs(Look::Plain, *tree->model(), tree->model());
        auto base = buildBaselineModel(*tree->root());
        mismatches += compareCells(ours.get(), base.get(), QModelIndex(), QModelIndex(), cells);
    }
    return {cells, mismatches};
}

// ---------------------------------------------------------------------------------------------------
// Report

std::string number(double v)
{
    if (std::isnan(v))
        return "–";
    char buffer[32];
    const double a = std::fabs(v);
    std::snprintf(buffer, sizeof buffer, a >= 100 ? "%.0f" : a >= 10 ? "%.1f" : a >= 1 ? "%.2f" : "%.3f", v);
    return buffer;
}

std::string ratioText(const Figure& f)
{
    if (f.ratios.empty())
        return "–";
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.2f (%.2f–%.2f)", f.ratioMedian(), f.ratioMin(), f.ratioMax());
    return buffer;
}

QJsonArray toJson(const std::vector<double>& values)
{
    QJsonArray out;
    for (double v : values)
        out.append(std::isnan(v) ? QJsonValue() : QJsonValue(v));
    return out;
}

void writeJson(const std::string& path, const QJsonObject& machine)
{
    QJsonArray figures;
    for (const Figure& f : g_figures) {
        QJsonObject o;
        o["figure"] = QString::fromStdString(f.name);
        o["tree"] = QString::fromStdString(f.tree);
        o["rows"] = f.rows;
        o["ours"] = QString::fromStdString(f.ours);
        o["baseline"] = QString::fromStdString(f.versus);
        o["unit"] = QString::fromStdString(f.unit);
        o["ours_samples"] = toJson(f.oursSamples);
        o["baseline_samples"] = toJson(f.baseSamples);
        o["ratios"] = toJson(f.ratios);
        o["ours_median"] = median(f.oursSamples);
        o["baseline_median"] = median(f.baseSamples);
        o["ratio_median"] = f.ratioMedian();
        o["ratio_min"] = f.ratioMin();
        o["ratio_max"] = f.ratioMax();
        figures.append(o);
    }
    QJsonObject root = machine;
    root["figures"] = figures;
    QFile file(QString::fromStdString(path));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(QJsonDocument(root).toJson(QJsonDocument::Indented));
}

std::string markdown(const std::string& header)
{
    std::string out = header;
    out +=
        "| figure | tree | side | ours (median) | baseline (median) | ours / baseline: median (min–max) |\n";
    out += "|---|---|---|---:|---:|---:|\n";
    for (const Figure& f : g_figures) {
        out += "| " + f.name + " | " + f.tree + " | " + f.ours + " | " + number(median(f.oursSamples)) + " " +
               f.unit + " | " + number(median(f.baseSamples)) + " " + f.unit + " | " + ratioText(f) + " |\n";
    }
    return out;
}

std::vector<int> parseSizes(const char* text)
{
    std::vector<int> sizes;
    for (const QString& part : QString::fromLatin1(text).split(QLatin1Char(','), Qt::SkipEmptyParts))
        sizes.push_back(part.trimmed().toInt());
    return sizes;
}

void usage()
{
    std::fprintf(stderr,
                 "usage: vorn-bench [--sizes 300,3000,10000,30000,100000] [--layouts interleaved,clustered]\n"
                 "                  [--figures level,scroll,edit,paint,open,dump] [--samples 5]\n"
                 "                  [--looks plain,styled] [--max-scroll-pages N] [--no-genicam]\n"
                 "                  [--browser PATH]\n"
                 "                  [--json FILE] [--markdown FILE]\n"
                 "       vorn-bench --check-baseline\n"
                 "       vorn-bench --arv-dump FILE\n");
}

} // namespace

int main(int argc, char** argv)
{
#ifdef VORN_BENCH_GENICAM
    if (argc == 3 && std::string(argv[1]) == "--arv-dump")
        return aravisDump(argv[2]);
#endif
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QTemporaryDir runtimeDir;
    if (!std::getenv("XDG_RUNTIME_DIR") && runtimeDir.isValid()) {
        QFile::setPermissions(runtimeDir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        setenv("XDG_RUNTIME_DIR", runtimeDir.path().toLocal8Bit().constData(), 1);
    }
    QApplication app(argc, argv);

    Options options;
    bool checkOnly = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--sizes" && i + 1 < argc)
            options.sizes = parseSizes(argv[++i]);
        else if (arg == "--layouts" && i + 1 < argc) {
            const std::string text = argv[++i];
            options.layouts.clear();
            if (text.find("interleaved") != std::string::npos)
                options.layouts.push_back(HiddenRows::Interleaved);
            if (text.find("clustered") != std::string::npos)
                options.layouts.push_back(HiddenRows::Clustered);
        } else if (arg == "--figures" && i + 1 < argc)
            options.figures = argv[++i];
        else if (arg == "--samples" && i + 1 < argc)
            options.samples = std::max(1, std::atoi(argv[++i]));
        else if (arg == "--max-scroll-pages" && i + 1 < argc)
            options.maxScrollPages = std::atoi(argv[++i]);
        else if (arg == "--json" && i + 1 < argc)
            options.jsonPath = argv[++i];
        else if (arg == "--markdown" && i + 1 < argc)
            options.markdownPath = argv[++i];
        else if (arg == "--browser" && i + 1 < argc)
            options.browser = argv[++i];
        else if (arg == "--looks" && i + 1 < argc)
            options.looks = argv[++i];
        else if (arg == "--no-genicam")
            options.genicam = false;
        else if (arg == "--check-baseline")
            checkOnly = true;
        else {
            usage();
            return arg == "--help" || arg == "-h" ? 0 : 2;
        }
    }

    const std::pair<int, int> check = checkBaseline();
    std::printf("baseline compared cell by cell: %d cells, %d differ\n", check.first, check.second);
    if (checkOnly)
        return check.second == 0 ? 0 : 1;
    if (options.browser.empty()) {
        const QString next =
            QFileInfo(QString::fromLocal8Bit(argv[0])).absolutePath() + QStringLiteral("/parameter-browser");
        if (QFileInfo::exists(next))
            options.browser = next.toStdString();
    }

    Stopwatch total;
    std::string loadAverage = "unknown";
    {
        QFile file(QStringLiteral("/proc/loadavg"));
        if (file.open(QIODevice::ReadOnly))
            loadAverage = file.readAll().split(' ').mid(0, 3).join(' ').toStdString();
    }
    // Fonts, icons, styles and the offscreen platform load on first use, not inside a figure.
    {
        auto warmUp = buildCameraShapedTree(300, HiddenRows::Interleaved);
        for (Look look : {Look::Plain, Look::Styled}) {
            auto ours = showOurs(look, warmUp->model(), true);
            auto base = showBase(look, *warmUp->model(), true);
            ourLevelRound(*ours);
            baseLevelRound(*base);
        }
    }

    for (int size : options.sizes)
        for (HiddenRows layout : options.layouts)
            measureGenerated(options, size, layout);
#ifdef VORN_BENCH_GENICAM
    if (options.genicam)
        measureDescriptions(options,
                            QFileInfo(QString::fromLocal8Bit(argv[0])).absoluteFilePath().toStdString());
#endif

    const std::string date =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm")).toStdString();
    QJsonObject machine;
    machine["date"] = QString::fromStdString(date);
    machine["cores"] = static_cast<int>(std::thread::hardware_concurrency());
    machine["system"] = QSysInfo::prettyProductName();
    machine["qt"] = QString::fromLatin1(qVersion());
    machine["load_average"] = QString::fromStdString(loadAverage);
    machine["samples"] = options.samples;
    machine["seconds"] = total.ms() / 1000;
    writeJson(options.jsonPath, machine);

    const std::string header = "Run of " + date + " on " +
                               std::to_string(std::thread::hardware_concurrency()) + " cores (load average " +
                               loadAverage + " at the start), Qt " + qVersion() + ", " +
                               std::to_string(options.samples) + " or more rounds per figure.\n\n";
    const std::string table = markdown(header);
    std::fputs(table.c_str(), stdout);
    if (!options.markdownPath.empty()) {
        QFile file(QString::fromStdString(options.markdownPath));
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            file.write(table.c_str());
    }
    std::fprintf(stderr, "whole run: %.0f s\n", total.ms() / 1000);
    return 0;
}
