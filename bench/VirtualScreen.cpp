// SPDX-License-Identifier: Apache-2.0
// A screen for windows that nobody needs to see.

#include "VirtualScreen.h"

#include <cstdio>

namespace {

constexpr int patience = 30'000; // ms

} // namespace

VirtualScreen::VirtualScreen()
{
    _server.setStandardErrorFile(QProcess::nullDevice());
    // The server chooses a number that is free, and tells it once it takes clients.
    _server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1600x1000x24", "-nolisten", "tcp", "-noreset"});
    while (_server.waitForReadyRead(patience) && !_server.canReadLine())
        ;
    const QByteArray number = _server.readLine().trimmed();
    if (number.isEmpty())
        std::fprintf(stderr, "No Xvfb to be started: figures with a screen are left out.\n");
    else
        _display = ":" + QString::fromLatin1(number);
}

VirtualScreen::~VirtualScreen()
{
    _server.terminate();
    _server.waitForFinished();
}
