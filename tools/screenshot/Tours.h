// SPDX-License-Identifier: Apache-2.0
// The ways that are taken through the program.

#pragma once

#include "PictureTour.h"

/// Menus, settings dialog, About box and everything that Stereo View shows; needs a camera and Stereo View as the
/// current app. Ends the program.
std::vector<TourStop> tourOfProgram();

/// The window as it stands, as the picture `name`. Ends the program.
std::vector<TourStop> tourOfWindow(const QString& name);

/// No pictures: opens the documentation through the menu and ends the program.
std::vector<TourStop> tourToDocumentation();
