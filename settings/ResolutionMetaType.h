// SPDX-License-Identifier: Apache-2.0
// Makes the capture mode known to Qt, so that it can be a property and be carried by signals.

#pragma once

#include <camera/VYRResolutionInfo.h>

#include <QMetaType>

Q_DECLARE_METATYPE(VYRResolutionInfo)
