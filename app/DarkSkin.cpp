// SPDX-License-Identifier: Apache-2.0
// The dark look of the program.

#include "DarkSkin.h"

#include <QApplication>
#include <QBrush>
#include <QPalette>
#include <QString>
#include <QStyleFactory>

QPalette darkSkinPalette()
{
    struct Role
    {
        QPalette::ColorRole role;
        QColor colour;
    };
    const QColor panel(53, 53, 53);
    // Window stands here twice on purpose: it starts as the panels' grey and ends darker than they are, so that
    // they stand out from it.
    const Role roles[] = {
        {QPalette::Window, panel},
        {QPalette::WindowText, Qt::white},
        {QPalette::Base, QColor(15, 15, 15)},
        {QPalette::AlternateBase, panel},
        {QPalette::ToolTipBase, Qt::white},
        {QPalette::ToolTipText, Qt::white},
        {QPalette::Text, Qt::white},
        {QPalette::Button, panel},
        {QPalette::ButtonText, Qt::white},
        {QPalette::BrightText, Qt::red},
        {QPalette::Highlight, QColor(214, 214, 214)},
        {QPalette::HighlightedText, Qt::black},
        {QPalette::Link, QColor(42, 130, 218)},
        {QPalette::Window, QColor(40, 40, 40)},
    };
    QPalette palette;
    for (const Role& role : roles)
        palette.setBrush(QPalette::All, role.role, QBrush(role.colour));
    return palette;
}

QString darkSkinStyleSheet()
{
    return QStringLiteral(
        "QTabWidget::pane{ border-top:1px solid #424242;background:#282828;}"
        "QMenu{ color: white; selection-color: white; selection-background-color: #626262; background: #353535; "
        "border: 0px; }"
        "QMenuBar::item{ color: white; spacing: -10px; padding: 2px 4px; background: transparent; }"
        "QMenuBar::item:selected{ color: white; background: #626262; }"
        "QPushButton:disabled{ color : rgb(15,15,15); }"
        "QPushButton:enabled{ color : white; }"
        "QToolTip{ color : white; background-color: #353535; border: 1px solid #626262; border-radius : 3px; }");
}

void applyDarkSkin()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(darkSkinPalette());
    qApp->setStyleSheet(darkSkinStyleSheet());
}
