// SPDX-License-Identifier: Apache-2.0
// The log of the single-instance application.

#pragma once

#include <QLoggingCategory>

/// Off unless asked for: QT_LOGGING_RULES="qtsolutions.singleapplication=true". Thread: any thread.
Q_DECLARE_LOGGING_CATEGORY(instanceLog)
