// SPDX-License-Identifier: Apache-2.0
// The log of the application shell, for what the shell does not tell its user.

#pragma once

#include <QLoggingCategory>

/// Where the shell says what it keeps from the user, a settings file that could not be written for example.
///
/// Off unless asked for: QT_LOGGING_RULES="vyr.app=true". Thread: any thread.
Q_DECLARE_LOGGING_CATEGORY(appLog)
