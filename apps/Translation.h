// SPDX-License-Identifier: Apache-2.0
// Which language an app or the program shows its texts in.

#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <QTranslator>

/// Loads a translation into `translator`: the file NAME_LANGUAGE.qm of `folder`, which may be one of resources, for the
/// first language in which the user wants to read and that it is there for. Returns whether there is one. Texts are
/// written in English, so that nothing is looked for once that is the next of the user's languages.
///
/// The caller installs the translator and keeps it for as long as its texts are shown. An app does so in the
/// constructor of its plug-in object: the host asks it for texts right after. Thread: any thread.
inline bool loadTranslation(QTranslator& translator, const QString& name, const QString& folder)
{
    const QStringList languages = QLocale::system().uiLanguages();
    for (const QString& language : languages) {
        const QLocale locale(language);
        if (locale.language() == QLocale::English || locale.language() == QLocale::C)
            return false;
        if (translator.load(name + QLatin1Char('_') + locale.name(), folder))
            return true;
    }
    return false;
}
