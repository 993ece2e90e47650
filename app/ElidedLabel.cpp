#include "ElidedLabel.h"

#include <QFontMetrics>

namespace vorn {
namespace browser {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::setFullText(const QString& text)
{
    m_text = text;
    setToolTip(text);
    // The size hint follows the whole text.
    updateGeometry();
    elide();
}

QSize ElidedLabel::minimumSizeHint() const
{
    return QSize(0, QLabel::minimumSizeHint().height());
}

QSize ElidedLabel::sizeHint() const
{
    const QMargins margins = contentsMargins();
    const int frame = margins.left() + margins.right() + 2 * margin() + 2 * frameWidth();
    return QSize(fontMetrics().horizontalAdvance(m_text) + frame + 1, QLabel::sizeHint().height());
}

void ElidedLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::elide()
{
    setText(fontMetrics().elidedText(m_text, Qt::ElideRight, contentsRect().width() - 2 * margin()));
}

} // namespace browser
} // namespace vorn
