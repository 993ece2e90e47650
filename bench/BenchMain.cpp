// The benchmarks: what our plain and styled models cost against what a host would pick instead (a
// QStandardItemModel under a QSortFilterProxyModel and a QTreeView, holding the same tree), and how
// that grows with the size of the tree. Every figure is measured for all sides in the same run,
// alternating, and ratios are taken per round before the median. Prints one Markdown report.

#include "Baseline.h"
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
#include <vorn/host/GenicamParameterTree.h>
#endif

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTreeView>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace vorn;
using namespace vorn::bench;
using namespace vorn::core;
using namespace vorn::core::models;

namespace {

// The sides of a comparison. The baseline is measured collapsed too, to pair with the styled model,
// which opens with only its top level shown.
enum Kind { Plain, Styled, Base, BaseCollapsed };

const char* kindName(Kind kind)
{
    switch (kind) {
    case Plain:
        return "plain";
    case Styled:
        return "styled";
    case Base:
        return "baseline";
    default:
        return "baseline, collapsed";
    }
}

bool isOurs(Kind kind)
{
    return kind == Plain || kind == Styled;
}

struct Options
{
    std::vector<int> sizes{1000, 10000, 100000};
    bool genicam = true;
    double repsScale = 1.0;
    example::VisibilityLayout layout = example::VisibilityLayout::Interleaved;
    bool verbose = false;
    std::string figures = "build,sweep,change,paint,open"; // which figures to measure

    std::string sides = "plain,styled,baseline";
    double levelBudgetMs = 30000; // per side and round of level changes

    bool side(Kind kind) const
    {
        const char* name = kind == Plain ? "plain" : kind == Styled ? "styled" : "baseline";
        return ("," + sides + ",").find(std::string(",") + name + ",") != std::string::npos;
    }
    bool wants(const char* figure) const
    {
        return ("," + figures + ",").find(std::string(",") + figure + ",") != std::string::npos;
    }
};

// ---------------------------------------------------------------------------------------------------
// Trees

struct Tree
{
    std::string label;
    bool generated = false;
    int size = 0; // parameters asked for (generated trees)
    boost::shared_ptr<InMemoryParameterTree> memory;
#ifdef VORN_BENCH_GENICAM
    boost::shared_ptr<GenicamParameterTree> camera;
#endif
    std::string path; // GenICam: the description file; empty for Aravis's simulated camera

    boost::shared_ptr<MvParametersModel> model() const
    {
#ifdef VORN_BENCH_GENICAM
        if (camera)
            return camera->model();
#endif
        return memory->model();
    }
    boost::shared_ptr<MvParametersRootNode> root() const
    {
        return model()->root();
    }
};

#ifdef VORN_BENCH_GENICAM
boost::shared_ptr<GenicamParameterTree> openCamera(const std::string& path)
{
    std::string error;
    auto tree = path.empty() ? GenicamParameterTree::openSimulated(&error)
                             : GenicamParameterTree::openXmlFile(path, &error);
    if (!tree)
        std::fprintf(stderr, "cannot open %s: %s\n", path.empty() ? "the simulated camera" : path.c_str(),
                     error.c_str());
    return tree;
}
#endif

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
// Models and views

struct Built
{
    boost::shared_ptr<Qt4GenericModel> ours;
    std::unique_ptr<QStandardItemModel> base;
    QAbstractItemModel* itemModel() const
    {
        return ours ? static_cast<QAbstractItemModel*>(ours.get()) : base.get();
    }
};

// Root node, model and every row (through postInsert); for the baseline the model and every item.
Built build(Kind kind, const Tree& tree)
{
    Built built;
    if (kind == Plain) {
        auto root = Qt4ParametersModelNode::create(tree.model(), tree.root(), boost::any());
        built.ours = Qt4ParametersModel::create(root);
    } else if (kind == Styled) {
        auto root = Qt4StyledParametersModelNode::create(tree.model(), tree.root(), boost::any());
        built.ours = Qt4StyledParametersModel::create(root);
    } else {
        built.base = buildBaselineModel(*tree.root());
    }
    return built;
}

int countRows(const QAbstractItemModel* model, const QModelIndex& parent = QModelIndex())
{
    int rows = model->rowCount(parent);
    int total = rows;
    for (int row = 0; row < rows; ++row)
        total += countRows(model, model->index(row, 0, parent));
    return total;
}

enum class Expansion { AsModelAsks, All, None };

// A tree view over a filter model over the built model, sized like a host's, shown and painted once.
// Members go in reverse order: the view before the models and the delegate it uses.
struct Rig
{
    boost::shared_ptr<Qt4ParametersFilterModel> filter;
    std::unique_ptr<BaselineFilterModel> baseFilter;
    boost::shared_ptr<Qt4ParametersItemDelegate> delegate;
    std::unique_ptr<QTreeView> view;
    std::unique_ptr<PaintCounter> paints;

    void changeVisibility(int level)
    {
        if (filter)
            filter->changeVisibility(static_cast<ParameterEntryVisibility>(level));
        else
            baseFilter->changeVisibility(level);
    }
};

// A level change until the view has repainted. One function per side, so that a profiler can take
// either alone (valgrind --tool=callgrind --toggle-collect='*ourLevelChange*').
double levelChange(Rig& rig, int level)
{
    const int seen = rig.paints->count();
    CpuStopwatch clock;
    rig.changeVisibility(level);
    settleUntilPainted(*rig.paints, seen);
    return clock.ms();
}

__attribute__((noipa)) double ourLevelChange(Rig& rig, int level)
{
    return levelChange(rig, level);
}

__attribute__((noipa)) double baselineLevelChange(Rig& rig, int level)
{
    return levelChange(rig, level);
}

std::unique_ptr<Rig> showView(Kind kind, const Built& built, Expansion expansion)
{
    auto rig = std::make_unique<Rig>();
    if (isOurs(kind)) {
        rig->filter = Qt4ParametersFilterModel::create(built.ours);
        auto* view = new Qt4GenericTreeView();
        rig->view.reset(view);
        rig->delegate = Qt4ParametersItemDelegate::create();
        rig->delegate->enableGrid(kind == Styled);
        view->setItemDelegate(rig->delegate.get());
        view->setModel(rig->filter.get()); // expands as the model asks
    } else {
        rig->baseFilter = std::make_unique<BaselineFilterModel>();
        rig->baseFilter->setSourceModel(built.base.get());
        rig->view = std::make_unique<QTreeView>();
        rig->view->setModel(rig->baseFilter.get());
        if (expansion == Expansion::AsModelAsks)
            expansion = kind == Base ? Expansion::All : Expansion::None;
    }
    if (expansion == Expansion::All)
        rig->view->expandAll();
    rig->view->resize(800, 600);
    rig->paints = std::make_unique<PaintCounter>(rig->view->viewport());
    rig->view->show();
    settleUntilPainted(*rig->paints, 0);
    return rig;
}

// ---------------------------------------------------------------------------------------------------
// Figures

const int sweepRoles[] = {Qt::DisplayRole,    Qt::DecorationRole, Qt::FontRole,      Qt::ToolTipRole,
                          Qt::CheckStateRole, Qt::SizeHintRole,   Qt::ForegroundRole};

// One data() call per cell and role a view asks; counts the valid answers so nothing is optimised away.
long long sweep(const QAbstractItemModel* model, const QModelIndex& parent = QModelIndex())
{
    long long valid = 0;
    const int rows = model->rowCount(parent);
    const int columns = model->columnCount(parent);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const QModelIndex index = model->index(row, column, parent);
            for (int role : sweepRoles)
                valid += model->data(index, role).isValid();
        }
        valid += sweep(model, model->index(row, 0, parent));
    }
    return valid;
}

// One function per side, for profilers (see ourLevelChange).
__attribute__((noipa)) long long ourSweep(const QAbstractItemModel* model)
{
    return sweep(model);
}

__attribute__((noipa)) long long baselineSweep(const QAbstractItemModel* model)
{
    return sweep(model);
}

struct Series
{
    std::map<Kind, std::vector<double>> values;
    std::map<Kind, std::vector<double>> ratios; // ours / its baseline, per round
    std::map<Kind, std::string> notes;          // printed after the value

    bool has(Kind kind) const { return values.count(kind) && !values.at(kind).empty(); }
    double at(Kind kind) const { return has(kind) ? median(values.at(kind)) : NAN; }
    double ratio(Kind kind) const
    {
        return ratios.count(kind) && !ratios.at(kind).empty() ? median(ratios.at(kind)) : NAN;
    }
    std::string note(Kind kind) const { return notes.count(kind) ? notes.at(kind) : std::string(); }
};

Kind partnerOf(Kind ours, const std::vector<Kind>& kinds)
{
    if (ours == Styled)
        for (Kind k : kinds)
            if (k == BaseCollapsed)
                return k;
    return Base;
}

// Measures every side once per round, starting each round with the next side, and keeps the ratio of
// each of ours to its baseline of the same round.
Series sideBySide(int rounds, const std::vector<Kind>& kinds, const std::function<double(Kind)>& measure)
{
    Series series;
    for (int round = 0; round < rounds; ++round) {
        std::map<Kind, double> now;
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            const Kind kind = kinds[(i + round) % kinds.size()];
            now[kind] = measure(kind);
            series.values[kind].push_back(now[kind]);
        }
        for (Kind kind : kinds) {
            if (!isOurs(kind))
                continue;
            const Kind partner = partnerOf(kind, kinds);
            if (now.count(partner) && now[partner] > 0)
                series.ratios[kind].push_back(now[kind] / now[partner]);
        }
    }
    return series;
}

constexpr int levelCount = 5; // visibility levels 0 to 4

struct FigureRow
{
    std::string name;
    Series series;
    // Level changes: the median of each level per side, NaN where a level was not measured.
    std::map<Kind, std::vector<double>> levels;
};

struct TreeResult
{
    std::string label;
    bool generated = false;
    int size = 0;
    int rows = 0;
    std::vector<FigureRow> figures;
    Series openToPaint; // GenICam only
    std::vector<std::string> footnotes;

    const FigureRow* figure(const std::string& name) const
    {
        for (const auto& f : figures)
            if (f.name == name)
                return &f;
        return nullptr;
    }
};

int roundsFor(int rows, int small, int medium, int large, double scale)
{
    const int n = rows <= 3000 ? small : rows <= 30000 ? medium : large;
    return std::max(1, static_cast<int>(std::lround(n * scale)));
}

void progress(const char* what, const TreeResult& result)
{
    std::fprintf(stderr, "  %-22s %s\n", what, result.label.c_str());
}

// The mean and the slowest of the levels measured, and whether a level is missing.
struct LevelSummary
{
    double mean = NAN;
    double slowest = NAN;
    bool partial = false;
};

LevelSummary summarise(const std::vector<double>& levels, const std::vector<bool>& use)
{
    LevelSummary s;
    double total = 0;
    int n = 0;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (std::isnan(levels[i])) {
            s.partial = true;
            continue;
        }
        if (!use[i])
            continue;
        total += levels[i];
        ++n;
        s.slowest = std::isnan(s.slowest) ? levels[i] : std::max(s.slowest, levels[i]);
    }
    if (n > 0)
        s.mean = total / n;
    return s;
}

std::string number(double v);

TreeResult measureTree(const Tree& tree, const Options& options)
{
    TreeResult result;
    result.label = tree.label;
    result.generated = tree.generated;
    result.size = tree.size;
    {
        Built probe = build(Plain, tree);
        result.rows = countRows(probe.itemModel());
    }
    const int rows = result.rows;
    const double scale = options.repsScale;
    std::vector<Kind> modelKinds;
    for (Kind kind : {Plain, Styled, Base})
        if (options.side(kind))
            modelKinds.push_back(kind);
    std::vector<Kind> viewKinds = modelKinds;
    if (options.side(Base))
        viewKinds.push_back(BaseCollapsed);

    // 1 and 2: build, with the heap and resident set it adds.
    if (options.wants("build")) {
        progress("build and memory", result);
        Series heap;
        Series rss;
        Series buildTimes = sideBySide(roundsFor(rows, 11, 7, 2, scale), modelKinds, [&](Kind kind) {
            MemoryProbe memory;
            CpuStopwatch clock;
            Built built = build(kind, tree);
            const double ms = clock.ms();
            heap.values[kind].push_back(memory.heapGrowth() / rows);
            rss.values[kind].push_back(memory.rssGrowth() / rows);
            return ms;
        });
        for (Kind kind : {Plain, Styled}) {
            if (heap.has(kind) && heap.has(Base)) {
                heap.ratios[kind].push_back(heap.at(kind) / heap.at(Base));
                rss.ratios[kind].push_back(rss.at(kind) / rss.at(Base));
            }
        }
        result.figures.push_back({"build (ms)", buildTimes, {}});
        result.figures.push_back({"heap per row (B)", heap, {}});
        if (rows >= 1000) // a few pages say nothing about a small tree
            result.figures.push_back({"RSS per row (B)", rss, {}});
    }

    // 3: one data() sweep over every cell, on models built once.
    if (options.wants("sweep")) {
        progress("data sweep", result);
        std::map<Kind, Built> built;
        for (Kind kind : modelKinds)
            built[kind] = build(kind, tree);
        for (Kind kind : modelKinds) // the first sweep fills what rows keep (the styled details tool tips)
            sweep(built[kind].itemModel());
        long long sink = 0;
        Series sweeps = sideBySide(roundsFor(rows, 11, 7, 2, scale), modelKinds, [&](Kind kind) {
            CpuStopwatch clock;
            sink += isOurs(kind) ? ourSweep(built[kind].itemModel()) : baselineSweep(built[kind].itemModel());
            return clock.ms();
        });
        if (sink < 0)
            std::fprintf(stderr, "%lld\n", sink);
        result.figures.push_back({"data sweep (ms)", sweeps, {}});
    }

    // 4: changeVisibility through every level on a fully expanded view. A side whose level changes of
    // one round have taken longer than the budget skips the levels left in that round.
    if (options.wants("change")) {
        progress("changeVisibility", result);
        std::map<Kind, Built> built;
        for (Kind kind : modelKinds)
            built[kind] = build(kind, tree);
        std::map<Kind, std::unique_ptr<Rig>> rigs;
        for (Kind kind : modelKinds)
            rigs[kind] = showView(kind, built[kind], Expansion::All);
        std::map<Kind, std::vector<std::vector<double>>> samples;
        sideBySide(roundsFor(rows, 5, 3, 1, scale), modelKinds, [&](Kind kind) {
            Rig& rig = *rigs[kind];
            auto& perLevel = samples[kind];
            perLevel.resize(levelCount);
            double spent = 0;
            for (int level = 0; level < levelCount; ++level) {
                if (spent > options.levelBudgetMs)
                    break;
                rig.view->expandAll(); // rows that came back are collapsed in every view
                for (int i = 0; i < 5; ++i)
                    QCoreApplication::processEvents();
                const double ms = isOurs(kind) ? ourLevelChange(rig, level) : baselineLevelChange(rig, level);
                perLevel[level].push_back(ms);
                spent += ms;
                if (options.verbose)
                    std::fprintf(stderr, "    %s: level %d in %.1f ms\n", kindName(kind), level, ms);
            }
            return spent;
        });
        FigureRow mean{"changeVisibility, mean (ms)", {}, {}};
        FigureRow slowest{"changeVisibility, slowest (ms)", {}, {}};
        for (Kind kind : modelKinds) {
            std::vector<double> medians;
            for (const auto& levelSamples : samples[kind])
                medians.push_back(levelSamples.empty() ? NAN : median(levelSamples));
            mean.levels[kind] = slowest.levels[kind] = medians;
        }
        const std::vector<bool> all(levelCount, true);
        for (Kind kind : modelKinds) {
            const LevelSummary own = summarise(mean.levels[kind], all);
            mean.series.values[kind].push_back(own.mean);
            slowest.series.values[kind].push_back(own.slowest);
            if (own.partial) {
                int measured = 0;
                for (double v : mean.levels[kind])
                    measured += std::isnan(v) ? 0 : 1;
                mean.series.notes[kind] = slowest.series.notes[kind] = "*";
                result.footnotes.push_back(std::string(kindName(kind)) + ", " + result.label +
                                           ": levels 0 to " + std::to_string(measured - 1) +
                                           " of 0 to 4; the others were left out once " +
                                           "the level changes of a round had taken over " +
                                           number(options.levelBudgetMs / 1000) + " s.");
            }
            if (!isOurs(kind) || !mean.levels.count(Base))
                continue;
            // Ratios over the levels both sides measured.
            std::vector<bool> common(levelCount);
            for (int level = 0; level < levelCount; ++level)
                common[level] =
                    !std::isnan(mean.levels[kind][level]) && !std::isnan(mean.levels[Base][level]);
            const LevelSummary a = summarise(mean.levels[kind], common);
            const LevelSummary b = summarise(mean.levels[Base], common);
            mean.series.ratios[kind].push_back(a.mean / b.mean);
            slowest.series.ratios[kind].push_back(a.slowest / b.slowest);
        }
        result.figures.push_back(mean);
        result.figures.push_back(slowest);
    }

    // 5: first paint of a new view, expanded as the model asks.
    if (options.wants("paint")) {
        progress("first paint", result);
        std::map<Kind, Built> built;
        for (Kind kind : modelKinds)
            built[kind] = build(kind, tree);
        Series paint = sideBySide(roundsFor(rows, 7, 5, 1, scale), viewKinds, [&](Kind kind) {
            const Built& model = built[kind == BaseCollapsed ? Base : kind];
            CpuStopwatch clock;
            auto rig = showView(kind, model, Expansion::AsModelAsks);
            const double ms = clock.ms();
            rig.reset();
            QCoreApplication::processEvents();
            return ms;
        });
        result.figures.push_back({"first paint (ms)", paint, {}});
    }

#ifdef VORN_BENCH_GENICAM
    // 6: GenICam, from opening the device to the first frame.
    if (!tree.generated && options.wants("open")) {
        progress("open to first paint", result);
        result.openToPaint = sideBySide(roundsFor(rows, 7, 5, 1, scale), viewKinds, [&](Kind kind) {
            Stopwatch clock;
            auto camera = openCamera(tree.path);
            if (!camera)
                return static_cast<double>(NAN);
            Tree opened;
            opened.camera = camera;
            Built built = build(kind == BaseCollapsed ? Base : kind, opened);
            auto rig = showView(kind, built, Expansion::AsModelAsks);
            const double ms = clock.ms();
            rig.reset();
            built = Built();
            camera.reset();
            QCoreApplication::processEvents();
            return ms;
        });
    }
#endif
    return result;
}

// ---------------------------------------------------------------------------------------------------
// The baseline holds what our plain model shows

QString describe(const QVariant& value)
{
    if (!value.isValid())
        return QStringLiteral("<invalid>");
    if (value.canConvert<QIcon>() && value.userType() == QMetaType::QIcon) {
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
            for (int role : sweepRoles) {
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
    Tree example;
    example.memory = example::buildExampleTree(0);
    Tree generated;
    generated.memory = example::buildGeneratedTree(400);
    for (const Tree* tree : {&example, &generated}) {
        Built ours = build(Plain, *tree);
        Built base = build(Base, *tree);
        mismatches += compareCells(ours.itemModel(), base.itemModel(), QModelIndex(), QModelIndex(), cells);
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

std::string ratio(double v)
{
    if (std::isnan(v))
        return "–";
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.2f", v);
    return buffer;
}

std::string cpuModel()
{
    QFile file(QStringLiteral("/proc/cpuinfo"));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith("model name"))
                return line.mid(line.indexOf(':') + 1).trimmed().toStdString();
        }
    }
    return "unknown";
}

void printFigureTable(const std::vector<TreeResult>& results)
{
    std::printf(
        "| tree | rows | figure | plain | styled | baseline | plain / baseline | styled / baseline |\n");
    std::printf("|---|---:|---|---:|---:|---:|---:|---:|\n");
    for (const auto& r : results) {
        bool first = true;
        for (const auto& f : r.figures) {
            const Series& s = f.series;
            std::string baseline = number(s.at(Base)) + s.note(Base);
            if (s.has(BaseCollapsed))
                baseline += " / " + number(s.at(BaseCollapsed));
            std::printf("| %s | %s | %s | %s | %s | %s | %s | %s |\n", first ? r.label.c_str() : "",
                        first ? withThousands(r.rows).c_str() : "", f.name.c_str(),
                        (number(s.at(Plain)) + s.note(Plain)).c_str(),
                        (number(s.at(Styled)) + s.note(Styled)).c_str(), baseline.c_str(),
                        ratio(s.ratio(Plain)).c_str(), ratio(s.ratio(Styled)).c_str());
            first = false;
        }
    }
}

const TreeResult* generatedOf(const std::vector<TreeResult>& results, int size)
{
    for (const auto& r : results)
        if (r.generated && r.size == size)
            return &r;
    return nullptr;
}

void printFootnotes(const std::vector<TreeResult>& results)
{
    bool first = true;
    for (const auto& r : results) {
        for (const auto& note : r.footnotes) {
            std::printf("%s* %s\n", first ? "\n" : "", note.c_str());
            first = false;
        }
    }
}

void printGrowth(const std::vector<TreeResult>& results)
{
    const TreeResult* small = generatedOf(results, 10000);
    const TreeResult* large = generatedOf(results, 100000);
    if (!small || !large)
        return;
    std::printf("\nGrowth from 10,000 to 100,000 parameters (a linear cost grows %.1fx, the row count):\n\n",
                static_cast<double>(large->rows) / small->rows);
    std::printf("| figure | plain | styled | baseline | baseline, collapsed |\n|---|---:|---:|---:|---:|\n");
    for (const auto& f : large->figures) {
        const FigureRow* g = small->figure(f.name);
        if (!g || f.name.find("per row") != std::string::npos)
            continue;
        auto growth = [&](Kind k) -> std::string {
            if (!f.series.has(k) || !g->series.has(k))
                return "–";
            if (!f.levels.count(k) || !g->levels.count(k))
                return number(f.series.at(k) / g->series.at(k)) + "x";
            // Level changes: over the levels measured at both sizes.
            std::vector<bool> common(levelCount);
            for (int level = 0; level < levelCount; ++level)
                common[level] = !std::isnan(f.levels.at(k)[level]) && !std::isnan(g->levels.at(k)[level]);
            const LevelSummary a = summarise(f.levels.at(k), common);
            const LevelSummary b = summarise(g->levels.at(k), common);
            const bool slowest = f.name.find("slowest") != std::string::npos;
            return number(slowest ? a.slowest / b.slowest : a.mean / b.mean) + "x" + f.series.note(k);
        };
        std::printf("| %s | %s | %s | %s | %s |\n", f.name.c_str(), growth(Plain).c_str(),
                    growth(Styled).c_str(), growth(Base).c_str(), growth(BaseCollapsed).c_str());
    }
}

void printOpenToPaint(const std::vector<TreeResult>& results)
{
    bool any = false;
    for (const auto& r : results)
        any = any || r.openToPaint.has(Plain);
    if (!any)
        return;
    std::printf("\nGenICam, from opening the device through our backend to the first frame (ms; target "
                "under 100):\n\n");
    std::printf("| device | rows | plain | styled | baseline | baseline, collapsed "
                "|\n|---|---:|---:|---:|---:|---:|\n");
    for (const auto& r : results) {
        if (!r.openToPaint.has(Plain))
            continue;
        const Series& s = r.openToPaint;
        std::printf("| %s | %d | %s | %s | %s | %s |\n", r.label.c_str(), r.rows, number(s.at(Plain)).c_str(),
                    number(s.at(Styled)).c_str(), number(s.at(Base)).c_str(),
                    number(s.at(BaseCollapsed)).c_str());
    }
}

void printTargets(const std::vector<TreeResult>& results)
{
    std::printf("\nTargets:\n\n");
    auto line = [](bool met, const std::string& text) {
        std::printf("- %s %s\n", met ? "met:   " : "MISSED:", text.c_str());
    };
    for (const auto& r : results) {
        for (Kind k : {Plain, Styled}) {
            const std::string who = std::string(kindName(k)) + ", " + r.label + ": ";
            if (const FigureRow* f = r.figure("build (ms)"))
                line(f->series.ratio(k) <= 1.0,
                     who + "build / baseline " + ratio(f->series.ratio(k)) + " (<= 1.0)");
            if (const FigureRow* f = r.figure("heap per row (B)"))
                line(f->series.ratio(k) <= 1.0,
                     who + "heap per row / baseline " + ratio(f->series.ratio(k)) + " (<= 1.0)");
            if (const FigureRow* f = r.figure("data sweep (ms)"))
                line(f->series.ratio(k) <= 1.5,
                     who + "data sweep / baseline " + ratio(f->series.ratio(k)) + " (<= 1.5)");
            if (r.generated && r.size == 10000)
                if (const FigureRow* f = r.figure("changeVisibility, slowest (ms)"))
                    line(f->series.at(k) <= 50,
                         who + "slowest level change " + number(f->series.at(k)) + " ms (<= 50)");
            if (r.openToPaint.has(k))
                line(r.openToPaint.at(k) < 100,
                     who + "open to first paint " + number(r.openToPaint.at(k)) + " ms (< 100)");
        }
    }
    const TreeResult* small = generatedOf(results, 10000);
    const TreeResult* large = generatedOf(results, 100000);
    if (small && large) {
        const double linear = static_cast<double>(large->rows) / small->rows;
        for (Kind k : {Plain, Styled}) {
            const FigureRow* a = small->figure("changeVisibility, mean (ms)");
            const FigureRow* b = large->figure("changeVisibility, mean (ms)");
            if (!a || !b)
                continue;
            const double growth = b->series.at(k) / a->series.at(k);
            line(growth <= linear * 1.5, std::string(kindName(k)) + ": changeVisibility grows " +
                                             number(growth) + "x from 10,000 to 100,000 (linear " +
                                             number(linear) + "x)");
        }
    }
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
    std::fprintf(
        stderr,
        "usage: vorn-bench [--sizes 1000,10000,100000] [--no-genicam] [--reps-scale X]\n"
        "                  [--layout interleaved|clustered] [--figures build,sweep,change,paint,open]\n"
        "                  [--sides plain,styled,baseline] [--level-budget seconds] [--verbose]\n");
}

} // namespace

int main(int argc, char** argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QTemporaryDir runtimeDir;
    if (!std::getenv("XDG_RUNTIME_DIR") && runtimeDir.isValid()) {
        QFile::setPermissions(runtimeDir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        setenv("XDG_RUNTIME_DIR", runtimeDir.path().toLocal8Bit().constData(), 1);
    }
    QApplication app(argc, argv);

    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--sizes" && i + 1 < argc)
            options.sizes = parseSizes(argv[++i]);
        else if (arg == "--figures" && i + 1 < argc)
            options.figures = argv[++i];
        else if (arg == "--sides" && i + 1 < argc)
            options.sides = argv[++i];
        else if (arg == "--level-budget" && i + 1 < argc)
            options.levelBudgetMs = 1000 * std::atof(argv[++i]);
        else if (arg == "--verbose")
            options.verbose = true;
        else if (arg == "--no-genicam")
            options.genicam = false;
        else if (arg == "--reps-scale" && i + 1 < argc)
            options.repsScale = std::atof(argv[++i]);
        else if (arg == "--layout" && i + 1 < argc) {
            const std::string layout = argv[++i];
            options.layout = layout == "clustered" ? example::VisibilityLayout::Clustered
                                                   : example::VisibilityLayout::Interleaved;
        } else {
            usage();
            return arg == "--help" || arg == "-h" ? 0 : 2;
        }
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
        Tree warmUp;
        warmUp.memory = example::buildGeneratedTree(200, options.layout);
        for (Kind kind : {Plain, Styled, Base}) {
            Built built = build(kind, warmUp);
            sweep(built.itemModel());
            auto rig = showView(kind, built, Expansion::AsModelAsks);
            rig->changeVisibility(2);
            settleUntilPainted(*rig->paints, rig->paints->count());
        }
    }
    const std::pair<int, int> check = checkBaseline();

    std::vector<TreeResult> results;
    for (int size : options.sizes) {
        Tree tree;
        tree.generated = true;
        tree.size = size;
        tree.label = "generated " + withThousands(size);
        std::fprintf(stderr, "%s\n", tree.label.c_str());
        tree.memory = example::buildGeneratedTree(size, options.layout);
        results.push_back(measureTree(tree, options));
    }
#ifdef VORN_BENCH_GENICAM
    if (options.genicam) {
        std::vector<std::string> paths{""};
        const QDir dir(QStringLiteral(VORN_BENCH_GENICAM_DATA));
        for (const QString& name : dir.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name))
            paths.push_back(dir.filePath(name).toStdString());
        for (const std::string& path : paths) {
            Tree tree;
            tree.path = path;
            tree.label = path.empty() ? "Aravis simulated camera"
                                      : QFileInfo(QString::fromStdString(path)).fileName().toStdString();
            std::fprintf(stderr, "%s\n", tree.label.c_str());
            tree.camera = openCamera(path);
            if (!tree.camera)
                continue;
            results.push_back(measureTree(tree, options));
        }
    }
#endif

    std::printf("# Benchmark results\n\n");
    std::printf(
        "%s, nproc %u, CPU %s, %s, Qt %s, %s build%s.\n\n",
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm")).toUtf8().constData(),
        std::thread::hardware_concurrency(), cpuModel().c_str(),
        QSysInfo::prettyProductName().toUtf8().constData(), qVersion(),
#ifdef NDEBUG
        "release",
#else
        "debug",
#endif
        "");
    std::printf("Times are CPU time of the GUI thread (the machine is shared; wall-clock time for opening "
                "GenICam devices, which waits for the device thread), medians of the rounds. Each round "
                "measures every side in turn; ratios are taken per round, then the median. Generated "
                "trees: every kind of parameter in categories of 50, visibility levels %s. The baseline is "
                "a QStandardItemModel with the same texts, icons, fonts, check states, tool tips, size hints "
                "and colours as our plain model (compared cell by cell: %d cells, %d differ), under a "
                "QSortFilterProxyModel with the same visibility rule, in a QTreeView. Views are 800x600 on "
                "the offscreen platform. Load average at the start: %s.\n\n",
                options.layout == example::VisibilityLayout::Clustered ? "clustered as in real devices"
                                                                       : "interleaved row by row",
                check.first, check.second, loadAverage.c_str());
    std::printf("- build: root node, model and every row; baseline: the model and every item.\n"
                "- heap / RSS per row: what a build adds (malloc's bytes in use; resident set), per row.\n"
                "- data sweep: one data() call per cell for display, decoration, font, tool tip, check "
                "state, size hint and foreground.\n"
                "- changeVisibility: levels 0, 1, 2, 3, 4 in turn on a fully expanded view, each until the "
                "view has repainted (ours: Qt4ParametersFilterModel in a Qt4GenericTreeView; baseline: "
                "invalidateFilter); mean and slowest level.\n"
                "- first paint: filter model, view and item delegate (grid on for the styled model) made, "
                "expanded as the model asks (plain: all levels; styled: top level only), shown, until the "
                "first frame is painted. The baseline column gives expanded / collapsed; plain is compared "
                "with expanded, styled with collapsed.\n\n");
    printFigureTable(results);
    printFootnotes(results);
    printGrowth(results);
    printOpenToPaint(results);
    printTargets(results);
    std::printf("\nWhole run: %.0f s.\n", total.ms() / 1000);
    return 0;
}
