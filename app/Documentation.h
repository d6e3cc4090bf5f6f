// SPDX-License-Identifier: Apache-2.0
// Where the documentation is.

#pragma once

class QUrl;

/// The manual that lies beside the executable ("manual/index.html"), or its place on the web when it is missing.
///
/// Thread: GUI thread, while an application object exists.
QUrl documentationUrl();
