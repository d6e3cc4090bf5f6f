// SPDX-License-Identifier: Apache-2.0
// The log of the settings dialog.

#include "SettingsLogging.h"

// No message of ours is fatal, so this threshold keeps all of them quiet until a rule turns them on.
Q_LOGGING_CATEGORY(settingsLog, "vyr.settings", QtFatalMsg)
