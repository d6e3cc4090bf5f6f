// SPDX-License-Identifier: Apache-2.0
// The font faces built into the program, and the program's default font.

#include "EmbeddedFonts.h"

#include "AppLogging.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>

/// Outside of any namespace, as the resource system wants it.
static void initFontResources()
{
    Q_INIT_RESOURCE(fonts);
}

namespace {

const char defaultFamily[] = "Segoe UI";
constexpr int defaultPointSize = 9;

} // namespace

const QStringList& embeddedFontPaths()
{
    static const QStringList paths = {
        QStringLiteral(":/segoeui.ttf"),   QStringLiteral(":/segoeuib.ttf"), QStringLiteral(":/segoeuii.ttf"),
        QStringLiteral(":/segoeuisl.ttf"), QStringLiteral(":/segoeuiz.ttf"), QStringLiteral(":/seguili.ttf"),
        QStringLiteral(":/seguisb.ttf"),   QStringLiteral(":/seguisbi.ttf"), QStringLiteral(":/seguisli.ttf"),
    };
    return paths;
}

int registerFirstFont(const QStringList& paths, const std::function<int(const QString&)>& registerFont)
{
    // Stopping at the first success is deliberate: the system makes the other weights and slants from one face, and
    // an installed family is not mixed with a second set of its faces. The later faces are there for a first one
    // that cannot be read.
    for (const QString& path : paths) {
        const int id = registerFont(path);
        if (id != -1)
            return id;
        qCWarning(appLog) << "Font not registered:" << path;
    }
    return -1;
}

void useEmbeddedFonts()
{
    initFontResources();
    const int id = registerFirstFont(embeddedFontPaths(), QFontDatabase::addApplicationFont);
    if (id == -1)
        return;
    const QString family = QFontDatabase::applicationFontFamilies(id).value(0);
    if (family != QLatin1String(defaultFamily))
        QFont::insertSubstitution(QLatin1String(defaultFamily), family);
    QApplication::setFont(QFont(QLatin1String(defaultFamily), defaultPointSize));
}
