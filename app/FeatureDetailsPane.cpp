#include "FeatureDetailsPane.h"

#include "FeatureFacts.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace vorn {
namespace browser {

FeatureDetailsPane::FeatureDetailsPane(QWidget* parent) : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->setSpacing(4);

    m_title = new QLabel(this);
    QFont titleFont = m_title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.15);
    m_title->setFont(titleFont);
    m_title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_title);

    m_grid = new QGridLayout;
    m_grid->setHorizontalSpacing(10);
    m_grid->setVerticalSpacing(2);
    m_name = addRow(QStringLiteral("Name"), 0, 0);
    m_kind = addRow(QStringLiteral("Kind"), 0, 1);
    m_access = addRow(QStringLiteral("Access"), 1, 0);
    m_visibility = addRow(QStringLiteral("Visibility"), 1, 1);
    m_range = addRow(QStringLiteral("Range"), 2, 0);
    m_increment = addRow(QStringLiteral("Increment"), 2, 1);
    m_unit = addRow(QStringLiteral("Unit"), 3, 0);
    m_representation = addRow(QStringLiteral("Representation"), 3, 1);
    m_entries = addRow(QStringLiteral("Entries"), 4, 0);
    // The list of entries takes the whole width, one entry a line.
    m_grid->addWidget(m_entries.value, 4, 1, 1, 3);
    m_polling = addRow(QStringLiteral("Polling"), 5, 0);
    m_selectedBy = addRow(QStringLiteral("Selected by"), 5, 1);
    m_selects = addRow(QStringLiteral("Selects"), 6, 0);
    m_grid->addWidget(m_selects.value, 6, 1, 1, 3);
    // Values take the spare width; the property names keep theirs.
    m_grid->setColumnStretch(1, 1);
    m_grid->setColumnStretch(3, 1);
    layout->addLayout(m_grid);

    m_description = new QLabel(this);
    m_description->setWordWrap(true);
    m_description->setTextFormat(Qt::PlainText);
    m_description->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_description->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    layout->addWidget(m_description);
    layout->addStretch(1);

    showFeature(nullptr);
}

FeatureDetailsPane::Row FeatureDetailsPane::addRow(const QString& property, int row, int column)
{
    Row r;
    r.label = new QLabel(property + QLatin1Char(':'), this);
    r.label->setObjectName(property);
    QPalette muted = r.label->palette();
    muted.setColor(QPalette::WindowText, muted.color(QPalette::Disabled, QPalette::WindowText));
    r.label->setPalette(muted);
    r.value = new QLabel(this);
    r.value->setObjectName(property + QStringLiteral("Value"));
    r.value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    r.value->setTextFormat(Qt::PlainText);
    m_grid->addWidget(r.label, row, 2 * column);
    m_grid->addWidget(r.value, row, 2 * column + 1);
    return r;
}

void FeatureDetailsPane::setRow(const Row& row, const QString& text)
{
    row.value->setText(text);
    row.label->setVisible(!text.isEmpty());
    row.value->setVisible(!text.isEmpty());
}

void FeatureDetailsPane::showFeature(const boost::shared_ptr<core::models::MvParametersEntryNode>& node,
                                     const FeatureLinks& links)
{
    if (!node) {
        m_title->setText(QStringLiteral("No feature selected"));
        for (const Row* row : {&m_name, &m_kind, &m_access, &m_visibility, &m_range, &m_increment, &m_unit,
                               &m_representation, &m_entries, &m_polling, &m_selectedBy, &m_selects})
            setRow(*row, QString());
        m_description->setText(
            QStringLiteral("Select a feature in the tree to see what it is and what it takes."));
        return;
    }
    const FeatureFacts facts(*node);
    m_title->setText(facts.displayName());
    setRow(m_name, facts.name());
    setRow(m_kind, facts.kind());
    setRow(m_access, facts.access());
    setRow(m_visibility, facts.visibility());
    setRow(m_range, facts.range());
    setRow(m_increment, facts.increment());
    setRow(m_unit, facts.unit());
    setRow(m_representation, facts.representation());
    setRow(m_entries, facts.entries());
    setRow(m_polling, links.pollingMs > 0 ? QStringLiteral("every %1 ms").arg(links.pollingMs) : QString());
    setRow(m_selectedBy, links.selectedBy.join(QStringLiteral(", ")));
    setRow(m_selects, links.selects.join(QStringLiteral(", ")));
    const QString description = facts.description();
    m_description->setText(description.isEmpty() ? QStringLiteral("No description.") : description);
}

QString FeatureDetailsPane::shownText(const QString& property) const
{
    if (property == QLatin1String("Title"))
        return m_title->text();
    if (property == QLatin1String("Description"))
        return m_description->text();
    const auto* value = findChild<QLabel*>(property + QStringLiteral("Value"));
    return value && value->isVisibleTo(this) ? value->text() : QString();
}

} // namespace browser
} // namespace vorn
