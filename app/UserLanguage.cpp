// SPDX-License-Identifier: Apache-2.0
// The language of the program's texts.

#include "UserLanguage.h"

#include <apps/Translation.h>

#include <QCoreApplication>
#include <QLibraryInfo>

#include <memory>

namespace {

/// Installs a translation, which the application owns from then on; false when there is none for the user.
bool install(const QString& name, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!loadTranslation(*translator, name, folder))
        return false;
    translator->setParent(QCoreApplication::instance());
    return QCoreApplication::installTranslator(translator.release());
}

} // namespace

void useLanguageOfUser()
{
    // Qt's own texts only together with ours: a dialog half in one language would be no help.
    if (install(QStringLiteral("VYRDashboard"), QStringLiteral(":/translations")))
        install(QStringLiteral("qtbase"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
}
