// SPDX-License-Identifier: Apache-2.0
// Brings the user into the program, through Qt's own plug-in mechanism.

#include "User.h"

#include <QGenericPlugin>

/// Made by Qt at start-up when QT_QPA_GENERIC_PLUGINS holds "vyruser:TASK".
class UserPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "user.json")

public:
    QObject* create(const QString& name, const QString& task) override
    {
        return name == "vyruser" ? new User(task) : nullptr;
    }
};

#include "UserPlugin.moc"
