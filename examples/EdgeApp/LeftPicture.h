// SPDX-License-Identifier: Apache-2.0
// Where the left picture is in the camera library's frame record.

#pragma once

#include "EdgeFilter.h"

#include <optional>

struct VYRFrameRecord;

/// Whether the camera library in this process lays its records out in the one way that leftPictureOf() can read.
bool canReadPictures();

/// The left picture of a record, in the camera library's memory: good only while the frame is held. Nothing when the
/// record makes no sense. To be called only when canReadPictures().
/// Thread: any thread.
std::optional<GreyPicture> leftPictureOf(const VYRFrameRecord* record);
