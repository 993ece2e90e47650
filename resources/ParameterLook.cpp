#include <vorn/resources/ParameterLook.h>

#include <QApplication>
#include <QCoreApplication>
#include <QHash>

namespace vorn {
namespace core {
namespace look {

QFont boldFont()
{
    QFont font = QApplication::font();
    font.setWeight(75);
    return font;
}

QFont fixedBoldFont()
{
    QFont font = QApplication::font();
    font.setFamily(QStringLiteral("Courier"));
    font.setFamily(QStringLiteral("Consolas"));
    font.setWeight(75);
    return font;
}

// The caches go with the application, before the platform that backs their pixmaps and fonts.
QIcon typeIcon(const char* path)
{
    static QHash<const char*, QIcon>* cache = nullptr;
    if (!cache) {
        cache = new QHash<const char*, QIcon>();
        qAddPostRoutine([] {
            delete cache;
            cache = nullptr;
        });
    }
    auto it = cache->constFind(path);
    if (it == cache->constEnd())
        it = cache->insert(path, QIcon(QString::fromLatin1(path)));
    return it.value();
}

const RowFonts& rowFonts()
{
    static RowFonts* cache = nullptr;
    if (cache && cache->current)
        return *cache;
    if (!cache) {
        cache = new RowFonts();
        qAddPostRoutine([] {
            delete cache;
            cache = nullptr;
        });
        if (qGuiApp)
            QObject::connect(qGuiApp, &QGuiApplication::fontChanged, [] {
                if (cache)
                    cache->current = false;
            });
    }
    cache->plain = QApplication::font();
    cache->bold = boldFont();
    cache->fixedBold = fixedBoldFont();
    cache->current = qGuiApp != nullptr; // without an application nothing would tell of a change
    return *cache;
}

} // namespace look
} // namespace core
} // namespace vorn
