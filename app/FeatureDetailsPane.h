#pragma once

#include <vorn/host/MvParametersEntryNode.h>

#include <QStringList>
#include <QWidget>

class QGridLayout;
class QLabel;

namespace vorn {
namespace browser {

// What the tree knows of a feature beyond its node: how it is polled and the selectors it depends
// on or is.
struct FeatureLinks
{
    int pollingMs = 0;
    QStringList selectedBy; // the selectors whose value chooses which value this feature shows
    QStringList selects;    // for a selector, the features it chooses the value of
};

// The pane below the tree that describes the selected feature: its shown name as a title, then
// name, kind, access, visibility, range, increment, unit and representation in two columns, an
// enumeration's entries, how the feature is polled and which selectors it depends on or is, and the
// description underneath. Properties that do not apply to the feature's kind are left out.
class FeatureDetailsPane : public QWidget
{
    Q_OBJECT

public:
    explicit FeatureDetailsPane(QWidget* parent = nullptr);

    // Shows this feature; an empty pointer shows the hint to select one.
    void showFeature(const boost::shared_ptr<core::models::MvParametersEntryNode>& node,
                     const FeatureLinks& links = FeatureLinks());
    // The texts shown, by property ("Name", "Kind", ...), for tests and scripts.
    QString shownText(const QString& property) const;

private:
    struct Row
    {
        QLabel* label = nullptr;
        QLabel* value = nullptr;
    };
    Row addRow(const QString& property, int row, int column);
    void setRow(const Row& row, const QString& text);

    QLabel* m_title = nullptr;
    QLabel* m_description = nullptr;
    Row m_name, m_kind, m_access, m_visibility, m_range, m_increment, m_unit, m_representation;
    Row m_entries, m_polling, m_selectedBy, m_selects;
    QGridLayout* m_grid = nullptr;
};

} // namespace browser
} // namespace vorn
