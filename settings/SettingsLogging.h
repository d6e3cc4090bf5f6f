// SPDX-License-Identifier: Apache-2.0
// The log of the settings dialog, for what the dialog does not tell its user.

#pragma once

#include <QLoggingCategory>

/// Where the dialog says what it keeps from the user, an edit without a supported mode for example.
///
/// Off unless asked for: QT_LOGGING_RULES="vyr.settings=true". Thread: any thread.
Q_DECLARE_LOGGING_CATEGORY(settingsLog)
