#pragma once

#include <QLabel>

namespace vorn {
namespace browser {

// A one-line label that shortens its text with "…" to the width it is given, instead of widening
// its window, and offers the whole text as its tool tip. For the status bar's long messages.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setFullText(const QString& text);
    QString fullText() const { return m_text; }

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void elide();

    QString m_text;
};

} // namespace browser
} // namespace vorn
