// SPDX-License-Identifier: Apache-2.0
// Brings the watch on the first frame into a program, through Qt's own plug-in mechanism.

#include "FirstFrame.h"

#include <QGenericPlugin>

/// Made by Qt at start-up when QT_QPA_GENERIC_PLUGINS holds "vyrfirstframe:window" or "vyrfirstframe:picture".
class FirstFramePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "firstframe.json")

public:
    QObject* create(const QString& name, const QString& wanted) override
    {
        return name == "vyrfirstframe" ? new FirstFrame(wanted == "picture") : nullptr;
    }
};

#include "FirstFramePlugin.moc"
