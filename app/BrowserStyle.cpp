#include "BrowserStyle.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>

namespace vorn {
namespace browser {

void BrowserStyle::apply()
{
    QFont font = QApplication::font();
    // DejaVu Sans where it is installed (it is on Debian, with the same metrics on every machine);
    // elsewhere the platform's own interface font.
    if (QFontDatabase().families().contains(QStringLiteral("DejaVu Sans")))
        font.setFamily(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(8.0);
    QApplication::setFont(font);
}

} // namespace browser
} // namespace vorn
